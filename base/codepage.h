// The one place where the kinds of text are converted into each other.
//
// Source and HTML are 8-bit text in the ANSI code page, what the user reads is
// wide text. On Windows the system's ANSI code page counts, elsewhere
// Windows-1252. A character that does not fit becomes "?"; nothing throws.
//
// Tested by tests/unit/base/codepage_test.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace tintline {

std::string toAnsi(std::wstring_view text);
std::wstring fromAnsi(std::string_view text);

// The number of the ANSI code page: 1252, 932 ...
unsigned ansiCodePage();

// UTF-8, for what the command line gets and prints. Bytes that are not UTF-8
// are read as U+FFFD.
std::string toUtf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view text);

inline std::wstring fromUtf8(std::u8string_view text) {
  return fromUtf8(std::string_view(reinterpret_cast<const char*>(text.data()), text.size()));
}

// What the bytes of a text are, where both kinds are possible.
enum class TextEncoding : unsigned char { Ansi, Utf8 };

inline std::wstring toWide(std::string_view text, TextEncoding encoding) {
  return encoding == TextEncoding::Utf8 ? fromUtf8(text) : fromAnsi(text);
}

// A path as the user reads it; parts that are no text become U+FFFD.
std::wstring pathText(const std::filesystem::path& path);

// The path for programs: its own bytes where it is bytes, else UTF-8.
std::string pathBytes(const std::filesystem::path& path);

// The path that such a text names.
std::filesystem::path pathFromText(std::wstring_view text);

// The bytes of a UTF-16 text (without its byte-order mark) in the ANSI code
// page. An odd last byte is one character that does not fit. `replaced`, when given, is set to
// the number of characters that became "?".
enum class ByteOrder { LittleEndian, BigEndian };
std::string utf16ToAnsi(std::string_view bytes, ByteOrder order, std::size_t* replaced = nullptr);

// The same for UTF-8 text.
std::string utf8ToAnsi(std::string_view text, std::size_t* replaced = nullptr);

namespace detail {

// Windows-1252 between 0x80 and 0x9F; 0 where no character is assigned.
inline constexpr std::array<char32_t, 32> kWindows1252High = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The Windows-1252 code of a character, or -1. The five codes without a
// character stand for the control characters of the same number.
constexpr int windows1252Code(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
    return static_cast<int>(character);
  for (std::size_t i = 0; i < kWindows1252High.size(); ++i)
    if (kWindows1252High[i] == character ||
        (kWindows1252High[i] == 0 && character == 0x80 + static_cast<char32_t>(i)))
      return 0x80 + static_cast<int>(i);
  return -1;
}

constexpr char32_t windows1252Character(unsigned char code) {
  if (code < 0x80 || code > 0x9F) return code;
  const char32_t character = kWindows1252High[code - 0x80U];
  return character == 0 ? code : character;
}

template <std::size_t N>
struct Utf8Literal {
  char8_t units[N]{};
  consteval Utf8Literal(const char8_t (&text)[N]) {
    for (std::size_t i = 0; i < N; ++i) units[i] = text[i];
  }
};

template <Utf8Literal Text>
struct AnsiLiteral {
  static constexpr std::size_t size = [] {
    std::size_t characters = 0;
    for (const char8_t unit : Text.units) characters += (unit & 0xC0) != 0x80;
    return characters;
  }();
  static constexpr std::array<char, size> text = [] {
    std::array<char, size> result{};
    for (std::size_t from = 0, to = 0; from < sizeof Text.units;) {
      const unsigned lead = Text.units[from];
      const unsigned length = lead < 0x80 ? 1U : lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : 4U;
      char32_t character = length == 1 ? lead : lead & (0xFFU >> (length + 1));
      for (unsigned k = 1; k < length; ++k)
        character = (character << 6) | (Text.units[from + k] & 0x3FU);
      const int code = windows1252Code(character);
      if (code < 0) throw "not in Windows-1252";  // a compile error
      result[to++] = static_cast<char>(code);
      from += length;
    }
    return result;
  }();
};
}  // namespace detail

// u8"…"_ansi: a literal in Windows-1252; a character outside it does not compile.
template <detail::Utf8Literal Text>
consteval std::string_view operator""_ansi() {
  using Literal = detail::AnsiLiteral<Text>;
  return {Literal::text.data(), Literal::size - 1};
}

}  // namespace tintline
