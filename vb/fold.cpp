// See fold.h. Tested by tests/unit/vb/fold_test.cpp.
#include "vb/fold.h"

#include <algorithm>
#include <cstddef>

namespace tintline::vb {

namespace {

// From `first` to `last`, each `step` characters, the lower case is `distance` further.
struct Letters {
  char32_t first, last;
  unsigned step;
  int distance;
};
constexpr Letters kLetters[] = {
    {'A', 'Z', 1, 32},          {0xC0, 0xD6, 1, 32},     {0xD8, 0xDE, 1, 32},
    {0x100, 0x12E, 2, 1},       {0x130, 0x130, 1, -199}, {0x132, 0x136, 2, 1},
    {0x139, 0x147, 2, 1},       {0x14A, 0x176, 2, 1},    {0x178, 0x178, 1, -121},
    {0x179, 0x17D, 2, 1},       {0x17F, 0x17F, 1, -268}, {0x1A0, 0x1A4, 2, 1},
    {0x1AF, 0x1AF, 1, 1},       {0x1CD, 0x1DB, 2, 1},    {0x1DE, 0x1EE, 2, 1},
    {0x1F8, 0x21E, 2, 1},       {0x222, 0x232, 2, 1},    {0x386, 0x386, 1, 38},
    {0x388, 0x38A, 1, 37},      {0x38C, 0x38C, 1, 64},   {0x38E, 0x38F, 1, 63},
    {0x391, 0x3A1, 1, 32},      {0x3A3, 0x3AB, 1, 32},   {0x3C2, 0x3C2, 1, 1},
    {0x400, 0x40F, 1, 80},      {0x410, 0x42F, 1, 32},   {0x460, 0x480, 2, 1},
    {0x48A, 0x4BE, 2, 1},       {0x4C0, 0x4C0, 1, 15},   {0x4C1, 0x4CD, 2, 1},
    {0x4D0, 0x52E, 2, 1},       {0x531, 0x556, 1, 48},   {0x1E00, 0x1E94, 2, 1},
    {0x1E9E, 0x1E9E, 1, -7615}, {0x1EA0, 0x1EFE, 2, 1},  {0x212A, 0x212A, 1, -8383},
    {0x212B, 0x212B, 1, -8262}, {0xFF21, 0xFF3A, 1, 32},
};

// The character at the start of valid UTF-8, which is cut off.
char32_t take(std::u8string_view& text) {
  const auto lead = static_cast<std::uint8_t>(text[0]);
  std::size_t size = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (size > text.size()) size = 1;  // not valid: byte by byte
  char32_t character = size == 1 ? lead : lead & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) character = character << 6 | (text[i] & 0x3Fu);
  text.remove_prefix(size);
  return character;
}

void append(std::u8string& text, char32_t character) {
  const auto tail = [&](int shift) {
    return static_cast<char8_t>(0x80 | (character >> shift & 0x3F));
  };
  if (character < 0x80) {
    text += static_cast<char8_t>(character);
  } else if (character < 0x800) {
    text += {static_cast<char8_t>(0xC0 | character >> 6), tail(0)};
  } else if (character < 0x10000) {
    text += {static_cast<char8_t>(0xE0 | character >> 12), tail(6), tail(0)};
  } else {
    text += {static_cast<char8_t>(0xF0 | character >> 18), tail(12), tail(6), tail(0)};
  }
}

}  // namespace

char32_t fold(char32_t character) {
  for (const Letters& letters : kLetters) {
    if (character < letters.first) break;
    if (character <= letters.last)
      return (character - letters.first) % letters.step == 0 ? character + letters.distance
                                                             : character;
  }
  return character;
}

std::u8string folded(std::u8string_view text) {
  std::u8string result(text);
  bool ascii = true;
  for (char8_t& c : result) {
    ascii = ascii && c < 0x80;
    if (c >= 'A' && c <= 'Z') c |= 0x20;
  }
  if (ascii) return result;
  result.clear();
  while (!text.empty()) append(result, fold(take(text)));
  return result;
}

bool folding::equalByCharacters(std::u8string_view a, std::u8string_view b) {
  while (!a.empty() && !b.empty())
    if (fold(take(a)) != fold(take(b))) return false;
  return a.empty() && b.empty();
}

bool isOneOf(std::span<const std::u8string_view> words, std::u8string_view word) {
  return std::ranges::any_of(words, [&](auto each) { return equalFolded(each, word); });
}

}  // namespace tintline::vb
