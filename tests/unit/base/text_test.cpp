// Tests of base/text.h; tests/unit/engine compares what else it has with plain transcriptions.
#include "base/text.h"

#include <gtest/gtest.h>

#include <random>

#include "base/codepage.h"

namespace tintline {
namespace {

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

}  // namespace
}  // namespace tintline
