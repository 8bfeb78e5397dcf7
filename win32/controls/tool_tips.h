// The tool tips of one window's controls.
//
// Tested by the tests that drive the program.
#pragma once

#include <windows.h>

#include <string>

#include "win32/handle.h"

namespace tintline {

class ToolTips {
 public:
  // Makes the tool tip window for the controls of that window. Wine does not let a window that
  // owns another one come to the front of all programs: so it does not own this one.
  void create(HWND owner);

  // Takes it away: to be called when that window goes.
  void destroy() { tips_.reset(); }

  // What is shown when the pointer rests on the control; "" for nothing.
  void set(HWND control, const std::wstring& text);

  // The look of the windows is another now.
  void followTheme();

  // Long texts are broken at a width that fits the font.
  void setFont(HFONT font);

 private:
  HWND owner_ = nullptr;
  UniqueWindow tips_;
};

}  // namespace tintline
