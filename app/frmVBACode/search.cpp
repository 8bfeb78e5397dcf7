// Finding text, lines and procedures in the lists. Tested by tests/app/search_test.cpp.
#include <algorithm>
#include <string>

#include "app/application.h"
#include "app/frmVBACode/frmVBACode.h"
#include "app/line_search.h"
#include "base/typed_number.h"

namespace tintline {

// The list that the user works in, or worked in when he last searched.
ListBox& frmVBACode::searchedList() {
  if (ActiveControl != nullptr) searched_ = ActiveControl;
  return searched_->ListCount() > 0 ? *searched_ : List1;
}

void frmVBACode::Suchen() {
  ListBox& list = searchedList();
  const auto text = ports_.dialogs.input(L"Suchen nach:", suchtext_);
  if (!text || text->empty()) return;
  suchtext_ = *text;
  findNext(list, true);
}

void frmVBACode::Weitersuchen(bool forward) {
  if (suchtext_.empty()) return Suchen();
  findNext(searchedList(), forward);
}

void frmVBACode::findNext(ListBox& list, bool forward) {
  const auto found = findLine(list, suchtext_, forward);
  if (found) goTo(list, found->line);
  if (!found) return tellStatus(L"„" + suchtext_ + L"“ nicht gefunden");
  const wchar_t* const from = forward ? L", von vorn gesucht" : L", von hinten gesucht";
  tellStatus(L"„" + suchtext_ + L"“ in Zeile " + std::to_wstring(found->line + 1) + L", Treffer " +
             std::to_wstring(found->number) + L" von " + std::to_wstring(found->count) +
             (found->wrapped ? from : L""));
}

// As a click on the line.
void frmVBACode::goTo(ListBox& list, std::size_t line) {
  list.selectOnly(line);
  if (&list == &List1)
    List1auswerten();
  else
    ListBoxauswerten();
}

void frmVBACode::GeheZuZeile() {
  ListBox& list = searchedList();
  const std::size_t count = list.ListCount();
  const auto answer =
      ports_.dialogs.input(L"Zeile (1 bis " + std::to_wstring(count) + L"):",
                           std::to_wstring(std::max<std::ptrdiff_t>(list.ListIndex(), 0) + 1));
  if (!answer) return;
  if (const auto line = parseNumber(*answer, count); line && *line > 0)
    return goTo(list, *line - 1);
  ports_.dialogs.message(
      L"\"" + *answer + L"\" ist keine Zeile. Erlaubt sind 1 bis " + std::to_wstring(count) + L".",
      MessageIcon::Critical, {});
}

void frmVBACode::ProzedurenZeigen() {
  const std::ptrdiff_t current = std::max<std::ptrdiff_t>(List1.ListIndex(), 0);
  const auto line =
      application_.prozeduren.choose(proceduresOf(List1), static_cast<std::size_t>(current));
  if (!line) return;
  goTo(List1, *line);
  List1.scrollTo(*line);
}

}  // namespace tintline
