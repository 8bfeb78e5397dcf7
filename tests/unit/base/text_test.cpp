// Tests of base/text.h.
#include "base/text.h"

#include <gtest/gtest.h>

#include <random>

#include "base/codepage.h"

namespace tintline {
namespace {

TEST(Text, OnlyBlanksAreTrimmed) {
  const struct {
    std::string_view text, left, right, both;
  } rows[] = {
      {"", "", "", ""},
      {"   ", "", "", ""},
      {" a b ", "a b ", " a b", "a b"},
      {"a", "a", "a", "a"},
      {" \ta\xA0 ", "\ta\xA0 ", " \ta\xA0", "\ta\xA0"},
      {std::string_view("\0 ", 2), std::string_view("\0 ", 2), std::string_view("\0", 1),
       std::string_view("\0", 1)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(LTrim(row.text), row.left) << row.text;
    EXPECT_EQ(RTrim(row.text), row.right) << row.text;
    EXPECT_EQ(Trim(row.text), row.both) << row.text;
  }
}

TEST(Text, TakesWordsWithOneBlankBehindThem) {
  const struct {
    std::string_view text, word, rest;
  } rows[] = {
      {"", "", ""},           {"a", "a", ""},       {"a ", "a ", ""},
      {"a  b ", "a ", " b "}, {" a b", " ", "a b"}, {"a\tb c", "a\tb ", "c"},
  };
  for (const auto& row : rows) {
    std::string_view rest = row.text;
    EXPECT_EQ(takeWord(rest), row.word) << row.text;
    EXPECT_EQ(rest, row.rest) << row.text;
  }
}

TEST(Text, SpaceOfNothing) {
  EXPECT_EQ(Space(3), "   ");
  EXPECT_EQ(Space(0), "");
  EXPECT_EQ(Space(-1), "");
}

// What the letter is in the other case, told by its name in Windows-1252.
TEST(Text, EveryLetterOfTheCodePageHasItsPartner) {
  constexpr std::string_view kUpper =
      u8"ABCDEFGHIJKLMNOPQRSTUVWXYZÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŠŒŽŸ"_ansi;
  constexpr std::string_view kLower =
      u8"abcdefghijklmnopqrstuvwxyzàáâãäåæçèéêëìíîïðñòóôõöøùúûüýþšœžÿ"_ansi;
  ASSERT_EQ(kUpper.size(), kLower.size());
  for (unsigned code = 0; code < 256; ++code) {
    const char c = static_cast<char>(code);
    const std::size_t letter = kUpper.find(c);
    EXPECT_EQ(toLower(c), letter == std::string_view::npos ? c : kLower[letter]) << code;
  }
}

TEST(Text, ComparesWithoutRegardToCase) {
  EXPECT_TRUE(equalsIgnoreCase(u8"Übung"_ansi, u8"übunG"_ansi));
  EXPECT_FALSE(equalsIgnoreCase("a", "ab"));
  EXPECT_FALSE(equalsIgnoreCase("ab", "a"));
  EXPECT_FALSE(equalsIgnoreCase("[", "{"));
  EXPECT_TRUE(startsWithIgnoreCase("Public Type", "PUBLIC"));
  EXPECT_FALSE(startsWithIgnoreCase("Pub", "Public"));
  EXPECT_TRUE(startsWithIgnoreCase("", ""));
}

TEST(Text, FindsWithoutRegardToCase) {
  constexpr std::size_t kNone = std::string_view::npos;
  const struct {
    std::string_view text, part;
    std::size_t from, position;
  } rows[] = {
      {"abcABC", "bc", 0, 1},     {"abcABC", "BC", 2, 4}, {"abcABC", "bc", 4, 4},
      {"abcABC", "bc", 5, kNone}, {"aab", "AB", 0, 1},    {"abc", "abcd", 0, kNone},
      {"abc", "", 2, 2},          {"abc", "", 3, 3},      {"abc", "", 4, kNone},
      {"abc", "a", 9, kNone},     {"", "", 0, 0},         {"", "a", 0, kNone},
      {"abc", "C", 2, 2},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(findIgnoreCase(row.text, row.part, row.from), row.position)
        << row.text << ' ' << row.part << ' ' << row.from;
    if (row.from == 0) {
      EXPECT_EQ(containsIgnoreCase(row.text, row.part), row.position != kNone);
    }
  }
}

// Long texts are searched several places at a time.
TEST(Text, FindsThePlaceThatATestOfEveryPlaceFinds) {
  constexpr std::string_view kAlphabet = "Aa\"\x02@`\x8A\x9A\xAA\x9F\xFF\xDF\xC4\xE4";
  std::mt19937 random(1);
  const auto randomText = [&](std::size_t length) {
    std::string text(length, ' ');
    for (char& c : text) c = kAlphabet[random() % kAlphabet.size()];
    return text;
  };
  for (int run = 0; run < 50'000; ++run) {
    const std::string text = randomText(random() % 40), part = randomText(1 + random() % 4);
    const std::size_t from = random() % 10;
    std::size_t expected = from;
    while (expected <= text.size() && !startsWithIgnoreCase(text.substr(expected), part))
      ++expected;
    if (expected > text.size()) expected = std::string_view::npos;
    ASSERT_EQ(findIgnoreCase(text, part, from), expected) << "run " << run;
    for (std::size_t anchor = 1; anchor < part.size(); ++anchor)
      ASSERT_EQ(CaselessText(part, anchor).findIn(text, from), expected)
          << "run " << run << ", anchor " << anchor;
  }
}

TEST(Text, ReplacesFromLeftToRight) {
  const struct {
    std::string_view text, from, to, expected;
  } rows[] = {
      {"", "a", "b", ""},          {"abcABC", "b", "xy", "axycABC"}, {"aaaa", "aa", "a", "aa"},
      {"aba", "a", "aa", "aabaa"}, {"abab", "ba", "", "ab"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Replace(row.text, row.from, row.to), row.expected) << row.text;
}

TEST(Text, ErasesFromLeftToRight) {
  const struct {
    std::string_view text, part, exact, ignoringCase;
  } rows[] = {
      {"", "a", "", ""},
      {"b", "a", "b", "b"},
      {"abcABC", "b", "acABC", "acAC"},
      {"Sub SUB x", "Sub ", "SUB x", "x"},
      {"aabb", "ab", "ab", "ab"},
      {"Sub Sub ", "Sub ", "", ""},
  };
  for (const auto& row : rows) {
    std::string exact(row.text), ignoringCase(row.text);
    eraseAll(exact, row.part);
    eraseAll(ignoringCase, CaselessText(row.part));
    EXPECT_EQ(exact, row.exact) << row.text;
    EXPECT_EQ(ignoringCase, row.ignoringCase) << row.text;
  }
}

TEST(Text, SplitsAtEverySeparator) {
  using Pieces = std::vector<std::string_view>;
  EXPECT_EQ(Split("", ' '), Pieces{});
  EXPECT_EQ(Split("a", ' '), Pieces{"a"});
  EXPECT_EQ(Split(" ", ' '), (Pieces{"", ""}));
  EXPECT_EQ(Split(" a  b", ' '), (Pieces{"", "a", "", "b"}));
  EXPECT_EQ(Split("a,", ','), (Pieces{"a", ""}));
}

}  // namespace
}  // namespace tintline
