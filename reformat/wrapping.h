// Breaks source lines that are longer than a width, so that the source means the same.
//
// A statement goes on behind " _", one unit deeper than its first line, wherever that makes a line
// narrower. A comment behind it moves in front of it when it does not fit; one that has to stay
// counts only where its line ends up short enough. A comment line goes on as further comment
// lines. A line that cannot be broken stays as it is: one without a place for " _", a statement
// with 24 continuations, the header of a form or class file, Attribute lines, and the lines of
// conditional compilation.
//
// The length of a line is that without the blanks at its end.
//
// Tested by tests/unit/reformat/wrapping_test.cpp and wrapping_property_test.cpp.
#pragma once

#include <optional>
#include <string_view>

#include "base/line_list.h"
#include "reformat/line_text.h"

namespace tintline {

inline constexpr int kMinLineWidth = 20;
inline constexpr int kMaxLineWidth = 1000;

// How often the language lets one statement go on in another line.
inline constexpr int kMaxContinuations = 24;

// The line width that a user wrote: 20 to 1000, or 0 for "off"; nothing when it is
// neither. Blanks around the number do not count.
std::optional<int> parseLineWidth(std::wstring_view text);

// Whether some line is longer than `width`; never when that is 0.
bool hasLongerLine(const LineList& List1, int width, LineText kind = LineText::Ansi);

// The list with its lines broken to `width` (0: as they are). `unit` is how much deeper a statement
// goes on, 4 when that is 0. A line of 8-bit text that ends in a blank is broken into lines that
// end in one, one of decoded text into lines with its line end. Nothing when the result had more
// lines of 8-bit text than kMaxLines.
std::optional<LineList> wrapLines(const LineList& List1, int width, int unit,
                                  LineText kind = LineText::Ansi);

}  // namespace tintline
