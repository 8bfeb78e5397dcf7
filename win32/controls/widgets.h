// The simple controls: button, check box, option, text field, drop-down list, label,
// frame, progress bar.
//
// Tested by tests/win32/forms/form_window_test.cpp.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

#include "app/controls/combo_box.h"
#include "app/controls/control.h"
#include "win32/controls/fonts.h"
#include "win32/controls/gdi.h"
#include "win32/controls/widget.h"

namespace tintline {

// The answer to a message of any button.
LRESULT drawnButton(NMHDR& header);

class ButtonWidget final : public Widget {
 public:
  ButtonWidget(WidgetHost& host, CommandButton& model, int id, DWORD style = BS_PUSHBUTTON);
  void command(WORD code) override;
  LRESULT notify(NMHDR& header) override { return drawnButton(header); }

 private:
  void show() override { showText(model_.Caption); }

  CommandButton& model_;
};

inline constexpr DWORD kCheckStyle = BS_AUTOCHECKBOX | WS_TABSTOP | WS_GROUP;
inline constexpr DWORD kOptionStyle = BS_AUTORADIOBUTTON;  // WS_GROUP and WS_TABSTOP: the first

// A check box or an option.
template <class Model>
class ToggleWidget final : public Widget {
 public:
  ToggleWidget(WidgetHost& host, Model& model, int id, DWORD style)
      : Widget(host, model, id, {WC_BUTTONW, style}), model_(model) {}

  void command(WORD code) override {
    if (code != BN_CLICKED) return;
    model_.Value = SendMessageW(hwnd(), BM_GETCHECK, 0, 0) == BST_CHECKED;
    if (model_.Click) model_.Click();
  }
  LRESULT notify(NMHDR& header) override { return drawnButton(header); }

 private:
  void show() override {
    showText(model_.Caption);
    const WPARAM state = model_.Value ? BST_CHECKED : BST_UNCHECKED;
    if (static_cast<WPARAM>(SendMessageW(hwnd(), BM_GETCHECK, 0, 0)) != state)
      SendMessageW(hwnd(), BM_SETCHECK, state, 0);
  }

  Model& model_;
};

class EditWidget final : public Widget {
 public:
  EditWidget(WidgetHost& host, TextBox& model, int id);
  void command(WORD code) override;

 private:
  void show() override;

  TextBox& model_;
  bool showing_ = false;
};

class ComboWidget final : public Widget {
 public:
  ComboWidget(WidgetHost& host, ComboBox& model, int id);
  void command(WORD code) override;
  void followTheme() override;

 private:
  void show() override;

  ComboBox& model_;
  std::vector<std::wstring> shown_;
};

class LabelWidget : public Widget {
 public:
  LabelWidget(WidgetHost& host, Label& model, int id, DWORD style = SS_LEFT);
  void command(WORD code) override;

 protected:
  void show() override;

  Label& model_;
};

// A label in a font and colour of its own, on the colour of windows.
class InkLabelWidget final : public LabelWidget {
 public:
  InkLabelWidget(WidgetHost& host, Label& model, int id, const FontLook& look, COLORREF ink,
                 DWORD style = SS_LEFT | SS_NOPREFIX);
  void setFont(HFONT font, unsigned dpi) override;
  HBRUSH color(HDC dc) override;
  HCURSOR pointer() const override;  // a hand over what is underlined

 private:
  bool canBeDisabled() const override { return false; }  // its ink stays as it is

  FontLook look_;
  COLORREF ink_;
  UniqueFont own_;
};

// The frame around other controls; made behind them, so that it lies below.
class FrameWidget final : public Widget {
 public:
  FrameWidget(WidgetHost& host, Frame& model, int id);

 private:
  void show() override { showText(model_.Caption); }
  static LRESULT CALLBACK fillBackground(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR, DWORD_PTR);

  Frame& model_;
};

class ProgressWidget final : public Widget {
 public:
  ProgressWidget(WidgetHost& host, ProgressBar& model, int id);

 private:
  void show() override;

  ProgressBar& model_;
};

}  // namespace tintline
