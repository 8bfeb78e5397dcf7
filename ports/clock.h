// The platform's timer and date.
#pragma once

#include <chrono>

namespace tintline {

class Clock {
 public:
  virtual ~Clock() = default;

  // Seconds since midnight, local time; starts again from 0 at midnight.
  virtual float timer() = 0;

  // The current date, local time.
  virtual std::chrono::year_month_day today() = 0;

  // Lets the time pass without processing events.
  virtual void pause(std::chrono::milliseconds duration) = 0;
};

}  // namespace tintline
