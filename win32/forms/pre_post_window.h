// The window of the dialog for PreCode and PostCode.
//
// Tested by the tests that drive the program.
#pragma once

#include "app/frmPrePostCode/frmPrePostCode.h"
#include "win32/forms/form_window.h"

namespace tintline {

class PrePostWindow final : public FormWindow {
 public:
  PrePostWindow(MessagePump& pump, frmPrePostCode& form);

 private:
  void layout() override;
  SIZE clientSize() override;
  int twips(int size) const;

  Widget *label1_, *pre_, *label2_, *post_, *ok_, *cancel_;
};

}  // namespace tintline
