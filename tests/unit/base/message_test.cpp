// Tests of base/message.h.
#include "base/message.h"

#include <gtest/gtest.h>

#include "base/codepage.h"

namespace tintline {
namespace {

TEST(Message, isWordedInEachLanguageAndNothingFromOutsideDoesHarmInIt) {
  static constexpr Text<2> kText{L"{2} in {1}", L"in {1}: {2}"};
  static constexpr Text<0> kWhat{L"line\n", L"Zeile\n"};
  const Message inner = kText(7, kWhat());
  EXPECT_EQ(inner.in(Language::English), L"line\n in 7");
  EXPECT_EQ(inner.in(Language::German), L"in 7: Zeile\n");

  const std::pair<std::string_view, const char*> rows[] = {
      {"C:\\Übung {1}.bas", "C:\\Übung {1}.bas"},
      {"a\nb\tc\rd", "a\\nb\\tc\\rd"},
      {"\x1B[31m\x7F", "\\x1B[31m\\x7F"},
      {"\u0085\u2028\u202E\uFEFF", "\\x85\\u2028\\u202E\\uFEFF"},
      {"\xDC.bas\xC2", "\uFFFD.bas\uFFFD"},  // no UTF-8
  };
  for (const auto& [name, shown] : rows)
    EXPECT_EQ(toUtf8(kText(fromUtf8(name), kWhat()).german),
              "in " + std::string(shown) + ": Zeile\n");
}

}  // namespace
}  // namespace tintline
