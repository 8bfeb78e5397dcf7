// The dialog that edits the two texts around copied HTML lines.
//
// Tested by tests/unit/app/dialogs_test.cpp.
#pragma once

#include <filesystem>

#include "app/controls/form.h"

namespace tintline {

class frmPrePostCode final : public Form {
 public:
  // The settings file is read and written afresh at every use.
  explicit frmPrePostCode(std::filesystem::path settingsFile);

  Label Label1, Label2;
  TextBox txtPreCode, txtPostCode;
  CommandButton OKButton;      // "Speichern", answers Enter
  CommandButton CancelButton;  // "Abbrechen", answers Escape and the close box

  void OKButton_Click();
  void CancelButton_Click();

 private:
  void Form_Load() override;

  std::filesystem::path settingsFile_;
};

}  // namespace tintline
