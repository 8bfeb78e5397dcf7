// A clock that a test sets.
#pragma once

#include <chrono>
#include <functional>

#include "ports/clock.h"

namespace tintline::test {

class FakeClock final : public Clock {
 public:
  float timer() override {
    const float now = seconds;
    seconds += step;
    return now;
  }

  std::chrono::year_month_day today() override { return date; }

  void pause(std::chrono::milliseconds duration) override {
    seconds += std::chrono::duration<float>(duration).count();
    paused += duration;
    if (onPause) onPause();
  }

  float seconds = 0;  // since midnight: what timer() gives next
  std::chrono::year_month_day date{std::chrono::year(2025), std::chrono::month(1),
                                   std::chrono::day(31)};
  float step = 0;  // how much time goes by between two looks at the clock
  std::chrono::milliseconds paused{0};
  std::function<void()> onPause;
};

}  // namespace tintline::test
