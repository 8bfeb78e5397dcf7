// See editor_procedures.h. Tested by tests/unit/sources/closed_project_test.cpp.
#include "sources/editor_procedures.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/codepage.h"
#include "vb/module.h"

namespace tintline {
namespace {

// What no editor holds is not taken apart: memory goes with the number of tokens.
constexpr std::int32_t kMaxModuleLines = 65'534;
constexpr std::size_t kMaxText = std::size_t{16} << 20;

ProcedureKind kindOf(const vb::Declaration& declared) {
  switch (declared.accessor) {
    case vb::Accessor::Get:
      return ProcedureKind::Get;
    case vb::Accessor::Let:
      return ProcedureKind::Let;
    case vb::Accessor::Set:
      return ProcedureKind::Set;
    default:
      return ProcedureKind::Procedure;
  }
}

bool isCode(vb::TokenKind kind) {
  using enum vb::TokenKind;
  return kind != Blank && kind != LineEnd && kind != Continuation && kind != Comment;
}

// The last line with code in front of that token; 0 for none.
std::int32_t lastCodeLine(const vb::Module& module, std::uint32_t token) {
  while (token > 0 && !isCode(module.tokens[token - 1].kind)) --token;
  if (token == 0) return 0;
  const auto before = std::u8string_view(module.text).substr(0, module.tokens[token - 1].begin);
  return static_cast<std::int32_t>(std::ranges::count(before, u8'\n')) + 1;
}

}  // namespace

EditorProcedures editorProcedures(std::u8string text, std::int32_t lines) {
  EditorProcedures result{.declarationLines = lines, .procedures = {}};
  if (lines > kMaxModuleLines || text.size() > kMaxText) return result;
  const vb::Module module = vb::readModule(std::move(text), {}, {}, vb::WordLists());
  std::int32_t taken = 0;  // the lines up to here belong to declarations or procedures
  const auto close = [&] {
    if (!result.procedures.empty())
      result.procedures.back().lines = taken + 1 - result.procedures.back().start;
  };
  for (const vb::Declaration& declared : module.declarations) {
    const auto line = static_cast<std::int32_t>(declared.line);
    // One with a head in each branch of a conditional compilation is the first of them.
    if (!vb::isProcedure(declared.kind) || line <= taken) continue;
    close();
    if (result.procedures.empty())
      taken = result.declarationLines =
          std::min(lastCodeLine(module, declared.head.begin), line - 1);
    result.procedures.push_back({.name = fromUtf8(vb::plainName(module.textOf(declared.name))),
                                 .kind = kindOf(declared),
                                 .start = taken + 1});
    taken = std::max(static_cast<std::int32_t>(declared.endLine), line);
  }
  taken = lines;
  close();
  return result;
}

}  // namespace tintline
