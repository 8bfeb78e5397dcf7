// See window.h.
#include "win32/controls/window.h"

#include <windowsx.h>

#include <exception>

#include "win32/control_ids.h"
#include "win32/error.h"

namespace tintline {
namespace {

void registerClass(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSEXW known{};
  if (GetClassInfoExW(GetModuleHandleW(nullptr), name, &known)) return;
  WNDCLASSEXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.style = CS_DBLCLKS;
  wanted.lpfnWndProc = procedure;
  wanted.hInstance = GetModuleHandleW(nullptr);
  wanted.hIcon = LoadIconW(wanted.hInstance, MAKEINTRESOURCEW(kProgramIcon));
  wanted.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wanted.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  wanted.lpszClassName = name;
  RegisterClassExW(&wanted);
}

}  // namespace

void Window::create(const WindowSpec& spec) {
  registerClass(spec.className, procedure);
  CreateWindowExW(spec.extendedStyle, spec.className, spec.caption.c_str(), spec.style,
                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, spec.owner, nullptr,
                  GetModuleHandleW(nullptr), this);
  if (hwnd_ == nullptr) throwLastError();
}

void Window::destroy() {
  if (hwnd_ != nullptr) DestroyWindow(hwnd_);
}

LRESULT Window::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  return DefWindowProcW(hwnd_, message, wParam, lParam);
}

// An unexpected error ends what the message started, quietly: no exception may leave a
// window procedure.
LRESULT Window::handleSafely(UINT message, WPARAM wParam, LPARAM lParam) {
  try {
    return handle(message, wParam, lParam);
  } catch (const std::exception&) {
    return 0;
  }
}

LRESULT CALLBACK Window::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* self = static_cast<Window*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    self->hwnd_ = window;
  }
  auto* self = reinterpret_cast<Window*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  const LRESULT result = self->handleSafely(message, wParam, lParam);
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    self->hwnd_ = nullptr;
  }
  return result;
}

HWND workingWindow() {
  if (HWND active = GetActiveWindow()) return active;
  HWND found = nullptr;
  const auto usable = [](HWND window, LPARAM result) -> BOOL {
    if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
    *reinterpret_cast<HWND*>(result) = window;
    return FALSE;  // the topmost one will do
  };
  EnumThreadWindows(GetCurrentThreadId(), usable, reinterpret_cast<LPARAM>(&found));
  return found;
}

POINT pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

std::wstring windowText(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

}  // namespace tintline
