// The model of the embedded web browser.
#pragma once

#include <filesystem>

#include "app/controls/control.h"

namespace tintline {

class WebBrowser : public Control {
 public:
  // Shows the page of that file, also when it was shown before.
  void Navigate(const std::filesystem::path& page) {
    page_ = page;
    ++navigations_;
    changed();
  }

  // The page to show; empty before the first Navigate.
  const std::filesystem::path& page() const { return page_; }

  // Grows with every Navigate: how a view knows that there is something to load.
  unsigned navigations() const { return navigations_; }

 private:
  std::filesystem::path page_;
  unsigned navigations_ = 0;
};

}  // namespace tintline
