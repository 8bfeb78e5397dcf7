// The texts that copying puts on the clipboard.
//
// Tested by tests/unit/output/output_test.cpp.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tintline {

// One list of lines with the user's selection, however it is stored.
struct SelectableLines {
  std::size_t count;
  std::function<std::string_view(std::size_t)> line;
  std::function<bool(std::size_t)> selected;
};

// PreCode, the selected HTML lines, PostCode. All lines are taken only when
// nothing is selected and PreCode is empty: a PreCode alone is copied alone.
std::string HTMLKopieren(std::string_view PreCode, const SelectableLines& List2,
                         std::string_view PostCode);

// The selected source lines, or all when none is selected, each behind a CR LF.
std::string Kopieren(const SelectableLines& List1);

}  // namespace tintline
