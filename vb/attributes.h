// Attribute lines: what a saved module says of itself and its members beside the code.
//
// Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
#pragma once

#include <cstdint>

#include "vb/module.h"
#include "vb/token_cursor.h"

namespace tintline::vb {

// Reads "Attribute [member.]name = value" into the module; the cursor stands at its first word and
// is left behind what is of use. `described` is the declaration that a member's attribute can
// belong to, or kNone. Whether the attribute is the module's own.
bool readAttribute(Module& module, TokenCursor& cursor, std::uint32_t described);

}  // namespace tintline::vb
