// The header that a saved form, class or control begins with: VERSION, libraries, and its controls
// with their properties, nested as they lie in each other.
//
// Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
#pragma once

#include "vb/module.h"
#include "vb/token_cursor.h"

namespace tintline::vb {

// Reads the header, if the text begins with one: declares its controls, sets `header` and what it
// says of the module's kind. The cursor stands behind it afterwards.
void readFileHeader(Module& module, TokenCursor& cursor);

}  // namespace tintline::vb
