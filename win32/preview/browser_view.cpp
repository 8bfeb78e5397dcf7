// See browser_view.h.
#include "win32/preview/browser_view.h"

#include <exception>
#include <utility>

namespace tintline {

// The pointer rests on the windows that cover the pane, so each of them has the tool tip.
BrowserView::BrowserView(HWND parent, ToolTips& tips, WebBrowser& model, int id, Shell& shell)
    : model_(model), pane_(parent, id) {
  SetWindowTextW(pane_.window(), model.AccessibleName.c_str());
  tips.set(pane_.window(), model.ToolTipText);
  pane_.onChildWindow = [&tips, &model](HWND window, bool came) {
    tips.set(window, came ? model.ToolTipText() : L"");
  };
  pane_.onExternalLink = [&shell](const std::wstring& address) { shell.open(address); };
  pane_.onAnchor = [&model](const std::wstring& anchor) {
    if (model.AnchorFollowed) model.AnchorFollowed(anchor);
  };
  model.setView(this);
}

// A page that nobody sees is not loaded; only the last one counts anyway.
void BrowserView::flush(bool frameVisible) {
  const bool visible = frameVisible && model_.Visible;
  if (visible && shown_ != model_.navigations()) {
    shown_ = model_.navigations();
    try {
      pane_.navigate(model_.page(), model_.keepsPlace());
    } catch (const std::exception&) {
      // The pane stays as it was: a preview that fails does not stop the work.
    }
  }
  if (visible && std::exchange(anchor_, model_.anchorVersion()) != model_.anchorVersion())
    pane_.showAnchor(model_.anchor());
  if (visible != visible_) pane_.setVisible(visible);
  visible_ = visible;
}

}  // namespace tintline
