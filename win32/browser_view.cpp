// See browser_view.h.
#include "win32/browser_view.h"

#include <exception>

namespace tintline {

BrowserView::BrowserView(HWND parent, WebBrowser& model, int id, Shell& shell)
    : model_(model), pane_(parent, id) {
  pane_.onExternalLink = [&shell](const std::wstring& address) { shell.open(address); };
  model.setView(this);
}

// A page that nobody sees is not loaded; only the last one counts anyway.
void BrowserView::flush(bool frameVisible) {
  const bool visible = frameVisible && model_.Visible;
  if (visible && shown_ != model_.navigations()) {
    shown_ = model_.navigations();
    try {
      pane_.navigate(model_.page());
    } catch (const std::exception&) {
      // The pane stays as it was: a preview that fails does not stop the work.
    }
  }
  if (visible != visible_) pane_.setVisible(visible);
  visible_ = visible;
}

}  // namespace tintline
