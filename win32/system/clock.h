// The system's clock.
//
// Tested by tests/win32/system/ports_test.cpp.
#pragma once

#include "ports/clock.h"

namespace tintline {

class SystemClock final : public Clock {
 public:
  float timer() override;
  std::chrono::year_month_day today() override;
  void pause(std::chrono::milliseconds duration) override;
};

}  // namespace tintline
