// See widget.h.
#include "win32/controls/widget.h"

#include <utility>

#include "win32/controls/accessible.h"
#include "win32/controls/own_drawing.h"
#include "win32/controls/theme.h"
#include "win32/controls/window.h"

namespace tintline {

Widget::Widget(WidgetHost& host, Control& model, int id, const Spec& spec)
    : host_(host), model_(model), id_(id) {
  hwnd_ = CreateWindowExW(spec.extendedStyle, spec.className, L"",
                          spec.style | WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0, host.window,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                          GetModuleHandleW(nullptr), nullptr);
  if (!model.AccessibleName.empty()) setAccessibleName(hwnd_, model.AccessibleName);
  if ((spec.extendedStyle & WS_EX_CLIENTEDGE) != 0) own_drawing::drawEdge(hwnd_);
  model.setView(this);
}

Widget::~Widget() { Widget::detach(); }

void Widget::changed(Control&) { dirty_ = true; }

void Widget::refresh(Control&) {
  if (dirty_) {
    flush();
  } else {
    dirty_ = true;  // until the window is shown, if that is due
    host_.pump.flushWhenDue();
    if (std::exchange(dirty_, false)) return;
  }
  UpdateWindow(hwnd_);
}

void Widget::flush() {
  if (!dirty_ || hwnd_ == nullptr) return;
  dirty_ = false;  // first: showing may change the model
  show();
  showState();
}

void Widget::detach() {
  if (hwnd_ == nullptr) return;
  model_.setView(nullptr);
  hwnd_ = nullptr;
}

void Widget::setFont(HFONT font, unsigned) {
  SendMessageW(hwnd_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void Widget::followTheme() { theme::dress(hwnd_); }

void Widget::showText(const std::wstring& text) {
  if (windowText(hwnd_) != text) SetWindowTextW(hwnd_, text.c_str());
}

void Widget::showState() {
  const bool enabled = model_.Enabled || !canBeDisabled();
  if (enabled != static_cast<bool>(IsWindowEnabled(hwnd_))) {
    if (!enabled) passFocusOn();
    EnableWindow(hwnd_, enabled);
    if (enabled) takeFocusBack();
  }
  const bool visible = (GetWindowLongW(hwnd_, GWL_STYLE) & WS_VISIBLE) != 0;
  if (visible != model_.Visible()) ShowWindow(hwnd_, model_.Visible ? SW_SHOWNA : SW_HIDE);
  if (toolTip_ != model_.ToolTipText()) {
    toolTip_ = model_.ToolTipText;
    host_.tips.set(hwnd_, toolTip_);
  }
}

// Or no key would be heard. One that only stood in passes it on for the first.
void Widget::passFocusOn() {
  if (GetFocus() != hwnd_) return;
  if (host_.substitute != hwnd_) host_.ousted = hwnd_;
  host_.substitute = GetNextDlgTabItem(host_.window, hwnd_, FALSE);
  SetFocus(host_.substitute);
}

// Unless the user has gone elsewhere meanwhile.
void Widget::takeFocusBack() {
  if (host_.ousted != hwnd_) return;
  if (GetFocus() == host_.substitute) SetFocus(hwnd_);
  host_.ousted = host_.substitute = nullptr;
}

}  // namespace tintline
