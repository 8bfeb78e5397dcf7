// Tests of the ports that need no user (win32/system/), and of win32/com_ptr.h, handle.h, error.h.
#include <windows.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "win32/com_ptr.h"
#include "win32/error.h"
#include "win32/handle.h"
#include "win32/system/clipboard.h"
#include "win32/system/clock.h"
#include "win32/system/files.h"
#include "win32/system/locale.h"

namespace tintline {
namespace {

TEST(system_ports, tellWhatTheSystemKnows) {
  SystemClipboard clipboard;
  for (const std::string text : {"Zeile 1\r\nZeile 2", "\x80 \xC4\xD6\xDC\xDF", ""}) {
    clipboard.setText(text);
    EXPECT_EQ(clipboard.text(), text);
  }
  SYSTEMTIME now{};
  GetLocalTime(&now);
  EXPECT_NEAR(SystemClock().timer(), now.wHour * 3600 + now.wMinute * 60 + now.wSecond, 2);
  SystemFiles files;
  EXPECT_TRUE(std::filesystem::exists(files.programFolder() / "tintline_win32_tests.exe"));
  EXPECT_TRUE(std::filesystem::is_directory(files.temporaryFolder()));
  EXPECT_EQ(files.userFolder().filename(), "TINTLINE");
  EXPECT_EQ(SystemLocale().decimalSeparator(), L',');
}

// Counts what is held on it and knows no interface but IUnknown.
struct CountingObject : IUnknown {
  long references = 1;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = id == IID_IUnknown ? this : nullptr;
    references += id == IID_IUnknown;
    return id == IID_IUnknown ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
  ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }
};

int freed = 0;
void freeNumber(int* handle) { freed += *handle; }

TEST(handles, areGivenBackOnce) {
  CountingObject first, second;
  {
    auto shared = ComPtr<IUnknown>::share(&first);
    auto moved = std::move(shared);
    EXPECT_TRUE(moved.query<IUnknown>());
    EXPECT_FALSE(moved.query<IDispatch>());
    EXPECT_EQ(first.references, 2);
    moved = ComPtr<IUnknown>::share(&second);
    EXPECT_EQ(first.references, 1);
    EXPECT_EQ(*moved.put(), nullptr);
    ComPtr<IUnknown>::adopt(&second);
    EXPECT_EQ(second.references, 0);
  }
  int one = 1, ten = 10;
  {
    UniqueHandle<int*, freeNumber> handle(&one), other(std::move(handle));
    other.reset(&ten);
    EXPECT_EQ(freed, 1);
  }
  EXPECT_EQ(freed, 11);
}

TEST(Win32Error, tellsTheSystemsTextAndTheNumber) {
  const std::wstring denied = Win32Error(E_ACCESSDENIED).text();
  EXPECT_TRUE(denied.ends_with(L" (0x80070005)") && denied.size() > 20);
  EXPECT_EQ(Win32Error(static_cast<HRESULT>(0xA1234567)).text(),
            L"Unbekannter Fehler (0xA1234567)");
}

}  // namespace
}  // namespace tintline
