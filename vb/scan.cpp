// See scan.h. Tested by tests/unit/any_text_property_test.cpp.
#include "vb/scan.h"

#include <algorithm>
#include <iterator>

namespace tintline::vb {
namespace {

struct Range {
  char32_t first, last;
};

// What is no letter, digit or mark in the blocks from U+0080 on: controls, punctuation, signs and
// pictures. Rare signs inside the blocks of scripts count as letters, which harms nothing.
constexpr Range kNoLetters[] = {
    {0x80, 0xA9},     {0xAB, 0xB4},     {0xB6, 0xB9},     {0xBB, 0xBF},       {0xD7, 0xD7},
    {0xF7, 0xF7},     {0x2C2, 0x2C5},   {0x2D2, 0x2DF},   {0x37E, 0x37E},     {0x387, 0x387},
    {0x55A, 0x55F},   {0x589, 0x58F},   {0x5BE, 0x5BE},   {0x60C, 0x60F},     {0x61B, 0x61F},
    {0x66A, 0x66D},   {0x6D4, 0x6D4},   {0xE3F, 0xE3F},   {0xE4F, 0xE4F},     {0xE5A, 0xE5B},
    {0x1680, 0x1680}, {0x2000, 0x206F}, {0x207A, 0x207E}, {0x208A, 0x208E},   {0x20A0, 0x20CF},
    {0x2100, 0x2101}, {0x2103, 0x2106}, {0x2108, 0x2109}, {0x2114, 0x2114},   {0x2116, 0x2118},
    {0x211E, 0x2123}, {0x2190, 0x245F}, {0x249C, 0x24E9}, {0x2500, 0x2BFF},   {0x2E00, 0x2FFF},
    {0x3000, 0x3004}, {0x3008, 0x3020}, {0x3030, 0x3030}, {0x3036, 0x3037},   {0x303D, 0x303F},
    {0x309B, 0x309C}, {0x30A0, 0x30A0}, {0x30FB, 0x30FB}, {0x3200, 0x33FF},   {0xD800, 0xF8FF},
    {0xFE10, 0xFE1F}, {0xFE30, 0xFE6F}, {0xFEFF, 0xFF0F}, {0xFF1A, 0xFF20},   {0xFF3B, 0xFF3E},
    {0xFF40, 0xFF40}, {0xFF5B, 0xFF65}, {0xFFE0, 0xFFFF}, {0x1F000, 0x1FAFF}, {0xE0000, 0x10FFFF},
};

}  // namespace

std::size_t characterLength(const char8_t* p, const char8_t* end) {
  const std::size_t length = *p < 0xC0 ? 1 : *p < 0xE0 ? 2 : *p < 0xF0 ? 3 : 4;
  return std::min(length, static_cast<std::size_t>(end - p));
}

std::size_t wideLetter(const char8_t* p, const char8_t* end) {
  const std::size_t length = characterLength(p, end);
  if (length < 2) return 0;
  char32_t character = *p & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) character = character << 6 | (p[i] & 0x3FU);
  const auto* const range =
      std::lower_bound(std::begin(kNoLetters), std::end(kNoLetters), character,
                       [](const Range& r, char32_t c) { return r.last < c; });
  return range == std::end(kNoLetters) || character < range->first ? length : 0;
}

const char8_t* detail::skipAnyBlanks(const char8_t* p, const char8_t* end) {
  for (; end - p >= 16; p += 16) {  // spaces first, as an indentation has them
    const std::size_t spaces = firstMarked(loadBlock(p) != ' ');
    if (spaces == 16) continue;
    p += spaces;
    break;
  }
  while (p < end) {
    if (classOf(*p) == ByteClass::Blank)
      ++p;
    else if (*p == 0xE3 && end - p >= 3 && p[1] == 0x80 && p[2] == 0x80)
      p += 3;
    else
      break;
  }
  return p;
}

const char8_t* continuationStart(const char8_t* begin, const char8_t* end) {
  const auto isBlank = [begin](const char8_t* behind) -> std::size_t {  // its bytes, or 0
    if (behind > begin && classOf(behind[-1]) == ByteClass::Blank) return 1;
    return behind - begin >= 3 && behind[-1] == 0x80 && behind[-2] == 0x80 && behind[-3] == 0xE3
               ? 3
               : 0;
  };
  const auto withoutBlanks = [&isBlank](const char8_t* p) {
    for (std::size_t bytes; (bytes = isBlank(p)) != 0;) p -= bytes;
    return p;
  };
  const char8_t* const mark = withoutBlanks(end);
  if (mark == begin || mark[-1] != u8'_' || isBlank(mark - 1) == 0) return nullptr;
  return withoutBlanks(mark - 1);
}

}  // namespace tintline::vb
