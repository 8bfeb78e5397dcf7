// What must hold of the declarations and references of any text whatever.
#pragma once

#include <string_view>

#include "vb/module.h"

namespace tintline::vb {

// What does not hold when the text is read, bound in a project with a second module of the same
// text; nullptr when all does: declarations lie in the text and in what holds them, procedures
// beside each other, lines are right, and references lead from names to declarations.
const char* moduleFault(std::u8string_view text, const WordLists& words);

}  // namespace tintline::vb
