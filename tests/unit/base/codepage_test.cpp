// Tests of base/codepage.h. The tests program's ANSI code page is Windows-1252.
#include "base/codepage.h"

#include <gtest/gtest.h>

namespace tintline {
namespace {

using namespace std::string_literals;

TEST(CodePage, EveryByteSurvivesTheWayAndBack) {
  std::string bytes;
  for (int code = 0; code < 256; ++code) bytes += static_cast<char>(code);
  EXPECT_EQ(toAnsi(fromAnsi(bytes)), bytes);
  EXPECT_EQ(fromAnsi("\xE4\x80\x9F\xDF"), L"ä€Ÿß");
  EXPECT_EQ(u8"ä€Ÿß"_ansi, "\xE4\x80\x9F\xDF");
  EXPECT_EQ(toAnsi(L"aΩ–ЖĀ"), "a?\x96??") << "no letter that merely looks alike";
  const std::string text(3'000'000, '\xE4');  // the system's calls take less
  EXPECT_EQ(toAnsi(fromAnsi(text)), text);
}

TEST(Utf8, ReadsWellFormedTextOnly) {
  const struct {
    const char* name;
    std::string bytes;
    std::wstring text;
  } rows[] = {
      {"first and last of each length",
       "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
       L"\x7F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF"},
      {"NUL and the last in front of the surrogates", "\0\xED\x9F\xBF"s, L"\0\uD7FF"s},
      {"a byte of Windows-1252", "\xE4 b", L"\uFFFD b"},
      {"cut off", "\xE2\x82", L"\uFFFD\uFFFD"},
      {"a continuation alone", "\x80", L"\uFFFD"},
      {"longer than needed", "\xC0\x80\xE0\x9F\xBF", L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"a surrogate", "\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
      {"beyond the last character", "\xF4\x90\x80\x80\xFF", L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(fromUtf8(row.bytes), row.text) << row.name;
    if (row.text.find(L'\uFFFD') == std::wstring::npos) {
      EXPECT_EQ(toUtf8(row.text), row.bytes) << row.name;
    }
  }
  // One character as two units of 16 bits, and halves of such pairs.
  EXPECT_EQ(toUtf8(std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)}), "\xF0\x9F\x98\x80");
  EXPECT_EQ(toUtf8(std::wstring{wchar_t(0xDE00), L'a', wchar_t(0xD83D)}),
            "\xEF\xBF\xBD\x61\xEF\xBF\xBD");
}

TEST(Utf16, IsConvertedCharacterByCharacter) {
  const struct {
    const char* name;
    std::string littleEndian, ansi;
  } rows[] = {
      {"letters, NUL", "a\0\xE4\0\xAC\x20\0\0"s, "a\xE4\x80\0"s},
      {"outside the code page", "\x00\x04"s, "?"},
      {"a pair is one character", "\x3D\xD8\x00\xDE\x61\0"s, "?a"},
      {"half a pair", "\x3D\xD8\x61\0"s, "?a"},
      {"the other half", "\x00\xDE\x61\0"s, "?a"},
      {"half a pair at the end", "\x3D\xD8"s, "?"},
      {"an odd last byte", "a\0b"s, "a?"},
      {"one byte", "a", "?"},
      {"empty", "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(utf16ToAnsi(row.littleEndian, ByteOrder::LittleEndian), row.ansi) << row.name;
    std::string bigEndian = row.littleEndian;
    for (std::size_t i = 0; i + 1 < bigEndian.size(); i += 2)
      std::swap(bigEndian[i], bigEndian[i + 1]);
    EXPECT_EQ(utf16ToAnsi(bigEndian, ByteOrder::BigEndian), row.ansi) << row.name;
  }
}

}  // namespace
}  // namespace tintline
