// Lines of the two conversions: what their blanks, ends and widths are.
//
// Tested by tests/unit/reformat/wrapping_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/line_list.h"

namespace tintline {

// What the lines of a list hold.
enum class LineText : std::uint8_t {
  Ansi,  // 8-bit text of the classic conversion, without line ends; at most kMaxLines
  Utf8   // decoded text of the exact one, each line with its line end; any number of lines
};

// The lines of a decoded text, which end at CR LF, CR or LF. The last may lack its end.
LineList linesOf(std::u8string_view text);

// The decoded text that the lines are.
std::u8string textOf(const LineList& lines);

// Position of the first character at or behind `from` that is no blank: space, tab and, in decoded
// text, what else the language takes for one; the length of the text when there is none.
std::size_t skipBlanks(std::string_view text, std::size_t from, LineText kind);

// The line without its line end and the blanks in front of that. Those of 8-bit text that do not
// count are spaces.
std::string_view contentOf(std::string_view line, LineText kind);

// The width of a text: bytes, or code points of decoded text. A tab counts as one.
std::size_t widthOf(std::string_view text, LineText kind);

}  // namespace tintline
