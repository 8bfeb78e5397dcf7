// Names compared as the language does it: without regard to case, also beyond ASCII.
//
// Tested by tests/unit/vb/fold_test.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tintline::vb {

// The lower case of a letter: Latin, Greek, Cyrillic, Armenian and the wide Latin letters of
// double-byte pages (simple folding of the Unicode Character Database). Others as they are.
char32_t fold(char32_t character);

// The folded text, valid UTF-8 like the text itself.
std::u8string folded(std::u8string_view text);

bool equalFolded(std::u8string_view a, std::u8string_view b);

// Equal for all texts that `equalFolded` calls equal.
std::uint32_t foldedHash(std::u8string_view text);

}  // namespace tintline::vb
