// See line_search.h. Tested by tests/app/search_test.cpp.
#include "app/line_search.h"

#include "base/codepage.h"
#include "convert/exact.h"
#include "vb/fold.h"
#include "vb/module.h"

namespace tintline {
namespace {

std::wstring nameOf(const vb::Module& module, const vb::Declaration& procedure) {
  const std::wstring name = fromUtf8(vb::plainName(module.textOf(procedure.name)));
  switch (procedure.accessor) {
    case vb::Accessor::Get:
      return name + L" (Get)";
    case vb::Accessor::Let:
      return name + L" (Let)";
    case vb::Accessor::Set:
      return name + L" (Set)";
    default:
      return name;
  }
}

std::wstring kindName(vb::DeclarationKind kind) {
  if (kind == vb::DeclarationKind::Sub) return L"Sub";
  return kind == vb::DeclarationKind::Function ? L"Function" : L"Property";
}

}  // namespace

FoldedText::FoldedText(std::wstring_view text) : text_(vb::folded(exactText(text))) {}

std::optional<FoundLine> findLine(const ListBox& list, std::wstring_view text, bool forward) {
  const FoldedText wanted(text);
  std::vector<std::size_t> lines;
  for (std::size_t i = 0; i < list.ListCount(); ++i)
    if (FoldedText(list.text(i)).contains(wanted)) lines.push_back(i);
  if (lines.empty()) return {};

  const bool none = list.ListIndex() == ListBox::kNone;
  const auto current = none ? 0 : static_cast<std::size_t>(list.ListIndex());
  std::size_t before = 0;  // how many are in front of the current line
  while (before < lines.size() && !none && lines[before] < current) ++before;
  std::size_t found = before;
  if (forward && !none && found < lines.size() && lines[found] == current) ++found;
  const bool wrapped = !none && (forward ? found == lines.size() : before == 0);
  if (forward)
    found %= lines.size();
  else
    found = (before == 0 ? lines.size() : before) - 1;
  return FoundLine{lines[found], found + 1, lines.size(), wrapped};
}

std::vector<ProcedureLine> proceduresOf(const ListBox& list) {
  std::u8string text;
  for (std::size_t i = 0; i < list.ListCount(); ++i) (text += exactText(list.text(i))) += u8'\n';
  const vb::Module module = vb::readModule(std::move(text), {}, vb::ModuleKind::Standard, {});
  std::vector<ProcedureLine> procedures;
  for (const vb::Declaration& declaration : module.declarations)
    if (vb::isProcedure(declaration.kind))
      procedures.push_back(
          {nameOf(module, declaration), kindName(declaration.kind), declaration.line - 1});
  return procedures;
}

}  // namespace tintline
