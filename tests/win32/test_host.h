// A parent for widgets in tests, which shows and forwards as a form's window does.
#pragma once

#include <windows.h>

#include "win32/controls/widget.h"
#include "win32/controls/window.h"
#include "win32/message_pump.h"

namespace tintline::test {

class TestHost final : public Window {
 public:
  TestHost() : host_(pump) {
    create({L"TINTLINE_Test", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE});
    host_.window = hwnd();
    host_.tips.create(hwnd());
  }
  ~TestHost() override { destroy(); }

  WidgetHost& host() { return host_; }

  // Shows what changed in the widget, which gets the messages of its control from now on.
  void show(Widget& widget) {
    widget_ = &widget;
    widget.flush();
  }

  MessagePump pump;

 private:
  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    if (widget_ != nullptr && message == WM_COMMAND) widget_->command(HIWORD(wParam));
    if (widget_ != nullptr && message == WM_NOTIFY)
      return widget_->notify(*reinterpret_cast<NMHDR*>(lParam));
    if (widget_ != nullptr && message == WM_DRAWITEM)
      widget_->draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return Window::handle(message, wParam, lParam);
  }

  WidgetHost host_;
  Widget* widget_ = nullptr;
};

}  // namespace tintline::test
