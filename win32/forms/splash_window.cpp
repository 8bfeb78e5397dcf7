// See splash_window.h.
#include "win32/forms/splash_window.h"

#include <commctrl.h>

#include <algorithm>

#include "win32/control_ids.h"
#include "win32/controls/theme.h"
#include "win32/controls/widgets.h"

namespace tintline {
namespace {

constexpr int kWidth = 440, kLeft = 28, kLogoSize = 64;  // pixels at 96 dpi

using UniqueIcon = UniqueHandle<HICON, DestroyIcon>;

// The program's icon.
class LogoWidget final : public Widget {
 public:
  LogoWidget(WidgetHost& host, Control& model, int id)
      : Widget(host, model, id, {WC_STATICW, SS_ICON | SS_CENTERIMAGE}) {}

  void setFont(HFONT, unsigned dpi) override {
    const int size = scaled(kLogoSize, dpi);
    UniqueIcon before =
        std::exchange(icon_, UniqueIcon(static_cast<HICON>(LoadImageW(
                                 GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kProgramIcon),
                                 IMAGE_ICON, size, size, LR_DEFAULTCOLOR))));
    SendMessageW(hwnd(), STM_SETICON, reinterpret_cast<WPARAM>(icon_.get()), 0);
  }

  HBRUSH color(HDC) override { return theme::brush(COLOR_WINDOW); }

 private:
  void show() override {}
  bool canBeDisabled() const override { return false; }

  UniqueIcon icon_;
};

// The light panel below everything else: it gets the clicks, labels let them through.
class PanelWidget final : public Widget {
 public:
  PanelWidget(WidgetHost& host, Frame& model, int id)
      : Widget(host, model, id, {WC_STATICW, SS_NOTIFY | WS_BORDER}), model_(model) {}

  void command(WORD code) override {
    if (code == STN_CLICKED && model_.Enabled && model_.Click) model_.Click();
  }
  HBRUSH color(HDC) override { return theme::brush(COLOR_WINDOW); }

 private:
  void show() override {}

  Frame& model_;
};

}  // namespace

SplashWindow::SplashWindow(MessagePump& pump, frmSplash& form)
    : FormWindow(pump, form), form_(form) {
  createWindow(kSplashClass, WS_POPUP | WS_BORDER, WS_EX_DLGMODALFRAME, workingWindow());
  const COLORREF ink = theme::color(COLOR_WINDOWTEXT);
  // (The system's own is too pale in some themes.)
  const COLORREF linkInk = theme::isDark() ? theme::color(COLOR_HOTLIGHT) : RGB(0, 102, 204);
  const FontLook name{.percent = 220, .bold = true}, plain{}, bold{.bold = true},
      link{.underlined = true};
  logo_ = &add<LogoWidget>(form.imgLogo, id::kSplashLogo);
  productName_ = &add<InkLabelWidget>(form.lblProductName, id::kSplashProductName, name, ink);
  version_ = &add<InkLabelWidget>(form.lblVersion, id::kSplashVersion, bold, ink);
  copyright_ = &add<InkLabelWidget>(form.lblCopyright, id::kSplashCopyright, plain, ink);
  freeware_ = &add<InkLabelWidget>(form.Label2, id::kSplashLabel2, plain, ink);
  feedback_ = &add<InkLabelWidget>(form.Label3, id::kSplashLabel3, link, linkInk,
                                   SS_LEFT | SS_NOPREFIX | SS_NOTIFY);
  loading_ = &add<InkLabelWidget>(form.Label1, id::kSplashLabel1, plain, ink);
  progress_ = &add<ProgressWidget>(form.ProgressBar1, id::kSplashProgressBar);
  settings_ = &add<InkLabelWidget>(form.lblEinstellungen, id::kSplashEinstellungen, plain, ink,
                                   SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL);
  frame_ = &add<PanelWidget>(form.Frame1, id::kSplashFrame1);
}

LRESULT SplashWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CHAR:
      form_.Form_KeyPress();
      return 0;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
      form_.Form_MouseUp();
      return 0;
    case WM_CLOSE:
      form_.Form_KeyPress();  // as any other key
      return 0;
    default:
      return FormWindow::handle(message, wParam, lParam);
  }
}

// A path that needs more than two lines makes the window higher: it is there to be read.
SIZE SplashWindow::clientSize() {
  const int more = settingsHeight() - 2 * lineHeight();
  return {px(kWidth), px(234) + std::max(more, 0)};
}

int SplashWindow::lineHeight() const {
  return static_cast<int>(textSize(font(), L"Ag").cy) + px(2);
}

// Of the whole text, which is broken where it has to be: a path may have no blanks.
int SplashWindow::settingsHeight() const {
  const std::wstring& text = form_.lblEinstellungen.Caption();
  RECT area{0, 0, px(kWidth - 2 * kLeft), 0};
  const WindowDc dc(nullptr);
  const Selected selected(dc, font());
  DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area,
            DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX);
  return static_cast<int>(area.bottom);
}

void SplashWindow::layout() {
  const int line = lineHeight();
  const SIZE client = clientSize();
  const auto width = static_cast<int>(client.cx), height = static_cast<int>(client.cy);
  const int edge = px(8), left = px(kLeft), text = left + px(kLogoSize + 20);
  const int textWidth = width - text - left;
  place(*frame_, edge, edge, width - 2 * edge, height - 2 * edge);
  place(*logo_, left, px(32), px(kLogoSize), px(kLogoSize));
  int top = px(26);
  const auto put = [&](const Widget* widget, int labelHeight, int behind) {
    place(*widget, text, top, textWidth, labelHeight);
    top += labelHeight + px(behind);
  };
  put(productName_, line * 5 / 2, 2);
  put(version_, line, 12);
  put(copyright_, line, 2);
  put(freeware_, line, 2);
  // The link is as wide as its text: clicks beside it are the frame's.
  place(*feedback_, text, top, widthFor(form_.Label3.Caption, 4), line);
  top += line + px(14);  // also without it: the settings stand below the logo
  const int below = width - 2 * left;
  place(*loading_, left, top, below, line);
  place(*progress_, left, top + line + px(4), below, px(14));
  place(*settings_, left, top + px(4), below, settingsHeight());  // the two above are hidden then
}

}  // namespace tintline
