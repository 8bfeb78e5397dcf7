// The window of the colour dialog.
//
// Tested by the tests that drive the program.
#pragma once

#include "app/frmFarbeinstellung/frmFarbeinstellung.h"
#include "win32/forms/form_window.h"

namespace tintline {

class ColorsWindow final : public FormWindow {
 public:
  ColorsWindow(MessagePump& pump, frmFarbeinstellung& form);

 private:
  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void closeRequested() override { form_.cmdAbbrechen_Click(); }
  void layout() override;
  SIZE clientSize() override;
  int line() const;
  int labelWidth() const;
  SIZE sampleSize() const;
  void placeFields(int left, int top);
  void placeSamples(int left, int top);

  frmFarbeinstellung& form_;
  Widget *kategorie_, *kategorien_, *text_, *swatch_, *textFarbe_, *farbe_, *hintergrund_,
      *hintergrundSwatch_, *hintergrundFarbe_, *hintergrundButton_, *transparent_, *hinweis_,
      *klassisch_, *musterKlassisch_, *genau_, *musterGenau_, *standard_, *hilfe_, *speichern_,
      *abbrechen_;
};

}  // namespace tintline
