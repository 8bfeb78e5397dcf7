// Tests of the ports that need no user: win32/system/clipboard.h, clock.h, files.h, locale.h.
#include <windows.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>

#include "win32/system/clipboard.h"
#include "win32/system/clock.h"
#include "win32/system/files.h"
#include "win32/system/locale.h"

namespace tintline {
namespace {

TEST(clipboard, givesBackWhatWasPutOnIt) {
  SystemClipboard clipboard;
  for (const std::string text : {"Zeile 1\r\nZeile 2", "\x80 \xC4\xD6\xDC\xDF", ""}) {
    clipboard.setText(text);
    EXPECT_EQ(clipboard.text(), text);
  }
}

TEST(clipboard, withoutTextIsEmpty) {
  ASSERT_TRUE(OpenClipboard(nullptr));
  EmptyClipboard();
  CloseClipboard();
  EXPECT_EQ(SystemClipboard().text(), "");
}

TEST(clock, tellsTheTimeOfDayAndPauses) {
  SystemClock clock;
  SYSTEMTIME now{};
  GetLocalTime(&now);
  const int seconds = now.wHour * 3600 + now.wMinute * 60 + now.wSecond;
  EXPECT_NEAR(clock.timer(), static_cast<float>(seconds), 2);
  const ULONGLONG before = GetTickCount64();
  clock.pause(std::chrono::milliseconds(50));
  EXPECT_GE(GetTickCount64() - before, 30U);  // it ticks in steps
}

TEST(files, theFoldersAreThere) {
  SystemFiles files;
  EXPECT_TRUE(std::filesystem::exists(files.programFolder() / "tintline_win32_tests.exe"));
  EXPECT_TRUE(std::filesystem::is_directory(files.temporaryFolder()));
  EXPECT_EQ(files.userFolder().filename(), "TINTLINE");
  EXPECT_TRUE(std::filesystem::is_directory(files.userFolder().parent_path()));
}

TEST(locale, knowsTheDecimalSeparator) { EXPECT_EQ(SystemLocale().decimalSeparator(), L','); }

}  // namespace
}  // namespace tintline
