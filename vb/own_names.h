// Words of the runtime library that a module declares as names of its own: Dim Left, Function
// Format. Where such a declaration counts, the word is a name like any other.
//
// Tested by the cases in tests/golden/language/declarations.
#pragma once

#include "vb/module.h"

namespace tintline::vb {

// Makes plain names of the tokens that mean what the module itself declares: parameters and locals
// in their procedure, the module's own procedures, variables, constants, Enum members and controls
// everywhere.
void releaseOwnNames(Module& module, const WordLists& words);

}  // namespace tintline::vb
