// See form_window.h.
#include "win32/forms/form_window.h"

#include <algorithm>

#include "win32/control_ids.h"
#include "win32/controls/theme.h"

namespace tintline {

FormWindow::FormWindow(MessagePump& pump, Form& form) : form_(form), host_(pump) {}

FormWindow::~FormWindow() { destroy(); }

void FormWindow::createWindow(const wchar_t* className, DWORD style, DWORD extendedStyle,
                              HWND owner) {
  create({className, form_.Caption, style | WS_CLIPCHILDREN, extendedStyle, owner});
  host_.window = hwnd();
  host_.tips.create(hwnd());
  dpi_ = GetDpiForWindow(hwnd());
  pump().attach(*this);
  form_.setView(this);
}

// ------------------------------------------------------------------------- FormView
void FormWindow::show() {
  if (!shown_) {
    shown_ = true;
    makeFonts();
    flush();
    sizeAndCenter();
    const int how = openingState();
    layout();
    ShowWindow(hwnd(), how);
  } else {
    ShowWindow(hwnd(), IsZoomed(hwnd()) ? SW_SHOW : SW_SHOWNORMAL);
  }
  SetForegroundWindow(hwnd());
  UpdateWindow(hwnd());
}

void FormWindow::runModal() {
  pump().flush();
  disableOthers();
  show();
  focusFirst();
  pump().runUntil([this] { return hwnd() == nullptr; });
  enableOthers();
}

// A text field is selected whole, so that typing replaces what it offers.
void FormWindow::focusFirst() {
  HWND first = GetNextDlgTabItem(hwnd(), nullptr, FALSE);
  SetFocus(first);
  if ((SendMessageW(first, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0)
    SendMessageW(first, EM_SETSEL, 0, -1);
}

// The others are enabled first, so that one of them becomes the active window.
void FormWindow::close() {
  enableOthers();
  destroy();
}

void FormWindow::disableOthers() {
  const auto disable = [](HWND other, LPARAM self) -> BOOL {
    auto* window = reinterpret_cast<FormWindow*>(self);
    if (other == window->hwnd() || !IsWindowVisible(other) || !IsWindowEnabled(other)) return TRUE;
    EnableWindow(other, FALSE);
    window->disabled_.push_back(other);
    return TRUE;
  };
  EnumThreadWindows(GetCurrentThreadId(), disable, reinterpret_cast<LPARAM>(this));
}

void FormWindow::enableOthers() {
  for (HWND other : disabled_) EnableWindow(other, TRUE);
  disabled_.clear();
}

// ---------------------------------------------------------------------- ControlView
void FormWindow::showForm() {
  if (!formChanged_ || !shown_) return;
  formChanged_ = false;
  if (windowText(hwnd()) != form_.Caption()) SetWindowTextW(hwnd(), form_.Caption().c_str());
  showTopmost();
  POINT pointer{};
  GetCursorPos(&pointer);
  HWND below = WindowFromPoint(pointer);
  if (below == hwnd() || IsChild(hwnd(), below))
    SendMessageW(below, WM_SETCURSOR, reinterpret_cast<WPARAM>(below),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
}

void FormWindow::showTopmost() {
  const bool topmost = (GetWindowLongPtrW(hwnd(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
  if (topmost == form_.Topmost()) return;
  SetWindowPos(hwnd(), form_.Topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void FormWindow::changed(Control&) { formChanged_ = true; }

void FormWindow::refresh(Control&) {
  showForm();
  pump().flushWhenDue();
  RedrawWindow(hwnd(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

// Title bar and controls have the look that was decided on.
void FormWindow::followTheme() {
  if (std::exchange(shownTheme_, theme::version()) == theme::version()) return;
  theme::dressFrame(hwnd());
  host_.tips.followTheme();
  for (const auto& widget : widgets_) widget->followTheme();
  themeChanged();
  RedrawWindow(hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

// --------------------------------------------------------------------- PumpedWindow
bool FormWindow::translate(MSG& message) {
  return hwnd() != nullptr && (message.hwnd == hwnd() || IsChild(hwnd(), message.hwnd)) &&
         IsDialogMessageW(hwnd(), &message);
}

void FormWindow::flush() {
  if (hwnd() == nullptr || !shown_) return;
  followTheme();
  showForm();
  for (std::size_t i = 0; i < widgets_.size(); ++i) widgets_[i]->flush();
  flushed();
}

// -------------------------------------------------------------------------- messages
LRESULT FormWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND: {
      const bool known = command(LOWORD(wParam), HIWORD(wParam));
      pump().flush();  // whoever sent it sees what came of it as soon as it is answered
      if (known) return 0;
      break;
    }
    case WM_NOTIFY: {
      auto& header = *reinterpret_cast<NMHDR*>(lParam);
      if (Widget* widget = widgetOf(header.hwndFrom)) return widget->notify(header);
      break;
    }
    case WM_DRAWITEM: {
      const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      if (Widget* widget = widgetOf(item.hwndItem)) widget->draw(item);
      return TRUE;
    }
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
      if (HBRUSH brush =
              colorsOf(message, reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam)))
        return reinterpret_cast<LRESULT>(brush);
      break;
    case WM_ERASEBKGND: {
      RECT area{};
      GetClientRect(hwnd(), &area);
      FillRect(reinterpret_cast<HDC>(wParam), &area, theme::brush(COLOR_BTNFACE));
      return TRUE;
    }
    case WM_SIZE:
      if (shown_ && wParam != SIZE_MINIMIZED) layout();
      return 0;
    case WM_DPICHANGED:
      dpiChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_SETTINGCHANGE:
      if (wParam == SPI_SETNONCLIENTMETRICS) systemFontChanged();
      theme::update();  // of the user's setting for programs, or of high contrast
      return 0;
    case WM_SYSCOLORCHANGE:
      theme::update();
      systemColorsChanged();
      return 0;
    case WM_THEMECHANGED:
      theme::update();
      break;
    case WM_SETCURSOR:
      if (LOWORD(lParam) == HTCLIENT && setPointer(reinterpret_cast<HWND>(wParam))) return TRUE;
      break;
    case WM_ACTIVATE:
      activated(LOWORD(wParam) != WA_INACTIVE);
      return 0;
    case DM_GETDEFID:
      return widgetOf(id::kOk) != nullptr ? MAKELRESULT(id::kOk, DC_HASDEFID) : 0;
    case WM_CLOSE:
      closeRequested();
      return 0;
    case WM_DESTROY:
      destroyed();
      return 0;
    default:
      break;
  }
  return Window::handle(message, wParam, lParam);
}

HBRUSH FormWindow::colorsOf(UINT message, HWND control, HDC dc) const {
  Widget* widget = message == WM_CTLCOLORSTATIC ? widgetOf(control) : nullptr;
  HBRUSH own = widget != nullptr ? widget->color(dc) : nullptr;
  return own != nullptr ? own : theme::controlColors(message, dc);
}

bool FormWindow::command(int id, WORD code) {
  Widget* widget = widgetOf(id);
  if (widget == nullptr) return false;
  widget->command(code);
  return true;
}

// The focus comes back to the control that had it.
void FormWindow::activated(bool active) {
  if (active) {
    if (lastFocus_ != nullptr && IsWindowEnabled(lastFocus_)) SetFocus(lastFocus_);
  } else {
    lastFocus_ = GetFocus();
  }
}

// False: the control or the system knows better.
bool FormWindow::setPointer(HWND below) {
  HCURSOR pointer = nullptr;
  if (form_.MousePointer() == Pointer::Hourglass)
    pointer = LoadCursorW(nullptr, IDC_WAIT);
  else if (Widget* widget = widgetOf(below))
    pointer = widget->pointer();
  else if (below == hwnd())
    pointer = ownPointer();
  if (pointer != nullptr) SetCursor(pointer);
  return pointer != nullptr;
}

Widget* FormWindow::widgetOf(HWND control) const {
  const auto found = std::find_if(widgets_.begin(), widgets_.end(), [control](const auto& widget) {
    return widget->hwnd() == control;
  });
  return found == widgets_.end() || control == nullptr ? nullptr : found->get();
}

Widget* FormWindow::widgetOf(int id) const {
  return hwnd() == nullptr ? nullptr : widgetOf(GetDlgItem(hwnd(), id));
}

// The models live on without their views. The widgets stay in memory: one of them may
// be at work in the very event that closed the window.
void FormWindow::destroyed() {
  pump().detach(*this);
  form_.setView(nullptr);
  for (const auto& widget : widgets_) widget->detach();
  host_.tips.destroy();
  host_.window = nullptr;
}

// ----------------------------------------------------------------- sizes and places
void FormWindow::place(const Widget& widget, int left, int top, int width, int height) {
  SetWindowPos(widget.hwnd(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

int FormWindow::widthFor(const std::wstring& caption, int around) const {
  return static_cast<int>(textSize(font(), caption).cx) + px(around);
}

bool FormWindow::isSizable() const {
  return (GetWindowLongW(hwnd(), GWL_STYLE) & WS_THICKFRAME) != 0;
}

SIZE FormWindow::windowSize(SIZE client) const {
  RECT area{0, 0, client.cx, client.cy};
  AdjustWindowRectExForDpi(&area, static_cast<DWORD>(GetWindowLongW(hwnd(), GWL_STYLE)),
                           GetMenu(hwnd()) != nullptr,
                           static_cast<DWORD>(GetWindowLongW(hwnd(), GWL_EXSTYLE)), dpi_);
  return {area.right - area.left, area.bottom - area.top};
}

void FormWindow::sizeAndCenter() {
  HWND owner = GetWindow(hwnd(), GW_OWNER);
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner != nullptr ? owner : hwnd(), MONITOR_DEFAULTTONEAREST),
                  &monitor);
  const RECT& work = monitor.rcWork;
  RECT around = work;
  if (owner != nullptr) GetWindowRect(owner, &around);
  SIZE size = windowSize(clientSize());
  if (isSizable()) {
    size.cx = std::min(size.cx, work.right - work.left);
    size.cy = std::min(size.cy, work.bottom - work.top);
  }
  const LONG left = (around.left + around.right - size.cx) / 2;
  const LONG top = (around.top + around.bottom - size.cy) / 2;
  SetWindowPos(hwnd(), nullptr, static_cast<int>(std::max(left, work.left)),
               static_cast<int>(std::max(top, work.top)), static_cast<int>(size.cx),
               static_cast<int>(size.cy), SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::makeFonts() {
  UniqueFont before = std::exchange(font_, messageFont(dpi_));  // goes when none uses it
  host_.tips.setFont(font());
  for (const auto& widget : widgets_) widget->setFont(font(), dpi_);
  fontsChanged();
}

void FormWindow::systemFontChanged() {
  if (!shown_) return;
  makeFonts();
  if (!isSizable()) sizeAndCenter();
  layout();
}

// Controls learn of it from the window that they are in.
void FormWindow::systemColorsChanged() {
  for (const auto& widget : widgets_) SendMessageW(widget->hwnd(), WM_SYSCOLORCHANGE, 0, 0);
  RedrawWindow(hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void FormWindow::dpiChanged(unsigned dpi, const RECT& suggested) {
  dpi_ = dpi;
  makeFonts();
  SIZE size{suggested.right - suggested.left, suggested.bottom - suggested.top};
  if (!isSizable()) size = windowSize(clientSize());
  SetWindowPos(hwnd(), nullptr, static_cast<int>(suggested.left), static_cast<int>(suggested.top),
               static_cast<int>(size.cx), static_cast<int>(size.cy), SWP_NOZORDER | SWP_NOACTIVATE);
  layout();
  RedrawWindow(hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

}  // namespace tintline
