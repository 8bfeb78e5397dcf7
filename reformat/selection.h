// Converts chosen lines only, one by one: no anchors, links, frames or rules.
//
// Tested by tests/unit/engine/engine_property_test.cpp.
#pragma once

#include <string>
#include <vector>

#include "engine/conversion.h"

namespace tintline {

struct SelectionConversion {
  HtmlLines List2;
  std::string table;  // the same lines as table rows

  // The HTML text: every line followed by "<br>".
  std::string_view body() const { return List2.text(); }
};

// Converts the lines of `List1` whose flag in `selected` (one a line) is set.
// Tells the observer emitted() and, with the 0-based index, processed().
SelectionConversion AuswahlKonvertieren(const LineList& List1, const std::vector<bool>& selected,
                                        const ConversionOptions& options,
                                        const DocumentFrame& frame, Highlighter& highlighter,
                                        ConversionObserver& observer);

}  // namespace tintline
