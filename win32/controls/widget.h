// A control on the screen that shows the model of a control.
//
// What changed is shown when the pump finds time for it, not at once: models may
// change thousands of times a second. A control that changed is shown at once when it is
// refreshed; the refresh of another one, as of a frame behind each line of a run, shows the
// window now and then.
//
// Tested by tests/win32/forms/form_window_test.cpp.
#pragma once

#include <windows.h>

#include <string>

#include "app/controls/control.h"
#include "win32/controls/tool_tips.h"
#include "win32/message_pump.h"

namespace tintline {

// What widgets need of the window that they are in.
struct WidgetHost {
  explicit WidgetHost(MessagePump& messagePump) : pump(messagePump) {}

  MessagePump& pump;
  HWND window = nullptr;
  ToolTips tips;

  // The control that lost the keyboard when it was disabled, and the one that has it meanwhile.
  HWND ousted = nullptr;
  HWND substitute = nullptr;
};

class Widget : public ControlView {
 public:
  ~Widget() override;

  HWND hwnd() const { return hwnd_; }
  int id() const { return id_; }

  void changed(Control& control) override;
  void refresh(Control& control) override;

  // Shows what changed, if anything did.
  void flush();

  // The model's view no longer: the window goes.
  virtual void detach();

  virtual void setFont(HFONT font, unsigned dpi);

  // The look of the windows is another now.
  virtual void followTheme();

  // Messages of the control to its window.
  virtual void command(WORD) {}
  virtual LRESULT notify(NMHDR&) { return 0; }
  virtual void draw(const DRAWITEMSTRUCT&) {}
  virtual HBRUSH color(HDC) { return nullptr; }        // null: the system's colours
  virtual HCURSOR pointer() const { return nullptr; }  // null: the window's

 protected:
  struct Spec {
    const wchar_t* className;
    DWORD style;
    DWORD extendedStyle = 0;
  };

  // Both must live as long as the widget.
  Widget(WidgetHost& host, Control& model, int id, const Spec& spec);

  WidgetHost& host() const { return host_; }

  // Shows the model's state beyond Enabled, Visible and the tool tip.
  virtual void show() = 0;

  // Whether the control is to look and act disabled when the model is.
  virtual bool canBeDisabled() const { return true; }

  // Sets the window's text when it is another.
  void showText(const std::wstring& text);

 private:
  void showState();
  void passFocusOn();
  void takeFocusBack();

  WidgetHost& host_;
  Control& model_;
  HWND hwnd_;
  int id_;
  std::wstring toolTip_;
  bool dirty_ = true;
};

}  // namespace tintline
