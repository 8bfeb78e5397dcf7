// Reads what the tokens of a module declare.
//
// Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
#pragma once

#include "vb/module.h"

namespace tintline::vb {

// Fills all of the module that its text and tokens, and the name and kind of its file, tell.
// `breaks` are those of its tokens.
void readDeclarations(Module& module, const Breaks& breaks);

}  // namespace tintline::vb
