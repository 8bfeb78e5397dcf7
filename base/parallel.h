// Work on many things, several at once.
//
// Tested by tests/unit/base/parallel_test.cpp.
#pragma once

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace tintline {

// Calls work(0) to work(count - 1), in this order, on up to `jobs` threads, this one among them.
void inParallel(std::size_t count, std::size_t jobs, const std::function<void(std::size_t)>& work);

// Calls make(0) to make(count - 1) in the same way and use(i, made), one after the other, in the
// order of i. Only few results wait for one in front of them.
template <class Made>
void inParallelInOrder(std::size_t count, std::size_t jobs,
                       const std::function<Made(std::size_t)>& make,
                       const std::function<void(std::size_t, Made)>& use) {
  const std::size_t mostAhead = 4 * std::max<std::size_t>(jobs, 1);
  std::mutex mutex;  // guards what follows
  std::condition_variable advanced;
  std::map<std::size_t, Made> waiting;
  std::size_t next = 0;  // all in front of it are used
  inParallel(count, jobs, [&](std::size_t i) {
    {
      std::unique_lock lock(mutex);
      advanced.wait(lock, [&] { return i < next + mostAhead; });
    }
    Made made = make(i);
    const std::lock_guard lock(mutex);
    waiting.emplace(i, std::move(made));
    for (auto first = waiting.begin(); first != waiting.end() && first->first == next;
         first = waiting.erase(first), ++next)
      use(next, std::move(first->second));
    advanced.notify_all();
  });
}

}  // namespace tintline
