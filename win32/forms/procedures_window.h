// The window of the dialog that goes to a procedure.
//
// Tested by the tests that drive the program.
#pragma once

#include "app/frmProzeduren/frmProzeduren.h"
#include "win32/forms/form_window.h"

namespace tintline {

class ProceduresWindow final : public FormWindow {
 public:
  // `designCharacterWidth`: of the list font at 96 dpi.
  ProceduresWindow(MessagePump& pump, frmProzeduren& form, int designCharacterWidth);

  // Keys that move through the list while the filter is typed.
  bool translate(MSG& message) override;

 private:
  void layout() override;
  SIZE clientSize() override;
  int fieldHeight() const { return static_cast<int>(textSize(font(), L"Ag").cy) + px(8); }

  frmProzeduren& form_;
  Widget *label_, *filter_, *list_, *count_, *ok_, *cancel_;
};

}  // namespace tintline
