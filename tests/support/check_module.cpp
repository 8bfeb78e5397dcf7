#include "tests/support/check_module.h"

#include <algorithm>
#include <string>

#include "vb/project.h"
#include "vb/token_cursor.h"

namespace tintline::vb {
namespace {

std::uint32_t lineAt(const Module& module, std::uint32_t token) {
  return 1 + lineEndsIn(std::u8string_view(module.text).substr(0, module.tokens[token].begin));
}

bool fits(DeclarationKind kind, DeclarationKind scope) {
  switch (kind) {
    case DeclarationKind::Field:
      return scope == DeclarationKind::Type;
    case DeclarationKind::EnumMember:
      return scope == DeclarationKind::Enum;
    case DeclarationKind::Parameter:
      return scope <= DeclarationKind::Event;
    default:
      return isProcedure(scope);
  }
}

const char* faultOf(const Module& module, std::uint32_t index) {
  const Declaration& one = module.declarations[index];
  const auto end = static_cast<std::uint32_t>(module.tokens.size() - 1);
  if (one.head.begin > one.name || one.name >= one.head.end || one.head.end > end)
    return "a head without its name";
  if (index > 0 && module.declarations[index - 1].name >= one.name) return "not in order";
  if (one.type.begin > one.type.end || (!one.type.empty() && one.type.end > one.head.end))
    return "a type outside of its head";
  if (one.body.begin > one.body.end || one.body.end > end ||
      (!one.body.empty() && one.body.begin != one.head.end))
    return "a body that does not follow its head";
  if (one.line != lineAt(module, one.head.begin)) return "a wrong line";
  if (one.kind != DeclarationKind::Control &&
      one.endLine != lineAt(module, std::max(one.head.end, one.body.end) - 1) &&
      (one.body.empty() || module.tokens[one.body.end - 1].kind != TokenKind::Comment))
    return "a wrong last line";
  const bool held = one.kind == DeclarationKind::Field || one.kind >= DeclarationKind::Label ||
                    one.kind == DeclarationKind::EnumMember;
  if (held != (one.scope != kNone)) return "held by nothing, or by something";
  if (!held) return nullptr;
  if (one.scope >= index) return "in front of what holds it";
  const Declaration& scope = module.declarations[one.scope];
  if (!fits(one.kind, scope.kind)) return "held by the wrong kind";
  return one.head.end > std::max(scope.head.end, scope.body.end) ? "behind what holds it" : nullptr;
}

const char* faultOfNesting(const Module& module) {
  std::uint32_t behind = 0;  // the last body
  for (const Declaration& one : module.declarations) {
    if (one.scope != kNone) continue;
    const bool inBody = one.head.begin < behind;
    if (inBody && (!isProcedure(one.kind) || !one.body.empty())) return "bodies overlap";
    if (!one.body.empty()) behind = one.body.end;
  }
  return nullptr;
}

const char* faultOfReferences(const Module* modules, std::uint32_t index,
                              const std::vector<Reference>& references) {
  const Module& module = modules[index];
  const Reference* last = nullptr;
  for (const Reference& one : references) {
    if (last != nullptr && last->token >= one.token) return "references not in order";
    last = &one;
    const TokenKind kind = module.tokens[one.token].kind;
    if (!isNameKind(kind) && kind != TokenKind::Label) return "a reference without a name";
    if (one.token < module.header.end || one.module > 1) return "a reference from or to nowhere";
    if (one.declaration == kNone) continue;
    if (one.declaration >= modules[one.module].declarations.size()) return "no such declaration";
    const Declaration& target = modules[one.module].declarations[one.declaration];
    if (one.module == index && target.name == one.token) return "a name that means itself";
    if ((kind == TokenKind::Label) != (target.kind == DeclarationKind::Label))
      return "a label that means none";
    if (target.kind < DeclarationKind::Label) continue;
    const auto holdsBoth = [&](const Declaration& procedure) {
      return std::min(one.token, target.name) >= procedure.head.begin &&
             std::max(one.token, target.name) < procedure.body.end;
    };
    if (one.module != index || std::ranges::none_of(module.declarations, holdsBoth))
      return "a local of another procedure";
  }
  return nullptr;
}

}  // namespace

const char* moduleFault(std::u8string_view text, const WordLists& words) {
  const Module modules[] = {readModule(std::u8string(text), u8"A", ModuleKind::Standard, words),
                            readModule(std::u8string(text), u8"B", ModuleKind::Form, words)};
  Project project(u8"P");
  for (const Module& module : modules) {
    const std::u8string_view last = text.substr(text.find_last_of(u8"\r\n") + 1);
    if (module.lines != lineEndsIn(text) + (last.empty() ? 0 : 1)) return "a wrong number of lines";
    for (std::uint32_t i = 0; i < module.declarations.size(); ++i)
      if (const char* const fault = faultOf(module, i)) return fault;
    if (const char* const fault = faultOfNesting(module)) return fault;
    project.add(module);
  }
  project.close();
  for (std::uint32_t i = 0; i < 2; ++i)
    if (const char* const fault = faultOfReferences(modules, i, project.resolve(modules[i], i)))
      return fault;
  return nullptr;
}

}  // namespace tintline::vb
