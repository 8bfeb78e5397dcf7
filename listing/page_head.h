// The beginning of every HTML page.
//
// Tested by tests/unit/listing/listing_test.cpp and tests/browser/exact.py.
#pragma once

#include <initializer_list>
#include <string_view>

#include "listing/output.h"
#include "listing/words.h"

namespace tintline::listing {

// From the first byte to the end of <head>. `styles` are the pieces of its style sheet, all may be
// empty.
void writeHead(Output& out, const Words& words, std::u8string_view title,
               std::initializer_list<std::string_view> styles);

}  // namespace tintline::listing
