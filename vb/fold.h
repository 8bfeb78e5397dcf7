// Names compared as the language does it: without regard to case, also beyond ASCII.
//
// Tested by tests/unit/vb/fold_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace tintline::vb {

// The lower case of a letter: Latin, Greek, Cyrillic, Armenian and the wide Latin letters of
// double-byte pages (simple folding of the Unicode Character Database). Others as they are.
char32_t fold(char32_t character);

// The folded text, valid UTF-8 like the text itself.
std::u8string folded(std::u8string_view text);

bool equalFolded(std::u8string_view a, std::u8string_view b);

// Whether the word is one of those, case disregarded.
bool isOneOf(std::span<const std::u8string_view> words, std::u8string_view word);

// ------------------------------------------------------------------------------------------
// Names are almost always ASCII: eight characters at a time are folded in a register. A text that
// holds anything else is folded as a whole and then treated alike.

namespace folding {

inline constexpr std::uint64_t kOnes = 0x0101010101010101;
inline constexpr std::uint64_t kHighBits = 0x80 * kOnes;

// "A" to "Z" of eight ASCII characters in lower case.
inline std::uint64_t foldAscii(std::uint64_t characters) {
  const std::uint64_t fromA = characters + (0x80 - 'A') * kOnes;
  const std::uint64_t behindZ = characters + (0x7F - 'Z') * kOnes;
  return characters | ((fromA ^ behindZ) & kHighBits) >> 2;
}

template <std::size_t Size>
std::uint64_t load(const char8_t* text) {
  std::uint64_t characters = 0;
  std::memcpy(&characters, text, Size);
  return characters;
}

// The last one to seven characters, some of them twice.
inline std::uint64_t loadTail(const char8_t* text, std::size_t size) {
  if (size >= 4) return load<4>(text) | load<4>(text + size - 4) << 32;
  return std::uint64_t{text[0]} | std::uint64_t{text[size / 2]} << 8 |
         std::uint64_t{text[size - 1]} << 16;
}

bool equalByCharacters(std::u8string_view a, std::u8string_view b);

}  // namespace folding

inline bool equalFolded(std::u8string_view a, std::u8string_view b) {
  if (a.size() != b.size()) return folding::equalByCharacters(a, b);
  std::size_t left = a.size();
  for (const char8_t *p = a.data(), *q = b.data(); left > 0;) {
    const std::size_t size = left < 8 ? left : 8;
    const std::uint64_t x = size < 8 ? folding::loadTail(p, size) : folding::load<8>(p);
    const std::uint64_t y = size < 8 ? folding::loadTail(q, size) : folding::load<8>(q);
    if (x != y) {
      if (((x | y) & folding::kHighBits) != 0) return folding::equalByCharacters(a, b);
      if (folding::foldAscii(x) != folding::foldAscii(y)) return false;
    }
    p += size, q += size, left -= size;
  }
  return true;
}

}  // namespace tintline::vb
