// See pre_post_window.h.
#include "win32/forms/pre_post_window.h"

#include <algorithm>

#include "win32/control_ids.h"
#include "win32/controls/widgets.h"

namespace tintline {

PrePostWindow::PrePostWindow(MessagePump& pump, frmPrePostCode& form) : FormWindow(pump, form) {
  createWindow(kPrePostClass, WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME,
               workingWindow());
  label1_ = &add<LabelWidget>(form.Label1, id::kPreLabel);
  pre_ = &add<EditWidget>(form.txtPreCode, id::kTxtPreCode);
  post_ = &add<EditWidget>(form.txtPostCode, id::kTxtPostCode);
  label2_ = &add<LabelWidget>(form.Label2, id::kPostLabel);  // its end lies below the field
  ok_ = &add<ButtonWidget>(form.OKButton, id::kOk, BS_DEFPUSHBUTTON);
  cancel_ = &add<ButtonWidget>(form.CancelButton, id::kCancel);
}

// A size of the design in pixels. The design was made for a font with lines of 195 twips; a
// taller one makes everything larger.
int PrePostWindow::twips(int size) const {
  constexpr int kTwipsPerInch = 1440, kDesignLine = 195;
  const auto line = static_cast<int>(textSize(font(), L"Ag").cy);
  const int designLine = MulDiv(kDesignLine, static_cast<int>(dpi()), kTwipsPerInch);
  return MulDiv(MulDiv(size, static_cast<int>(dpi()), kTwipsPerInch), std::max(line, designLine),
                designLine);
}

SIZE PrePostWindow::clientSize() { return {twips(5625), twips(1050)}; }

void PrePostWindow::layout() {
  const auto put = [this](const Widget* widget, int left, int top, int width, int height) {
    place(*widget, twips(left), twips(top), twips(width), twips(height));
  };
  put(label1_, 120, 240, 855, 255);
  put(pre_, 960, 210, 3135, 285);
  put(label2_, 120, 600, 975, 255);
  put(post_, 960, 600, 3135, 285);
  put(ok_, 4320, 120, 1215, 375);
  put(cancel_, 4320, 600, 1215, 375);
}

}  // namespace tintline
