// What tests of controls need: a window that shows and forwards as a form's does, with COM, and
// time for messages.
#pragma once

#include <windows.h>
#include <ole2.h>

#include <functional>
#include <string>

#include "win32/controls/widget.h"
#include "win32/controls/window.h"
#include "win32/error.h"
#include "win32/message_pump.h"

namespace tintline::test {

class HostWindow final : public Window {
 public:
  HostWindow() : host(pump) {
    throwIfFailed(OleInitialize(nullptr));
    create({L"TINTLINE_Test", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE});
    host.window = hwnd();
    host.tips.create(hwnd());
  }
  ~HostWindow() override {
    close();
    OleUninitialize();
  }
  void close() { destroy(); }

  // Shows what changed in the widget, which gets the messages of its control from now on.
  void show(Widget& widget) {
    widget_ = &widget;
    widget.flush();
  }

  MessagePump pump;
  WidgetHost host;

 private:
  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (widget_ != nullptr && message == WM_COMMAND) widget_->command(HIWORD(wParam));
    if (widget_ != nullptr && message == WM_NOTIFY)
      return widget_->notify(*reinterpret_cast<NMHDR*>(lParam));
    if (widget_ != nullptr && message == WM_DRAWITEM)
      widget_->draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return Window::handle(message, wParam, lParam);
  }

  Widget* widget_ = nullptr;
};

// A press and release of a mouse button there, as the system sends them.
inline void clickAt(HWND window, POINT place, UINT down = WM_LBUTTONDOWN) {
  POINT screen = place;
  ClientToScreen(window, &screen);
  SetCursorPos(screen.x, screen.y);
  PostMessageW(window, down, MK_LBUTTON, MAKELPARAM(place.x, place.y));
  PostMessageW(window, down + 1, 0, MAKELPARAM(place.x, place.y));
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

inline void pumpFor(ULONGLONG milliseconds) {
  pumpUntil([] { return false; }, milliseconds);
}

}  // namespace tintline::test
