// What is done to the lines of a source before they are converted.
//
// Tested by tests/golden/run.py and tests/cli/run.py.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/line_list.h"

namespace tintline {

struct Reformatting {
  enum class Pass : std::uint8_t {
    Formatieren,   // indents, as the last of many presses of "format" does
    Formatieren2,  // the same for "format2"
    Umbruch        // breaks lines
  };
  Pass pass;
  int unit;       // blanks a level; when lines are broken 0 counts as 4
  int width = 0;  // to which lines are broken, 0: they are not
};

// The lines after the pass; nothing when there were too many. Every pass of an indentation
// begins with the trimmed line, so that the last one gives what all in front of it give.
std::optional<LineList> reformatted(const LineList& List1, const Reformatting& reformatting);

// The same for decoded text: any number of lines, each keeps its line end, and widths are code
// points.
std::u8string reformatted(std::u8string_view text, const Reformatting& reformatting);

}  // namespace tintline
