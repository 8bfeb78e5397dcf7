// The window of the splash and about display.
//
// Tested by the tests that drive the program.
#pragma once

#include <memory>

#include "app/frmSplash/frmSplash.h"
#include "win32/forms/form_window.h"

namespace tintline {

class SplashWindow final : public FormWindow {
 public:
  SplashWindow(MessagePump& pump, frmSplash& form);

  bool translate(MSG&) override { return false; }  // every key is the form's own

 private:
  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void layout() override;
  SIZE clientSize() override;
  int lineHeight() const;
  int settingsHeight() const;

  frmSplash& form_;
  Widget *logo_, *productName_, *version_, *copyright_, *freeware_, *feedback_, *settings_,
      *loading_, *progress_, *frame_;
};

}  // namespace tintline
