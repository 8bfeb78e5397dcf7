// What the bytes of a source are, and searches over them that look at sixteen bytes at once.
//
// Tested by tests/unit/any_text_property_test.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/block.h"

namespace tintline::vb {

// The class of a byte that begins a token.
enum class ByteClass : std::uint8_t {
  Error,  // no token begins with it
  Letter,
  Underscore,
  Digit,
  Blank,  // space, tab and code 0x19
  LineEnd,
  Quote,
  Apostrophe,
  Hash,
  Ampersand,
  Dot,
  Bang,
  Colon,
  Comparison,  // < = >
  Operator,
  Open,
  Close,
  Comma,
  Semicolon,
  Bracket,
  Wide  // of a character beyond ASCII
};

namespace detail {
constexpr std::array<ByteClass, 256> makeByteClasses() {
  std::array<ByteClass, 256> classes{};
  const auto set = [&classes](const char* bytes, ByteClass byteClass) {
    for (; *bytes != '\0'; ++bytes) classes[static_cast<unsigned char>(*bytes)] = byteClass;
  };
  for (unsigned code = 0x80; code < 0x100; ++code) classes[code] = ByteClass::Wide;
  for (unsigned code = 0; code < 26; ++code)
    classes['A' + code] = classes['a' + code] = ByteClass::Letter;
  set("0123456789", ByteClass::Digit);
  set("_", ByteClass::Underscore);
  set(" \t\x19", ByteClass::Blank);
  set("\r\n", ByteClass::LineEnd);
  set("\"", ByteClass::Quote);
  set("'", ByteClass::Apostrophe);
  set("#", ByteClass::Hash);
  set("&", ByteClass::Ampersand);
  set(".", ByteClass::Dot);
  set("!", ByteClass::Bang);
  set(":", ByteClass::Colon);
  set("<=>", ByteClass::Comparison);
  set("+-*/\\^", ByteClass::Operator);
  set("(", ByteClass::Open);
  set(")", ByteClass::Close);
  set(",", ByteClass::Comma);
  set(";", ByteClass::Semicolon);
  set("[", ByteClass::Bracket);
  return classes;
}
inline constexpr std::array<ByteClass, 256> kByteClasses = makeByteClasses();

constexpr std::array<bool, 256> makeWordBytes() {
  std::array<bool, 256> bytes{};
  for (unsigned code = 0; code < 256; ++code)
    bytes[code] = kByteClasses[code] == ByteClass::Letter ||
                  kByteClasses[code] == ByteClass::Digit ||
                  kByteClasses[code] == ByteClass::Underscore;
  return bytes;
}
inline constexpr std::array<bool, 256> kWordBytes = makeWordBytes();

// Whether a blank can begin with that byte.
inline constexpr std::array<bool, 256> kBlankStarts = [] {
  std::array<bool, 256> bytes{};
  for (unsigned code = 0; code < 256; ++code) bytes[code] = kByteClasses[code] == ByteClass::Blank;
  bytes[0xE3] = true;  // of U+3000
  return bytes;
}();
}  // namespace detail

inline ByteClass classOf(char8_t byte) { return detail::kByteClasses[byte]; }
inline bool isDigit(char8_t byte) { return byte >= u8'0' && byte <= u8'9'; }
inline bool isLineEnd(char8_t byte) { return byte == u8'\r' || byte == u8'\n'; }
// Letter, digit or "_" of ASCII.
inline bool isWordByte(char8_t byte) { return detail::kWordBytes[byte]; }

// The first of the given bytes from `p` on, `end` when there is none.
template <char8_t... Bytes>
const char8_t* findAnyOf(const char8_t* p, const char8_t* end) {
  for (; end - p >= 16; p += 16) {
    const Block block = loadBlock(p);
    const std::size_t found = firstMarked(((block == static_cast<unsigned char>(Bytes)) | ...));
    if (found < 16) return p + found;
  }
  while (p < end && ((*p != Bytes) && ...)) ++p;
  return p;
}

// How many bytes from `p` on make a character beyond ASCII that names may hold; 0 when it is not
// such a one.
std::size_t wideLetter(const char8_t* p, const char8_t* end);

// How many bytes the character at `p` has (never more than the text).
std::size_t characterLength(const char8_t* p, const char8_t* end);

namespace detail {
const char8_t* skipAnyBlanks(const char8_t* p, const char8_t* end);
}

// The end of the blanks at `p`, U+3000 being one.
inline const char8_t* skipBlanks(const char8_t* p, const char8_t* end) {
  if (end - p > 1) {  // no blank or one, mostly; which of them is nothing to branch on
    const char8_t* const behind = p + (*p == u8' ' ? 1 : 0);
    if (!detail::kBlankStarts[*behind]) return behind;
  }
  return detail::skipAnyBlanks(p, end);
}

// How many of sixteen bytes, from the first on, are ASCII letters, digits or "_".
inline std::size_t wordBytesIn(Block block) {
  const Block letters = (block | 0x20) - 'a', digits = block - '0';
  return firstMarked(~((letters < 26) | (digits < 10) | (block == '_')));
}

// The end of the ASCII letters, digits and "_" at `p`.
inline const char8_t* skipWordBytes(const char8_t* p, const char8_t* end) {
  for (; end - p >= 16; p += 16) {
    const std::size_t count = wordBytesIn(loadBlock(p));
    if (count < 16) return p + count;
  }
  while (p < end && isWordByte(*p)) ++p;
  return p;
}

inline const char8_t* skipDigits(const char8_t* p, const char8_t* end) {
  while (p < end && isDigit(*p)) ++p;
  return p;
}

// The end of the word at `p`.
inline const char8_t* skipWord(const char8_t* p, const char8_t* end) {
  for (;;) {
    p = skipWordBytes(p, end);
    const std::size_t wide = p < end && *p >= 0x80 ? wideLetter(p, end) : 0;
    if (wide == 0) return p;
    p += wide;
  }
}

// The end of the line end at `p`.
inline const char8_t* skipLineEnd(const char8_t* p, const char8_t* end) {
  return p + (*p == u8'\r' && end - p > 1 && p[1] == u8'\n' ? 2 : 1);
}

// For the "_" at `p`, which a blank precedes: the end of the line end that it takes back, or null
// when it is no continuation.
inline const char8_t* continuationEnd(const char8_t* p, const char8_t* end) {
  const char8_t* const line = skipBlanks(p + 1, end);
  return line < end && isLineEnd(*line) ? skipLineEnd(line, end) : nullptr;
}

// Where the "_" and the blanks in front of it begin, when the line of text from `begin` to `end`
// (where its line end is) is continued; else null.
const char8_t* continuationStart(const char8_t* begin, const char8_t* end);

}  // namespace tintline::vb
