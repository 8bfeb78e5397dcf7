// See input_box.h.
#include "win32/forms/input_box.h"

#include <memory>

#include "win32/control_ids.h"
#include "win32/controls/widgets.h"
#include "win32/forms/form_window.h"

namespace tintline {
namespace {

class InputForm final : public Form {
 public:
  InputForm(const std::wstring& caption, const std::wstring& prompt, const std::wstring& value) {
    Caption = caption;
    Prompt.Caption = prompt;
    Input.Text = value;
    OKButton.Caption = L"OK";
    CancelButton.Caption = L"Abbrechen";
    OKButton.Click = [this] {
      answer = Input.Text();
      Unload();
    };
    CancelButton.Click = [this] { Unload(); };
  }

  Label Prompt;
  TextBox Input;
  CommandButton OKButton, CancelButton;
  std::optional<std::wstring> answer;
};

class InputWindow final : public FormWindow {
 public:
  InputWindow(MessagePump& pump, InputForm& form) : FormWindow(pump, form), form_(form) {
    createWindow(kInputClass, WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME,
                 workingWindow());
    prompt_ = &add<LabelWidget>(form.Prompt, id::kInputPrompt, SS_LEFT | SS_NOPREFIX);
    input_ = &add<EditWidget>(form.Input, id::kInputText);
    ok_ = &add<ButtonWidget>(form.OKButton, id::kOk, BS_DEFPUSHBUTTON);
    cancel_ = &add<ButtonWidget>(form.CancelButton, id::kCancel);
  }

 private:
  static constexpr int kWidth = 380, kMargin = 12, kGap = 8, kButtonWidth = 88;

  // The prompt takes as many lines as it needs.
  int promptHeight() const {
    const WindowDc dc(hwnd());
    const Selected selected(dc, font());
    RECT area{0, 0, px(kWidth - 2 * kMargin), 0};
    DrawTextW(dc, form_.Prompt.Caption().c_str(), -1, &area,
              DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    return static_cast<int>(area.bottom);
  }
  int fieldHeight() const { return static_cast<int>(textSize(font(), L"Ag").cy) + px(8); }
  int buttonHeight() const { return fieldHeight() + px(3); }

  SIZE clientSize() override {
    return {px(kWidth),
            promptHeight() + fieldHeight() + buttonHeight() + px(2 * kMargin + 3 * kGap)};
  }

  void layout() override {
    const int margin = px(kMargin), width = px(kWidth - 2 * kMargin);
    int top = margin;
    place(*prompt_, margin, top, width, promptHeight());
    top += promptHeight() + px(kGap);
    place(*input_, margin, top, width, fieldHeight());
    top += fieldHeight() + px(2 * kGap);
    const int button = px(kButtonWidth), cancelLeft = margin + width - button;
    place(*ok_, cancelLeft - px(kGap) - button, top, button, buttonHeight());
    place(*cancel_, cancelLeft, top, button, buttonHeight());
  }

  InputForm& form_;
  Widget *prompt_, *input_, *ok_, *cancel_;
};

}  // namespace

std::optional<std::wstring> askForText(MessagePump& pump, const std::wstring& caption,
                                       const std::wstring& prompt, const std::wstring& value) {
  InputForm form(caption, prompt, value);
  form.makeView = [&] { return std::make_unique<InputWindow>(pump, form); };
  form.ShowModal();
  return form.answer;
}

}  // namespace tintline
