// See widgets.h.
#include "win32/controls/widgets.h"

#include <algorithm>

#include "win32/controls/own_drawing.h"
#include "win32/controls/theme.h"
#include "win32/controls/window.h"

namespace tintline {

LRESULT drawnButton(NMHDR& header) {
  if (header.code != NM_CUSTOMDRAW || !theme::isOwn()) return CDRF_DODEFAULT;
  return own_drawing::drawButton(reinterpret_cast<const NMCUSTOMDRAW&>(header));
}

ButtonWidget::ButtonWidget(WidgetHost& host, CommandButton& model, int id, DWORD style)
    : Widget(host, model, id, {WC_BUTTONW, style | WS_TABSTOP | WS_GROUP}), model_(model) {}

void ButtonWidget::command(WORD code) {
  if (code == BN_CLICKED && model_.Enabled && model_.Click) model_.Click();
}

EditWidget::EditWidget(WidgetHost& host, TextBox& model, int id)
    : Widget(host, model, id, {WC_EDITW, ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE}),
      model_(model) {
  SendMessageW(hwnd(), EM_SETLIMITTEXT, 0, 0);  // as much as there is memory
}

void EditWidget::command(WORD code) {
  if (code != EN_CHANGE || showing_) return;
  model_.Text = windowText(hwnd());
  if (model_.Change) model_.Change();
}

void EditWidget::show() {
  showing_ = true;
  showText(model_.Text);
  showing_ = false;
}

ComboWidget::ComboWidget(WidgetHost& host, ComboBox& model, int id)
    : Widget(host, model, id, {WC_COMBOBOXW, CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP}),
      model_(model) {
  own_drawing::drawInstead(hwnd(), own_drawing::drawCombo);
}

// The list that drops down is a window of its own.
void ComboWidget::followTheme() {
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  theme::dress(hwnd());
  if (GetComboBoxInfo(hwnd(), &parts)) theme::dress(parts.hwndList);
}

void ComboWidget::command(WORD code) {
  if (code != CBN_SELCHANGE) return;
  model_.ListIndex = static_cast<int>(SendMessageW(hwnd(), CB_GETCURSEL, 0, 0));
  if (model_.Click) model_.Click();
}

void ComboWidget::show() {
  if (shown_ != model_.List()) {
    shown_ = model_.List;
    SendMessageW(hwnd(), CB_RESETCONTENT, 0, 0);
    for (const std::wstring& entry : shown_)
      SendMessageW(hwnd(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.c_str()));
  }
  if (SendMessageW(hwnd(), CB_GETCURSEL, 0, 0) != model_.ListIndex)
    SendMessageW(hwnd(), CB_SETCURSEL, static_cast<WPARAM>(model_.ListIndex()), 0);
}

LabelWidget::LabelWidget(WidgetHost& host, Label& model, int id, DWORD style)
    : Widget(host, model, id, {WC_STATICW, style}), model_(model) {}

void LabelWidget::command(WORD code) {
  if (code == STN_CLICKED && model_.Click) model_.Click();
}

void LabelWidget::show() { showText(model_.Caption); }

InkLabelWidget::InkLabelWidget(WidgetHost& host, Label& model, int id, const FontLook& look,
                               COLORREF ink, DWORD style)
    : LabelWidget(host, model, id, style), look_(look), ink_(ink) {}

void InkLabelWidget::setFont(HFONT, unsigned dpi) {
  UniqueFont before = std::exchange(own_, messageFont(dpi, look_));
  LabelWidget::setFont(own_.get(), dpi);
}

HBRUSH InkLabelWidget::color(HDC dc) {
  SetBkColor(dc, theme::color(COLOR_WINDOW));
  SetTextColor(dc, ink_);
  return theme::brush(COLOR_WINDOW);
}

HCURSOR InkLabelWidget::pointer() const {
  return look_.underlined ? LoadCursorW(nullptr, IDC_HAND) : nullptr;
}

FrameWidget::FrameWidget(WidgetHost& host, Frame& model, int id)
    : Widget(host, model, id, {WC_BUTTONW, BS_GROUPBOX}), model_(model) {
  SetWindowSubclass(hwnd(), fillBackground, 0, 0);
  own_drawing::drawInstead(hwnd(), own_drawing::drawFrame);
}

// The window around does not paint below its children, and the system's frame
// expects it to.
LRESULT CALLBACK FrameWidget::fillBackground(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam, UINT_PTR, DWORD_PTR) {
  if (message != WM_ERASEBKGND) return DefSubclassProc(window, message, wParam, lParam);
  RECT area{};
  GetClientRect(window, &area);
  FillRect(reinterpret_cast<HDC>(wParam), &area, theme::brush(COLOR_BTNFACE));
  return TRUE;
}

ProgressWidget::ProgressWidget(WidgetHost& host, ProgressBar& model, int id)
    : Widget(host, model, id, {PROGRESS_CLASSW, PBS_SMOOTH}), model_(model) {
  own_drawing::drawInstead(hwnd(), own_drawing::drawProgress);
}

void ProgressWidget::show() {
  SendMessageW(hwnd(), PBM_SETRANGE32, 0, model_.Max());
  SendMessageW(hwnd(), PBM_SETPOS, static_cast<WPARAM>(model_.Value()), 0);
}

}  // namespace tintline
