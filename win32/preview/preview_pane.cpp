// See preview_pane.h. Tested by tests/win32/preview/preview_test.cpp.
#include "win32/preview/preview_pane.h"

#include <ole2.h>

#include <exception>

#include "win32/controls/theme.h"
#include "win32/error.h"

namespace tintline {
namespace {

constexpr wchar_t kClass[] = L"TINTLINE.Vorschau";
constexpr UINT kBrowserFailed = WM_APP;  // posted: the browser must not be destroyed by its event
constexpr UINT_PTR kPatience = 1;        // the timer
constexpr UINT kPatienceTime = 5000;     // milliseconds until a page must be there

void registerClass(WNDPROC procedure) {
  WNDCLASSEXW known{};
  known.cbSize = sizeof known;
  if (GetClassInfoExW(GetModuleHandleW(nullptr), kClass, &known) != FALSE) return;
  WNDCLASSEXW pane{};
  pane.cbSize = sizeof pane;
  pane.lpfnWndProc = procedure;
  pane.hInstance = GetModuleHandleW(nullptr);
  pane.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  pane.lpszClassName = kClass;
  if (RegisterClassExW(&pane) == 0) throwLastError();
}

// What was copied out of a page is an object of its engine until it is asked for. It outlives
// the program as data. (Nothing happens when the copy is another program's.)
void renderCopy() {
  constexpr int kTries = 20;
  constexpr DWORD kPause = 25;  // milliseconds: another program looks into the clipboard
  for (int tries = 0; FAILED(OleFlushClipboard()) && tries < kTries; ++tries) Sleep(kPause);
}

}  // namespace

PreviewPane::PreviewPane(HWND parent, int id, Engine engine) : engine_(engine) {
  registerClass(windowProcedure);
  window_.reset(CreateWindowExW(WS_EX_CONTROLPARENT, kClass, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0,
                                0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                GetModuleHandleW(nullptr), nullptr));
  if (!window_) throwLastError();
  SetWindowLongPtrW(window(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

PreviewPane::~PreviewPane() { window_.reset(); }

void PreviewPane::navigate(const std::filesystem::path& page, bool keepPlace) {
  page_ = std::filesystem::absolute(page).lexically_normal();  // as the browser names it
  if (!browser_ && !richEdit_) startEngine();
  if (richEdit_) return richEdit_->navigate(page_, keepPlace);
  try {
    SetTimer(window(), kPatience, kPatienceTime, nullptr);
    browser_->navigate(page_, keepPlace);
  } catch (const Win32Error&) {
    giveUpBrowser();
  }
}

void PreviewPane::showAnchor(const std::wstring& id) {
  if (richEdit_) richEdit_->showAnchor(id);
  if (browser_ && !id.empty()) browser_->showAnchor(id);
}

void PreviewPane::setVisible(bool visible) { ShowWindow(window(), visible ? SW_SHOWNA : SW_HIDE); }

void PreviewPane::dpiChanged() {
  if (richEdit_) richEdit_->fitDpi();
}

void PreviewPane::followTheme() {
  if (richEdit_) richEdit_->followTheme();
}

bool PreviewPane::usesKey(const MSG& message) const {
  return IsChild(window(), message.hwnd) != FALSE && BrowserSite::mayTranslate(message);
}

bool PreviewPane::translate(MSG& message) {
  return browser_ && IsChild(window(), message.hwnd) != FALSE && browser_->translate(message);
}

void PreviewPane::startEngine() {
  const bool browser =
      engine_ == Engine::Browser || (engine_ == Engine::Automatic && BrowserHost::engineAnswers());
  if (!browser) return startRichEdit();
  try {
    startBrowser();
  } catch (const Win32Error&) {
    startRichEdit();
  }
}

void PreviewPane::startBrowser() {
  browser_ = std::make_unique<BrowserHost>(
      window(),
      BrowserEvents{.onLoaded =
                        [this] {
                          KillTimer(window(), kPatience);
                          if (browser_) browser_->loaded();
                        },
                    .onFailed = [this] { PostMessageW(window(), kBrowserFailed, 0, 0); },
                    .onExternalLink = [this](const std::wstring& address) { tellLink(address); },
                    .onAnchor = [this](const std::wstring& id) { tellAnchor(id); },
                    .onMenu =
                        [this](POINT place) {
                          PostMessageW(GetParent(window()), WM_CONTEXTMENU,
                                       reinterpret_cast<WPARAM>(window()),
                                       MAKELPARAM(place.x, place.y));
                        }});
}

void PreviewPane::startRichEdit() {
  richEdit_ = std::make_unique<RichEditView>(
      window(), [this](const std::wstring& address) { tellLink(address); },
      [this](const std::wstring& id) { tellAnchor(id); });
}

void PreviewPane::giveUpBrowser() {
  if (!browser_) return;  // told twice
  KillTimer(window(), kPatience);
  browser_.reset();
  startRichEdit();
  richEdit_->navigate(page_, false);
}

void PreviewPane::closeEngines() {
  renderCopy();
  browser_.reset();
  richEdit_.reset();
}

void PreviewPane::fitEngine() {
  if (browser_) browser_->fitWindow();
  if (!richEdit_) return;
  RECT place{};
  GetClientRect(window(), &place);
  SetWindowPos(richEdit_->window(), nullptr, 0, 0, place.right, place.bottom,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

// Events are told of windows at any depth: browsers have some within each other.
void PreviewPane::tellChildWindow(UINT event, HWND window) const {
  if ((event == WM_CREATE || event == WM_DESTROY) && onChildWindow)
    onChildWindow(window, event == WM_CREATE);
}

void PreviewPane::tellLink(const std::wstring& address) const {
  if (onExternalLink) onExternalLink(address);
}

void PreviewPane::tellAnchor(const std::wstring& id) const {
  if (onAnchor) onAnchor(id);
}

LRESULT CALLBACK PreviewPane::windowProcedure(HWND window, UINT message, WPARAM wParam,
                                              LPARAM lParam) {
  auto* const self = reinterpret_cast<PreviewPane*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  try {
    return self->onMessage(window, message, wParam, lParam);
  } catch (const std::exception&) {
    return 0;  // the page stays as it is: no exception may leave a window procedure
  }
}

LRESULT PreviewPane::onMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      fitEngine();
      return 0;
    case WM_ERASEBKGND: {
      RECT area{};
      GetClientRect(window, &area);
      FillRect(reinterpret_cast<HDC>(wParam), &area, theme::brush(COLOR_WINDOW));
      return TRUE;
    }
    case WM_PARENTNOTIFY:
      tellChildWindow(LOWORD(wParam), reinterpret_cast<HWND>(lParam));
      return 0;
    case WM_SETFOCUS:
      if (richEdit_) SetFocus(richEdit_->window());
      if (browser_) browser_->focus();
      return 0;
    case WM_TIMER:
      if (wParam == kPatience) giveUpBrowser();
      return 0;
    case kBrowserFailed:
      giveUpBrowser();
      return 0;
    case WM_DESTROY:
      closeEngines();
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(window, GWLP_USERDATA, 0);
      window_.release();  // it is destroyed, by us or with its parent
      return DefWindowProcW(window, message, wParam, lParam);
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

}  // namespace tintline
