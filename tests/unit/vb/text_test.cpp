// Decoding of source texts.
#include "vb/text.h"

#include <gtest/gtest.h>

#include <string>

namespace tintline::vb {
namespace {

struct Row {
  std::string_view bytes;
  std::optional<CodePage> page;
  CodePage fallback;
  std::u8string_view text;
  CodePage readAs;
  std::size_t replaced;
};

using namespace std::string_view_literals;

const Row kRows[] = {
    // What a text says itself
    {"Dim x\r\n", {}, 1250, u8"Dim x\r\n", 1250, 0},
    {"", {}, 932, u8"", 932, 0},
    {"\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F", {}, 1252, u8"grüß", kUtf8, 0},
    {"gr\xC3\xBC\xC3\x9F\xF0\x9F\x98\x80", {}, 1252, u8"grüß😀", kUtf8, 0},
    {"gr\xFC\xDF", {}, 1252, u8"grüß", 1252, 0},
    {"\xFF\xFEg\0\xFC\0\x3D\xD8\x00\xDE"sv, {}, 1252, u8"gü😀", 1200, 0},
    {"\xFE\xFF\0g\0\xFC"sv, {}, 1252, u8"gü", 1201, 0},
    {"\0a\0"sv, {}, 1252, u8"\0a\0"sv, 1252, 0},
    // What a caller says
    {"\xC3\xBC", 1252, 1252, u8"Ã¼", 1252, 0},
    {"\xEF\xBB\xBFx", kUtf8, 1252, u8"x", kUtf8, 0},
    {"\xEF\xBB\xBFx", 1252, 1252, u8"ï»¿x", 1252, 0},
    {"\xD0\xCF", 1251, 1252, u8"РП", 1251, 0},
    {"\x80\x9F", 10000, 1252, u8"Äü", 10000, 0},
    {"\xA4", 28605, 1252, u8"€", 28605, 0},
    {"\x83\x65\x83\x58\x83\x67\xB1\x81\x5C", 932, 1252, u8"テストｱ―", 932, 0},
    {"\xB2\xE2\xCA\xD4\x80", 936, 1252, u8"测试€", 936, 0},
    {"\xC7\xD1\xB1\xDB", 949, 1252, u8"한글", 949, 0},
    {"\xB4\xFA\xB8\xD5\xA5\x5C", 950, 1252, u8"測試功", 950, 0},
    // What is no character
    {"a\x81z", 1252, 1252, u8"a\uFFFDz", 1252, 1},
    {"\xC3\x28\xE2\x82\xED\xA0\x80", kUtf8, 1252, u8"\uFFFD(\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD", kUtf8,
     6},
    {"\x00\xD8x\0\x00\xDC\x41"sv, 1200, 1252, u8"\uFFFDx\uFFFD\uFFFD", 1200, 3},
    {"\x83\"\x83", 932, 1252, u8"\uFFFD\"\uFFFD", 932, 2},
    {"\xFC", 20127, 1252, u8"\uFFFD", 20127, 1},
};

TEST(SourceText, isDecoded) {
  for (const Row& row : kRows) {
    const Decoded decoded = decode(row.bytes, row.page, row.fallback);
    EXPECT_EQ(decoded.text, row.text) << std::string(row.bytes);
    EXPECT_EQ(decoded.codePage, row.readAs) << std::string(row.bytes);
    EXPECT_EQ(decoded.replaced, row.replaced) << std::string(row.bytes);
  }
}

TEST(SourceText, pagesHaveNames) {
  const std::pair<std::string_view, CodePage> kNames[] = {
      {"UTF-8", 65001},
      {"1252", 1252},
      {"windows-1250", 1250},
      {"cp932", 932},
      {"Shift_JIS", 932},
      {"ISO-8859-15", 28605},
      {"macintosh", 10000},
      {"KOI8-R", 20866},
      {"x-mac-ce", 10029},
      {"utf-16", 1200},
      {"IBM850", 850},
      {"65001", 65001},
      {"iso-8859-12", 0},
      {"1259", 0},
      {"", 0},
      {"cp", 0},
      {"70000", 0},
      {"latin1;", 0},
  };
  for (const auto& [name, page] : kNames) {
    EXPECT_EQ(codePageNamed(name).value_or(0), page) << name;
    EXPECT_EQ(page != 0 && isKnown(page), page != 0) << name;
  }
}

}  // namespace
}  // namespace tintline::vb
