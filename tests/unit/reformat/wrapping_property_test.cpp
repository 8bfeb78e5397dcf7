// Wrapped sources by their tokens: the meaning is kept, and no line stays long that could be
// broken.
#include <gtest/gtest.h>

#include <random>

#include "reformat/wrapping.h"
#include "tests/support/check_wrapping.h"
#include "tests/support/random_lines.h"

namespace tintline {
namespace {

using Lines = std::vector<std::string>;

TEST(WrappingProperty, KeepsTheMeaningOfRandomStatements) {
  for (unsigned seed = 1; seed <= 6000; ++seed) {
    std::mt19937 random(seed);
    const Lines lines = literal::randomStatements(random, 12);
    const int width = kMinLineWidth + static_cast<int>(random() % 60);
    const int unit = static_cast<int>(random() % 9);
    ASSERT_EQ(test::wrappingFault(lines, width, unit), "") << "seed " << seed;
  }
}

TEST(WrappingProperty, KeepsTheMeaningOfRandomLines) {
  for (unsigned seed = 1; seed <= 6000; ++seed) {
    std::mt19937 random(seed);
    const Lines lines = literal::randomModule(random, 12);
    ASSERT_EQ(test::wrappingFault(lines, kMinLineWidth + static_cast<int>(random() % 20), 4), "")
        << "seed " << seed;
  }
}

}  // namespace
}  // namespace tintline
