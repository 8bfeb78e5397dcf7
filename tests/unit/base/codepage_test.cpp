// Tests of base/codepage.h. The tests program's ANSI code page is Windows-1252.
#include "base/codepage.h"

#include <gtest/gtest.h>

namespace tintline {
namespace {

using namespace std::string_literals;

std::string everyByte() {
  std::string bytes;
  for (int code = 0; code < 256; ++code) bytes += static_cast<char>(code);
  return bytes;
}

TEST(CodePage, EveryByteSurvivesTheWayAndBack) {
  EXPECT_EQ(toAnsi(fromAnsi(everyByte())), everyByte());
  EXPECT_EQ(fromAnsi("\xE4\x80\x9F\xDF"), L"ä€Ÿß");
}

TEST(CodePage, WhatDoesNotFitBecomesAQuestionMark) {
  EXPECT_EQ(toAnsi(L"aΩ–Ж"), "a?\x96?");
  EXPECT_EQ(toAnsi(L"Ā"), "?") << "no letter that merely looks alike";
  EXPECT_EQ(toAnsi(L""), "");
}

TEST(CodePage, LiteralsAreConvertedByTheCompiler) {
  EXPECT_EQ(u8"Übersicht €"_ansi,
            "\xDC"
            "bersicht \x80");
  EXPECT_EQ(u8""_ansi, "");
}

TEST(CodePage, LongTexts) {
  const std::string text(3'000'000, '\xE4');
  EXPECT_EQ(fromAnsi(text), std::wstring(3'000'000, L'ä'));
  EXPECT_EQ(toAnsi(std::wstring(3'000'000, L'ä')), text);
}

TEST(Utf8, ReadsWellFormedTextOnly) {
  const struct {
    const char* name;
    std::string bytes;
    std::wstring text;
  } rows[] = {
      {"one to four bytes", "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", L"aä€😀"},
      {"first and last of each length",
       "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
       L"\x7F\u0080\u07FF\u0800\uFFFD\U00010000\U0010FFFF"},
      {"NUL", "\0"s, L"\0"s},
      {"a byte of Windows-1252",
       "\xE4"
       "b",
       L"\uFFFDb"},
      {"cut off", "\xE2\x82", L"\uFFFD\uFFFD"},
      {"a continuation alone", "\x80", L"\uFFFD"},
      {"longer than needed", "\xC0\x80", L"\uFFFD\uFFFD"},
      {"longer than needed, three bytes", "\xE0\x9F\xBF", L"\uFFFD\uFFFD\uFFFD"},
      {"a surrogate", "\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},
      {"beyond the last character", "\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"no lead byte", "\xFF", L"\uFFFD"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(fromUtf8(row.bytes), row.text) << row.name;
    if (row.text.find(L'\uFFFD') == std::wstring::npos) {
      EXPECT_EQ(toUtf8(row.text), row.bytes) << row.name;
    }
  }
}

TEST(Utf8, WritesBothKindsOfWideText) {
  // The same character as one unit of 32 bits and as two of 16.
  EXPECT_EQ(toUtf8(std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)}), "\xF0\x9F\x98\x80");
  EXPECT_EQ(toUtf8(L"😀"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(toUtf8(std::wstring{wchar_t(0xD83D)}), "\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(std::wstring{wchar_t(0xDE00), L'a'}),
            "\xEF\xBF\xBD"
            "a");
}

TEST(CodePage, PathsAreReadable) {
  EXPECT_EQ(pathText(std::filesystem::path(u8"Übung Ω.bas")), L"Übung Ω.bas");
#ifndef _WIN32
  EXPECT_EQ(pathText("\xE4.bas"), L"\uFFFD.bas");
#endif
}

TEST(Utf16, IsConvertedCharacterByCharacter) {
  const struct {
    const char* name;
    std::string littleEndian;
    std::string ansi;
  } rows[] = {
      {"empty", "", ""},
      {"letters", "a\0\xE4\0\xAC\x20"s, "a\xE4\x80"},
      {"NUL", "\0\0"s, "\0"s},
      {"a character outside the code page", "\x00\x04"s, "?"},
      {"a pair is one character",
       "\x3D\xD8\x00\xDE"
       "a\0"s,
       "?a"},
      {"half a pair",
       "\x3D\xD8"
       "a\0"s,
       "?a"},
      {"the other half",
       "\x00\xDE"
       "a\0"s,
       "?a"},
      {"half a pair at the end", "\x3D\xD8"s, "?"},
      {"an odd last byte", "a\0b"s, "a?"},
      {"one byte", "a", "?"},
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
