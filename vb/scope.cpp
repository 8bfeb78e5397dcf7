// See scope.h. Tested by the cases in tests/golden/language/links.
#include "vb/scope.h"

#include <cstddef>

namespace tintline::vb {

std::uint32_t Scope::numberOf(std::uint32_t token) {
  const std::u8string& text = module_.text;
  const std::u8string_view name = plainName(module_.textOf(token));
  if (const auto key = NameKey::ofShort(name, text.data() + text.size()))
    if (const auto number = numbers_.find(text, *key); number != NameTable::kUnknown) return number;
  return addName(name);
}

// The number of any name, also a new one.
std::uint32_t Scope::addName(std::u8string_view name) {
  const std::u8string& text = module_.text;
  const NameKey key(name, text.data() + text.size());
  const std::uint32_t number =
      numbers_.add(text, key, static_cast<std::size_t>(name.data() - text.data()));
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
