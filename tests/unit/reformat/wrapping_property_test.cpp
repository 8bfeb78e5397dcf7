// Wrapped sources by their tokens: the meaning is kept. Where lines break is told by the cases of
// wrapping_test.cpp.
#include <gtest/gtest.h>

#include "reformat/wrapping.h"
#include "tests/support/check_wrapping.h"
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

}  // namespace
}  // namespace tintline
