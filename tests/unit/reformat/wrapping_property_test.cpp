// Wrapped sources by their tokens: the meaning is kept, and lines of short words become short.
#include <gtest/gtest.h>

#include "reformat/wrapping.h"
#include "tests/support/check_wrapping.h"
#include "tests/support/convert.h"
#include "tests/support/random_text.h"

namespace tintline {
namespace {

TEST(WrappingProperty, KeepsTheMeaningOfAnyLines) {
  for (unsigned seed = 1; seed <= 12'000; ++seed) {
    std::mt19937 random(seed);
    const auto lines = test::randomLines(random, seed % 2 == 0 ? "line" : "statement", 12);
    const int width = kMinLineWidth + static_cast<int>(random() % 60);
    const int unit = static_cast<int>(random() % 9);
    ASSERT_EQ(test::wrappingFault(lines, width, unit), "") << "seed " << seed;
  }
}

TEST(WrappingProperty, LinesOfShortWordsBecomeShort) {
  const std::string_view words[] = {"a1", "& b", "+ \"c d\"", "f(x)", "- [n n]", "* #1/2/2000#"};
  for (unsigned seed = 1; seed <= 500; ++seed) {
    std::mt19937 random(seed);
    std::string line = seed % 2 == 0 ? "  x =" : "10 Call f";
    for (int i = 0; i < 20; ++i) line.append(" ").append(words[random() % std::size(words)]);
    const int width = kMinLineWidth + static_cast<int>(random() % 60);
    const auto wrapped = test::strings(*wrapLines(test::lineList({line}), width, 4));
    for (std::size_t i = 0; i < wrapped.size(); ++i) {
      EXPECT_LE(wrapped[i].size(), static_cast<std::size_t>(width)) << wrapped[i];
      // Nor sooner than needed: the longest of these words would not fit.
      EXPECT_TRUE(i + 1 == wrapped.size() || wrapped[i].size() + 14 > std::size_t(width)) << line;
    }
  }
}

}  // namespace
}  // namespace tintline
