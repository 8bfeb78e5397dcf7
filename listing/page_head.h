// The beginning of every HTML page.
//
// Tested by tests/unit/listing/listing_test.cpp and tests/browser/exact.py.
#pragma once

#include <string_view>

#include "listing/output.h"
#include "listing/words.h"

namespace tintline::listing {

// From the first byte to the end of <head>. `style` is its style sheet, may be empty.
void writeHead(Output& out, const Words& words, std::u8string_view title, std::string_view style);

}  // namespace tintline::listing
