// Makes tokens of a text, in one pass.
//
// Tested by tests/unit/any_text_property_test.cpp and the cases in tests/golden/language.
#pragma once

#include <string_view>

#include "vb/token.h"

namespace tintline::vb {

// The tokens of any text (valid UTF-8, below 4 GiB), with their final kinds: also names are told
// apart by where they stand (declared procedures and types, labels, named arguments).
Tokens tokenize(std::u8string_view text, const WordLists& words);

// The same; notes in `breaks` the tokens, in ascending order, behind which a statement or a line
// may begin: line ends, continuations, comments, ":", Then and Else, and the End. Whoever looks for
// statements need not look at the many tokens between them.
Tokens tokenize(std::u8string_view text, const WordLists& words, Breaks& breaks);

}  // namespace tintline::vb
