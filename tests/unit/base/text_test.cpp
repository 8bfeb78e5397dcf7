// Tests of base/text.h.
#include "base/text.h"

#include <gtest/gtest.h>

#include <random>

#include "base/codepage.h"

namespace tintline {
namespace {

TEST(Text, OnlyBlanksAreTrimmed) {
  for (const std::string text : {"a b", "\ta\xA0", ""}) {
    EXPECT_EQ(LTrim("  " + text + " "), text.empty() ? "" : text + " ");
    EXPECT_EQ(RTrim(" " + text + "  "), text.empty() ? "" : " " + text);
    EXPECT_EQ(Trim(" " + text + " "), text);
  }
  EXPECT_EQ(Space(3) + Space(0) + Space(-1), "   ");
}

// What the letter is in the other case, told by its name in Windows-1252.
TEST(Text, EveryLetterOfTheCodePageHasItsPartner) {
  constexpr std::string_view kUpper =
      u8"ABCDEFGHIJKLMNOPQRSTUVWXYZÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŠŒŽŸ"_ansi;
  constexpr std::string_view kLower =
      u8"abcdefghijklmnopqrstuvwxyzàáâãäåæçèéêëìíîïðñòóôõöøùúûüýþšœžÿ"_ansi;
  for (unsigned code = 0; code < 256; ++code) {
    const char c = static_cast<char>(code);
    const std::size_t letter = kUpper.find(c);
    EXPECT_EQ(toLower(c), letter == std::string_view::npos ? c : kLower[letter]) << code;
  }
}

TEST(Text, ComparesWithoutRegardToCase) {
  EXPECT_TRUE(equalsIgnoreCase(u8"Übung"_ansi, u8"übunG"_ansi));
  EXPECT_FALSE(equalsIgnoreCase("a", "ab") || equalsIgnoreCase("ab", "a"));
  EXPECT_FALSE(equalsIgnoreCase("[", "{"));
  EXPECT_TRUE(startsWithIgnoreCase("Public Type", "PUBLIC") && startsWithIgnoreCase("", ""));
  EXPECT_FALSE(startsWithIgnoreCase("Pub", "Public"));
}

// Long texts are searched several places at a time; a search of every place finds the same.
TEST(Text, FindsWithoutRegardToCase) {
  constexpr std::string_view kAlphabet = "Aa\"\x02@`\x8A\x9A\xAA\x9F\xFF\xDF\xC4\xE4";
  std::mt19937 random(1);
  const auto randomText = [&](std::size_t length) {
    std::string text(length, ' ');
    for (char& c : text) c = kAlphabet[random() % kAlphabet.size()];
    return text;
  };
  for (int run = 0; run < 20'000; ++run) {
    const std::string text = randomText(random() % 40), part = randomText(random() % 5);
    const std::size_t from = random() % 10;
    std::size_t expected = from;
    while (expected <= text.size() && !startsWithIgnoreCase(text.substr(expected), part))
      ++expected;
    if (expected > text.size()) expected = std::string_view::npos;
    ASSERT_EQ(findIgnoreCase(text, part, from), expected) << "run " << run;
    ASSERT_EQ(containsIgnoreCase(text, part), findIgnoreCase(text, part) != std::string::npos);
    for (std::size_t anchor = 1; anchor < part.size(); ++anchor)
      ASSERT_EQ(CaselessText(part, anchor).findIn(text, from), expected)
          << "run " << run << ", anchor " << anchor;
  }
}

TEST(Text, ReplacesErasesAndSplitsFromLeftToRight) {
  EXPECT_EQ(Replace("abcABC", "b", "xy"), "axycABC");
  EXPECT_EQ(Replace("aaaa", "aa", "a"), "aa");
  EXPECT_EQ(Replace("aba", "a", "aa"), "aabaa");
  const struct {
    const char *text, *part, *exact, *ignoringCase;
  } rows[] = {{"abcABC", "b", "acABC", "acAC"},
              {"Sub SUB x", "Sub ", "SUB x", "x"},
              {"aabb", "ab", "ab", "ab"}};
  for (const auto& row : rows) {
    std::string exact(row.text), ignoringCase(row.text);
    eraseAll(exact, row.part);
    eraseAll(ignoringCase, CaselessText(row.part));
    EXPECT_EQ(exact + '|' + ignoringCase, row.exact + std::string("|") + row.ignoringCase);
  }
  using Pieces = std::vector<std::string_view>;
  EXPECT_EQ(Split("", ' '), Pieces{});
  EXPECT_EQ(Split(" a  b ", ' '), (Pieces{"", "a", "", "b", ""}));
}

}  // namespace
}  // namespace tintline
