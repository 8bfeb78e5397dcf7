// The tool bar of the main window.
//
// Tested by the tests that drive the program.
#pragma once

#include <windows.h>

#include "app/frmVBACode/frmVBACode.h"
#include "win32/controls/gdi.h"
#include "win32/controls/widget.h"

namespace tintline {

class ToolBarWidget final : public Widget {
 public:
  ToolBarWidget(WidgetHost& host, frmVBACode& form, int id);

  void setFont(HFONT font, unsigned dpi) override;
  void followTheme() override;
  LRESULT notify(NMHDR& header) override;

  // The height it needs.
  int height() const;

 private:
  void show() override;
  void addButtons();

  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(hwnd(), message, wParam, lParam);
  }

  frmVBACode& form_;
  UniqueImageList pictures_;
};

}  // namespace tintline
