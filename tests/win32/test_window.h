// What tests of controls need: a thread with COM, a parent window, and time for messages.
#pragma once

#include <windows.h>
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

class TestWindow {
 public:
  TestWindow() {
    window_.reset(CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 600,
                                  400, nullptr, nullptr, nullptr, nullptr));
    if (!window_) throwLastError();
  }
  HWND get() const { return window_.get(); }
  void destroy() { window_.reset(); }

 private:
  UniqueWindow window_;
};

// Where a character of a rich-edit control begins, in its window.
inline POINT placeOf(HWND control, std::size_t position) {
  POINTL place{};
  SendMessageW(control, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place),
               static_cast<LPARAM>(position));
  return {place.x, place.y};
}

// Clicks on a place of a window.
inline void clickAt(HWND window, POINT place) {
  const LPARAM where = MAKELPARAM(place.x, place.y);
  SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, where);
  SendMessageW(window, WM_LBUTTONUP, 0, where);
}

// Clicks into the middle of a character.
inline void clickCharacter(HWND control, std::size_t position) {
  const POINT begin = placeOf(control, position), end = placeOf(control, position + 1);
  clickAt(control, {(begin.x + end.x) / 2, begin.y + 5});
}

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
