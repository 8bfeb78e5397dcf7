// The model of the embedded web browser.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "app/controls/control.h"

namespace tintline {

class WebBrowser : public Control {
 public:
  // Shows the page of that file, also when it was shown before: its beginning, or the place that
  // the page before it shows.
  void Navigate(const std::filesystem::path& page, bool keepPlace = false) {
    page_ = page;
    keepsPlace_ = keepPlace;
    anchor_.clear();
    ++navigations_;
    changed();
  }
  bool keepsPlace() const { return keepsPlace_; }

  // Brings the element of that id to the top; nothing when the page has none.
  void showAnchor(const std::wstring& id) {
    anchor_ = id;
    ++anchorVersion_;
    changed();
  }
  const std::wstring& anchor() const { return anchor_; }
  unsigned anchorVersion() const { return anchorVersion_; }

  // The user followed a link to that id of the page.
  std::function<void(const std::wstring& id)> AnchorFollowed;

  // The page to show; empty before the first Navigate.
  const std::filesystem::path& page() const { return page_; }

  // Grows with every Navigate: how a view knows that there is something to load.
  unsigned navigations() const { return navigations_; }

 private:
  std::filesystem::path page_;
  unsigned navigations_ = 0;
  bool keepsPlace_ = false;
  std::wstring anchor_;
  unsigned anchorVersion_ = 0;
};

}  // namespace tintline
