// The preview pane as the view of a WebBrowser.
//
// Tested by the tests that drive the program.
#pragma once

#include <windows.h>

#include "app/controls/control.h"
#include "app/controls/web_browser.h"
#include "ports/shell.h"
#include "win32/controls/tool_tips.h"
#include "win32/preview/preview_pane.h"

namespace tintline {

class BrowserView final : public ControlView {
 public:
  // The links of a page are opened by `shell`; `tips` are the parent's. All must live as long as
  // the view.
  BrowserView(HWND parent, ToolTips& tips, WebBrowser& model, int id, Shell& shell);
  ~BrowserView() override { model_.setView(nullptr); }

  void changed(Control&) override {}  // found out by flush
  void refresh(Control&) override { flush(true); }

  // Shows what changed. `frameVisible`: whether the frame around the pane shows.
  void flush(bool frameVisible);

  PreviewPane& pane() { return pane_; }

 private:
  WebBrowser& model_;
  PreviewPane pane_;
  unsigned shown_ = 0;   // the navigation that the pane shows
  unsigned anchor_ = 0;  // the jump that the pane has done
  bool visible_ = false;
};

}  // namespace tintline
