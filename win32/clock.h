// The system's clock.
//
// Tested by the tests that drive the program.
#pragma once

#include "ports/clock.h"

namespace tintline {

class SystemClock final : public Clock {
 public:
  float timer() override;
  void pause(std::chrono::milliseconds duration) override;
};

}  // namespace tintline
