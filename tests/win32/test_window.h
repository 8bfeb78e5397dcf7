// What tests of controls need: a thread with COM, a parent window, and time for messages.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <ole2.h>
#include <richedit.h>

#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tests/support/temp_folder.h"
#include "win32/error.h"
#include "win32/handle.h"

namespace tintline::test {

class Ole {
 public:
  Ole() { throwIfFailed(OleInitialize(nullptr)); }
  ~Ole() { OleUninitialize(); }
  Ole(const Ole&) = delete;
  Ole& operator=(const Ole&) = delete;
};

// A window of that inner size. What it is notified of goes to `onNotify`.
class TestWindow {
 public:
  TestWindow() {
    window_.reset(CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 600,
                                  400, nullptr, nullptr, nullptr, nullptr));
    if (!window_) throwLastError();
    SetWindowSubclass(get(), procedure, 1, reinterpret_cast<DWORD_PTR>(this));
  }
  HWND get() const { return window_.get(); }
  void destroy() { window_.reset(); }

  std::function<void(const NMHDR&)> onNotify;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR, DWORD_PTR self) {
    const auto& onNotify = reinterpret_cast<TestWindow*>(self)->onNotify;
    if (message == WM_NOTIFY && onNotify) onNotify(*reinterpret_cast<const NMHDR*>(lParam));
    return DefSubclassProc(window, message, wParam, lParam);
  }

  UniqueWindow window_;
};

// Lets messages through until `done` says so; false after that many milliseconds.
inline bool pumpUntil(const std::function<bool()>& done, ULONGLONG limit = 20'000) {
  const ULONGLONG end = GetTickCount64() + limit;
  while (!done()) {
    if (GetTickCount64() > end) return false;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
  }
  return true;
}

// The text of a control with one line feed a line end.
inline std::wstring windowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  std::wstring lines;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;
    lines += text[i] == L'\r' ? L'\n' : text[i];
  }
  return lines;
}

inline std::filesystem::path writePage(const TempFolder& folder, const char* name,
                                       std::string_view html) {
  const std::filesystem::path path = folder / name;
  std::ofstream(path, std::ios::binary)
      .write(html.data(), static_cast<std::streamsize>(html.size()));
  return path;
}

}  // namespace tintline::test
