// See clock.h.
#include "win32/system/clock.h"

#include <windows.h>

namespace tintline {

float SystemClock::timer() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  const int seconds = (now.wHour * 60 + now.wMinute) * 60 + now.wSecond;
  return static_cast<float>(seconds) + static_cast<float>(now.wMilliseconds) / 1000.0F;
}

std::chrono::year_month_day SystemClock::today() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return std::chrono::year(now.wYear) / now.wMonth / now.wDay;
}

void SystemClock::pause(std::chrono::milliseconds duration) {
  Sleep(static_cast<DWORD>(duration.count()));
}

}  // namespace tintline
