// The window of a form: makes the widgets of its controls, keeps them in the
// resolution of the monitor, and hands messages to them. What stands where is decided
// by the window of each form.
//
// Tested by tests/win32/forms/form_window_test.cpp.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "app/controls/form.h"
#include "win32/controls/fonts.h"
#include "win32/controls/gdi.h"
#include "win32/controls/widget.h"
#include "win32/controls/window.h"
#include "win32/message_pump.h"

namespace tintline {

class FormWindow : public Window, public FormView, public ControlView, public PumpedWindow {
 public:
  ~FormWindow() override;

  // FormView
  void show() override;
  void runModal() override;
  void close() override;

  // ControlView: caption, pointer and whatever the window derives from its form; a refresh
  // shows them at once
  void changed(Control& form) override;
  void refresh(Control& form) override;

  // PumpedWindow
  bool translate(MSG& message) override;
  void flush() override;

 protected:
  FormWindow(MessagePump& pump, Form& form);

  // Makes the window. Widgets are added behind it; their order is the tab order.
  void createWindow(const wchar_t* className, DWORD style, DWORD extendedStyle = 0,
                    HWND owner = nullptr);

  template <class W, class... Arguments>
  W& add(Arguments&&... arguments) {
    auto widget = std::make_unique<W>(host_, std::forward<Arguments>(arguments)...);
    W& added = *widget;
    widgets_.push_back(std::move(widget));
    return added;
  }

  // Puts every control into its place. Also called when size or resolution change.
  virtual void layout() = 0;

  // The size of the inside that the window opens with, and whose shape it keeps when
  // it cannot be sized.
  virtual SIZE clientSize() = 0;

  // Called when the window has its size and is about to show for the first time; gives how.
  virtual int openingState() { return SW_SHOWNORMAL; }

  // The user wants the window closed.
  virtual void closeRequested() { form_.Unload(); }

  // Called behind every flush of the widgets.
  virtual void flushed() {}

  // The pointer over the window itself; null for the usual one.
  virtual HCURSOR ownPointer() { return nullptr; }

  // The look of the windows is another now.
  virtual void themeChanged() {}

  // Fonts were made for another resolution.
  virtual void fontsChanged() {}

  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  virtual bool command(int id, WORD code);

  MessagePump& pump() const { return host_.pump; }
  WidgetHost& host() { return host_; }
  HFONT font() const { return font_.get(); }
  unsigned dpi() const { return dpi_; }
  bool isSizable() const;

  // A size at 96 dpi in this window's pixels.
  int px(int size) const { return scaled(size, dpi_); }

  // Moves a child.
  static void place(const Widget& widget, int left, int top, int width, int height);

  // The width a control needs for its caption and `around` pixels (at 96 dpi).
  int widthFor(const std::wstring& caption, int around) const;

  // The size of the window around that inside.
  SIZE windowSize(SIZE client) const;

  // Gives the window the size for clientSize(), in the middle of its owner or monitor.
  void sizeAndCenter();

 private:
  void showForm();
  void followTheme();
  void showTopmost();
  void makeFonts();
  void systemFontChanged();
  void systemColorsChanged();
  void dpiChanged(unsigned dpi, const RECT& suggested);
  HBRUSH colorsOf(UINT message, HWND control, HDC dc) const;
  void activated(bool active);
  void focusFirst();
  bool setPointer(HWND below);
  Widget* widgetOf(HWND control) const;
  Widget* widgetOf(int id) const;
  void disableOthers();
  void enableOthers();
  void destroyed();

  Form& form_;
  WidgetHost host_;
  std::vector<std::unique_ptr<Widget>> widgets_;
  UniqueFont font_;
  unsigned dpi_ = kDesignDpi;
  bool shown_ = false;
  bool formChanged_ = true;
  unsigned shownTheme_ = 0;     // its version
  HWND lastFocus_ = nullptr;    // while another window is active
  std::vector<HWND> disabled_;  // while this window is modal
};

}  // namespace tintline
