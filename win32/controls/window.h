// A window of the program's own class whose messages go to an object.
//
// Tested by tests/win32/forms/form_window_test.cpp.
#pragma once

#include <windows.h>

#include <string>

namespace tintline {

struct WindowSpec {
  const wchar_t* className;
  std::wstring caption;
  DWORD style = WS_OVERLAPPEDWINDOW;
  DWORD extendedStyle = 0;
  HWND owner = nullptr;  // or the parent of a child window
};

class Window {
 public:
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window() { destroy(); }

  // Null before it is made and after it was destroyed.
  HWND hwnd() const { return hwnd_; }

 protected:
  // Makes the window, not shown yet. Throws Win32Error.
  void create(const WindowSpec& spec);
  void destroy();

  // A message; what is not handled goes to the system's default.
  virtual LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  LRESULT handleSafely(UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND hwnd_ = nullptr;
};

// The program's window that the user works in, as the owner of dialogs: also while another
// program is in front. Null when there is none.
HWND workingWindow();

// Where lParam of mouse messages points to.
POINT pointOf(LPARAM lParam);

// The text of a window, of any length.
std::wstring windowText(HWND window);

}  // namespace tintline
