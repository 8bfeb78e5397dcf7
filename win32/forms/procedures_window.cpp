// See procedures_window.h.
#include "win32/forms/procedures_window.h"

#include "win32/control_ids.h"
#include "win32/controls/list_view.h"
#include "win32/controls/widgets.h"

namespace tintline {
namespace {

constexpr int kWidth = 520, kHeight = 400, kMargin = 12, kGap = 8, kButtonWidth = 88;
constexpr std::ptrdiff_t kPage = 10;  // lines

// How far a key leads through the list; 0 for any other key.
std::ptrdiff_t linesOf(WPARAM key) {
  switch (key) {
    case VK_UP:
      return -1;
    case VK_DOWN:
      return 1;
    case VK_PRIOR:
      return -kPage;
    case VK_NEXT:
      return kPage;
    default:
      return 0;
  }
}

}  // namespace

ProceduresWindow::ProceduresWindow(MessagePump& pump, frmProzeduren& form, int designCharacterWidth)
    : FormWindow(pump, form), form_(form) {
  createWindow(kProceduresClass, WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME,
               workingWindow());
  label_ = &add<LabelWidget>(form.lblFilter, id::kLblFilter);
  filter_ = &add<EditWidget>(form.txtFilter, id::kTxtFilter);
  list_ = &add<ListView>(form.lstProzeduren, id::kLstProzeduren, designCharacterWidth);
  count_ = &add<LabelWidget>(form.lblAnzahl, id::kLblAnzahl);
  ok_ = &add<ButtonWidget>(form.OKButton, id::kOk, BS_DEFPUSHBUTTON);
  cancel_ = &add<ButtonWidget>(form.CancelButton, id::kCancel);
}

bool ProceduresWindow::translate(MSG& message) {
  const std::ptrdiff_t lines = message.message == WM_KEYDOWN && message.hwnd == filter_->hwnd()
                                   ? linesOf(message.wParam)
                                   : 0;
  if (lines == 0) return FormWindow::translate(message);
  form_.move(lines);
  return true;
}

SIZE ProceduresWindow::clientSize() { return {px(kWidth), px(kHeight)}; }

void ProceduresWindow::layout() {
  const int margin = px(kMargin), gap = px(kGap), width = px(kWidth - 2 * kMargin);
  const int field = fieldHeight(), button = px(kButtonWidth);
  const int label = widthFor(form_.lblFilter.Caption, kGap);
  place(*label_, margin, margin + px(4), label, field);
  place(*filter_, margin + label, margin, width - label, field);
  const int bottom = px(kHeight) - margin - field - px(3);
  const int top = margin + field + gap;
  place(*list_, margin, top, width, bottom - gap - top);
  place(*count_, margin, bottom + px(6), width - 2 * (button + gap), field);
  const int cancelLeft = margin + width - button;
  place(*ok_, cancelLeft - gap - button, bottom, button, field + px(3));
  place(*cancel_, cancelLeft, bottom, button, field + px(3));
}

}  // namespace tintline
