// The window of the colour dialog.
//
// Tested by the tests that drive the program.
#pragma once

#include <vector>

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
  void placeFields(int left, int top);
  void placeSamples(int left, int top);

  frmFarbeinstellung& form_;
  Widget *kategorie_, *kategorien_, *text_, *textFarbe_, *farbe_, *hintergrund_, *hintergrundFarbe_,
      *hintergrundButton_, *transparent_, *beispiel_, *muster_, *schema_, *hinweis_, *standard_,
      *hilfe_, *speichern_, *abbrechen_;
  std::vector<Widget*> schemaMuster_;
};

}  // namespace tintline
