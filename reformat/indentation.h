// Re-indents source lines by block structure.
//
// Tested by tests/golden/run.py.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/line_list.h"
#include "reformat/line_text.h"

namespace tintline {

// Space(level × unit) followed by the text; a level below 0 is first set to 0.
std::string fktEinrücken(int unit, std::int16_t& level, std::string_view text);

// The list after "format": the unit grows by one and every line is indented
// anew. An empty list leaves list and unit as they are.
LineList Formatieren(const LineList& List1, int& unit, LineText kind = LineText::Ansi);

// The same for "format2": the unit shrinks by one, not below 0.
LineList Formatieren2(const LineList& List1, int& unit, LineText kind = LineText::Ansi);

}  // namespace tintline
