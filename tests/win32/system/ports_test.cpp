// Tests of the ports that need no user (win32/system/) and of win32/error.h.
#include <windows.h>
#include <gtest/gtest.h>

#include "win32/error.h"
#include "win32/system/clock.h"
#include "win32/system/locale.h"

namespace tintline {
namespace {

TEST(system_ports, tellWhatTheSystemKnows) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  EXPECT_NEAR(SystemClock().timer(), now.wHour * 3600 + now.wMinute * 60 + now.wSecond, 2);
  EXPECT_EQ(SystemLocale().decimalSeparator(), L',');
  const std::wstring denied = Win32Error(E_ACCESSDENIED).text();
  EXPECT_TRUE(denied.ends_with(L" (0x80070005)") && denied.size() > 20);
  EXPECT_EQ(Win32Error(static_cast<HRESULT>(0xA1234567)).text(),
            L"Unbekannter Fehler (0xA1234567)");
}

}  // namespace
}  // namespace tintline
