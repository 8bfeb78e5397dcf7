// The words of the language, and those that a user adds.
//
// Tested by tests/unit/vb/tokenizer_test.cpp.
#pragma once

#include <cstdint>
#include <string_view>

namespace tintline::vb {

// Which word a token is, without regard to case; of words that mean nothing to a reader None.
enum class Word : std::uint16_t {
  None
  // Sub, Function, ... : all words that tokenizer and reader ask for
};

// The two lists of a user's vb.ini, compared without case: words of the first count as Builtin
// when the built-in first list does not hold them, words of the second as ListedWord.
class WordLists;

}  // namespace tintline::vb
