// See scope.h. Tested by the cases in tests/golden/language/links.
#include "vb/scope.h"

#include <cstddef>

namespace tintline::vb {

Scope::Scope(const Module& module, std::uint32_t index, const ProjectTables& tables)
    : module_(module),
      index_(index),
      tables_(tables),
      names_(module.names.size()),
      types_(module.declarations.size()) {
  for (std::uint32_t i = 0; i < names_.size(); ++i)
    names_[i].inProject = tables.numberOf(module.names.keyOf(module.text, i));
}

// The number of a name that its token does not know.
std::uint32_t Scope::findNumber(std::uint32_t token) {
  const std::u8string& text = module_.text;
  const NameKey key = module_.keyOf(token);
  if (const auto number = module_.names.find(text, key); number != NameTable::kUnknown)
    return number;
  const auto offset = static_cast<std::size_t>(key.name().data() - text.data());
  const std::uint32_t number = module_.names.size() + others_.add(text, key, offset);
  if (number == names_.size()) names_.emplace_back().inProject = tables_.numberOf(key);
  return number;
}

void Scope::enter(std::uint32_t procedure) {
  const Declaration& declared = module_.declarations[procedure];
  procedure_ = procedure;
  end_ = declared.body.end;
  types_[procedure] = declaredType(declared);
  if (declared.kind == DeclarationKind::Function || declared.accessor == Accessor::Get)
    result_ = numberOf(declared.name);
  for (std::uint32_t i = procedure + 1;
       i < module_.declarations.size() && module_.declarations[i].name < end_; ++i)
    bind(i);
}

void Scope::leave() {
  procedure_ = end_ = result_ = kNone;
  resultTakesArguments_ = false;
}

// Of several declarations of one name the first counts.
void Scope::bind(std::uint32_t declaration) {
  const Declaration& declared = module_.declarations[declaration];
  const bool isParameter = declared.kind == DeclarationKind::Parameter &&
                           isProcedure(module_.declarations[declared.scope].kind);
  if (isParameter && declared.scope == procedure_) resultTakesArguments_ = true;
  if (isParameter || declared.kind == DeclarationKind::Local) {
    types_[declaration] = declaredType(declared);
    Name& name = at(declared.name);
    if (name.localOf == procedure_) return;
    name.local = declaration;
    name.localOf = procedure_;
  } else if (declared.kind == DeclarationKind::Label) {
    Name& name = at(declared.name);
    if (name.labelOf == procedure_) return;
    name.label = declaration;
    name.labelOf = procedure_;
  }
}

TypeReference Scope::declaredType(const Declaration& declared) {
  std::uint32_t at = declared.type.begin;
  if (declared.type.empty() || !isNameKind(module_.tokens[at].kind)) return {};
  return tables_.typeReference(typePath(at, [](std::uint32_t, Meaning) {}));
}

}  // namespace tintline::vb
