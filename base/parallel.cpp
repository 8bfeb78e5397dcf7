// See parallel.h. Tested by tests/unit/base/parallel_test.cpp.
#include "base/parallel.h"

#include <system_error>
#include <thread>
#include <vector>

namespace tintline {

void inParallel(std::size_t count, std::size_t jobs, const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> next = 0;
  const auto worker = [&] {
    for (std::size_t index = next++; index < count; index = next++) work(index);
  };
  std::vector<std::jthread> others;
  try {
    while (others.size() + 1 < std::min(jobs, count)) others.emplace_back(worker);
  } catch (const std::system_error&) {
    // No more threads to be had: those that run do all the work.
  }
  worker();
}

}  // namespace tintline
