// What must hold of the tokens of any text whatever.
#pragma once

#include <string_view>

#include "vb/token.h"

namespace tintline::vb {

// What does not hold of the tokens of the text, nullptr when all does: they cover it in order,
// blanks and line ends are where they belong, kinds and words fit, and what stands in front of a
// line's end does not depend on what stands behind it.
const char* faultOf(std::u8string_view text, const WordLists& words);

}  // namespace tintline::vb
