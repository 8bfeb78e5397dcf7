// A message loop in which a test lets things happen.
#pragma once

#include <functional>
#include <map>
#include <utility>

#include "ports/message_loop.h"

namespace tintline::test {

class FakeMessageLoop final : public MessageLoop {
 public:
  void yield() override {
    ++yields;
    if (onYield) onYield();
    const auto event = events_.find(yields);
    if (event == events_.end()) return;
    const std::function<void()> action = std::move(event->second);
    events_.erase(event);
    action();
  }

  // Has `action` arrive in the n-th yield from the start (the first is 1).
  void at(int n, std::function<void()> action) { events_[n] = std::move(action); }

  // Whether everything that was planned has arrived.
  bool done() const { return events_.empty(); }

  int yields = 0;
  std::function<void()> onYield;  // in every yield

 private:
  std::map<int, std::function<void()>> events_;
};

}  // namespace tintline::test
