// The tool tips of one window's controls.
//
// Tested by the tests that drive the program.
#pragma once

#include <windows.h>

#include <string>

namespace tintline {

class ToolTips {
 public:
  // Makes the tool tip window; it goes with its owner.
  void create(HWND owner);

  // What is shown when the pointer rests on the control; "" for nothing.
  void set(HWND control, const std::wstring& text);

  void setFont(HFONT font) { SendMessageW(tips_, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0); }

 private:
  HWND owner_ = nullptr, tips_ = nullptr;
};

}  // namespace tintline
