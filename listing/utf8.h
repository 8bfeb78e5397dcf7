// The characters of UTF-8 texts that are valid (vb/text.h sees to it).
//
// Tested by tests/golden/exact.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tintline::listing {

inline constexpr char32_t kReplacement = 0xFFFD;

inline bool isContinuationByte(char8_t byte) { return (byte & 0xC0) == 0x80; }

// Bytes of the first character of a text that is not empty.
inline std::size_t sizeOfFirst(std::u8string_view text) {
  const char8_t lead = text[0];
  const std::size_t size = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  return std::min(size, text.size());
}

// The first character of a text that is not empty.
inline char32_t codePointOf(std::u8string_view text) {
  const std::size_t size = sizeOfFirst(text);
  if (size == 1) return text[0] < 0x80 ? text[0] : kReplacement;
  char32_t code = text[0] & (0xFFU >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) code = code << 6 | (text[i] & 0x3FU);
  return code;
}

inline void appendUtf8(std::u8string& text, char32_t c) {
  const auto byte = [&](char32_t value) { text += static_cast<char8_t>(value); };
  const auto last = [&](int shift) { byte(0x80 | (c >> shift & 0x3F)); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | c >> 6);
    last(0);
  } else if (c < 0x10000) {
    byte(0xE0 | c >> 12);
    last(6);
    last(0);
  } else {
    byte(0xF0 | c >> 18);
    last(12);
    last(6);
    last(0);
  }
}

// Appends a text: bytes that `plain` has as they are, each other character by special(character).
template <typename Special>
void appendText(std::u8string& out, std::u8string_view text, const std::array<bool, 256>& plain,
                Special special) {
  while (!text.empty()) {
    std::size_t run = 0;
    while (run < text.size() && plain[text[run]]) ++run;
    out += text.substr(0, run);
    text.remove_prefix(run);
    if (text.empty()) return;
    const std::u8string_view character = text.substr(0, sizeOfFirst(text));
    special(character);
    text.remove_prefix(character.size());
  }
}

inline std::uint32_t countCharacters(std::u8string_view text) {
  std::uint32_t count = 0;
  for (const char8_t byte : text) count += !isContinuationByte(byte);
  return count;
}

}  // namespace tintline::listing
