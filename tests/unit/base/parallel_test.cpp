// Tests of base/parallel.h.
#include "base/parallel.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace tintline {
namespace {

TEST(Parallel, ResultsAreUsedInOrderAndFewWait) {
  constexpr std::size_t kCount = 1000;
  for (const std::size_t jobs : {1U, 4U}) {
    std::atomic<std::size_t> made = 0;
    std::vector<std::size_t> used;
    std::size_t mostWaiting = 0;
    inParallelInOrder<std::size_t>(
        kCount, jobs,
        [&](std::size_t i) {
          if (i == 0) std::this_thread::sleep_for(std::chrono::milliseconds(50));
          ++made;
          return i * i;
        },
        [&](std::size_t i, std::size_t square) {
          mostWaiting = std::max(mostWaiting, made - used.size());
          EXPECT_EQ(square, i * i);
          used.push_back(i);
        });
    EXPECT_EQ(used.size(), kCount);
    EXPECT_TRUE(std::ranges::is_sorted(used));
    EXPECT_LE(mostWaiting, 5 * jobs);
  }
}

}  // namespace
}  // namespace tintline
