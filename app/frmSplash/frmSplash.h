// The splash at start-up, later the about display.
//
// Tested by tests/app/start_test.cpp.
#pragma once

#include <array>
#include <string>

#include "app/controls/form.h"
#include "ports/shell.h"

namespace tintline {

class frmSplash final : public Form {
 public:
  explicit frmSplash(Shell& shell);

  Label lblProductName;  // until the form is loaded: "Produkt"
  Label lblVersion;      // until the form is loaded: "- Version -"
  Label lblCopyright;
  Label Label1;            // "Schlüsselworte werden eingelesen..."
  Label Label2;            // "- Freeware für Privatanwender -"
  Label Label3;            // the feedback link
  Label lblEinstellungen;  // which settings file is in use; "" while starting
  Control imgLogo;
  Frame Frame1;
  ProgressBar ProgressBar1;
  bool Check1 = false;  // the user may close the splash

  // All controls that can be enabled, disabled, shown or hidden.
  std::array<Control*, 9> controls() {
    return {&lblProductName, &lblVersion,       &lblCopyright, &Label1, &Label2,
            &Label3,         &lblEinstellungen, &imgLogo,      &Frame1};
  }

  void Form_KeyPress();
  void Form_MouseUp();
  void Frame1_Click();
  void Label3_Click();

 private:
  void Form_Load() override;

  Shell& shell_;
};

// "Version 2.5 (Build 5)" for this program's version.
std::wstring versionText();

}  // namespace tintline
