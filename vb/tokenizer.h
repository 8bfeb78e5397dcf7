// Makes tokens of a text, in one pass.
//
// Tested by tests/unit/any_text_property_test.cpp and the cases in tests/golden/language.
#pragma once

#include <string_view>

#include "vb/name_table.h"
#include "vb/token.h"

namespace tintline::vb {

// The tokens of any text (valid UTF-8, below 4 GiB), with their final kinds: also names are told
// apart by where they stand (declared procedures and types, labels, named arguments).
Tokens tokenize(std::u8string_view text, const WordLists& words);

// The same; the names, which tokens have the numbers of, are those in `names` (of this text), and
// `breaks` holds the tokens, in ascending order, behind which a statement or a line may begin: line
// ends, continuations, comments, ":", Then and Else, and the End. Whoever looks for statements need
// not look at the many tokens between them.
//
// Words that are in the lists have no number, nor have names in brackets.
Tokens tokenize(std::u8string_view text, const WordLists& words, NameTable& names, Breaks& breaks);

}  // namespace tintline::vb
