// See frmProzeduren.h. Tested by tests/app/search_test.cpp.
#include "app/frmProzeduren/frmProzeduren.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "base/codepage.h"
#include "base/line_list.h"

namespace tintline {
namespace {

constexpr std::size_t kNameWidth = 32, kKindWidth = 10;  // columns

std::wstring column(std::wstring text, std::size_t width) {
  text.resize(std::max(text.size() + 2, width), L' ');
  return text;
}

std::wstring textOf(const ProcedureLine& procedure) {
  return column(procedure.name, kNameWidth) + column(procedure.kind, kKindWidth) + L"Zeile " +
         std::to_wstring(procedure.line + 1);
}

// Whether each word of the filter is a part of the name.
bool matches(const ProcedureLine& procedure, std::wstring_view filter) {
  const FoldedText name(procedure.name);
  while (!filter.empty()) {
    const std::size_t end = std::min(filter.find(L' '), filter.size());
    if (!name.contains(FoldedText(filter.substr(0, end)))) return false;
    filter.remove_prefix(std::min(end + 1, filter.size()));
  }
  return true;
}

}  // namespace

frmProzeduren::frmProzeduren() {
  Caption = L"Prozeduren";
  lblFilter.Caption = L"Filter:";
  OKButton.Caption = L"Gehe zu";
  CancelButton.Caption = L"Abbrechen";
  lstProzeduren.AccessibleName = L"Prozeduren";
  txtFilter.Change = [this] { filter(); };
  lstProzeduren.Click = [this] { move(0); };
  lstProzeduren.DblClick = [this] { OKButton_Click(); };
  OKButton.Click = [this] { OKButton_Click(); };
  CancelButton.Click = [this] { Unload(); };
}

std::optional<std::size_t> frmProzeduren::choose(std::vector<ProcedureLine> procedures,
                                                 std::size_t current) {
  procedures_ = std::move(procedures);
  current_ = current;
  chosen_.reset();
  ShowModal();
  return chosen_;
}

// The procedure that the user is in is the current one.
void frmProzeduren::Form_Load() {
  txtFilter.Text = L"";
  filter();
  const auto behind = std::ranges::upper_bound(procedures_, current_, {}, &ProcedureLine::line);
  move(std::max<std::ptrdiff_t>(behind - procedures_.begin() - 1, 0));
}

void frmProzeduren::filter() {
  shown_.clear();
  LineList lines;
  for (std::size_t i = 0; i < procedures_.size(); ++i) {
    if (!matches(procedures_[i], txtFilter.Text())) continue;
    shown_.push_back(i);
    lines.append(toUtf8(textOf(procedures_[i])));
  }
  lstProzeduren.setLines(std::move(lines), TextEncoding::Utf8);
  OKButton.Enabled = !shown_.empty();
  lblAnzahl.Caption =
      std::to_wstring(shown_.size()) + L" von " + std::to_wstring(procedures_.size());
  move(0);
}

void frmProzeduren::move(std::ptrdiff_t lines) {
  if (shown_.empty()) return;
  const std::ptrdiff_t last = static_cast<std::ptrdiff_t>(shown_.size()) - 1;
  const std::ptrdiff_t from = std::max<std::ptrdiff_t>(lstProzeduren.ListIndex(), 0);
  lstProzeduren.selectOnly(
      static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(from + lines, 0, last)));
}

void frmProzeduren::OKButton_Click() {
  if (lstProzeduren.ListIndex() == ListBox::kNone) return;
  chosen_ = procedures_[shown_[static_cast<std::size_t>(lstProzeduren.ListIndex())]].line;
  Unload();
}

}  // namespace tintline
