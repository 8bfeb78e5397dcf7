// Where the characters of a line stand in a font of fixed pitch. A wide character, as of East Asian
// writing, takes two columns; a tab leads to the next column that is a multiple of kTabStop.
// Widths: Unicode Standard Annex #11, "W" and "F".
//
// Tested by tests/unit/app/controls_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tintline {

inline constexpr std::size_t kTabStop = 4;

struct LineLayout {
  std::wstring text;                 // the line, each tab a blank
  std::vector<std::size_t> columns;  // of each of its units, and the one behind the line
};

LineLayout layOutLine(std::wstring_view line);

}  // namespace tintline
