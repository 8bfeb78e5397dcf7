// See theme.h. Tested by tests/win32/controls/theme_test.cpp.
#include "win32/controls/theme.h"

#include <commctrl.h>
#include <uxtheme.h>

#include <algorithm>
#include <iterator>

#include "win32/controls/gdi.h"

namespace tintline::theme {
namespace {

struct Role {
  int index;  // of the system's colour
  COLORREF light, dark;
};

// Texts are at least 4.5:1 on what they stand on, edges 3:1. Dark windows are those of dark exact
// pages: the colours of code are made for that ground.
constexpr Role kRoles[] = {
    {COLOR_WINDOW, RGB(255, 255, 255), RGB(0x1B, 0x1E, 0x24)},
    {COLOR_WINDOWTEXT, RGB(0, 0, 0), RGB(0xE3, 0xE6, 0xEB)},
    {COLOR_BTNFACE, RGB(0xF0, 0xF0, 0xF0), RGB(0x25, 0x29, 0x30)},
    {COLOR_BTNTEXT, RGB(0, 0, 0), RGB(0xE3, 0xE6, 0xEB)},
    {COLOR_BTNHIGHLIGHT, RGB(0xFF, 0xFF, 0xFF), RGB(0x38, 0x3E, 0x49)},  // a button's ground
    {COLOR_3DLIGHT, RGB(0xDD, 0xE6, 0xF2), RGB(0x48, 0x50, 0x5E)},       // one below the pointer
    {COLOR_BTNSHADOW, RGB(0x80, 0x80, 0x80), RGB(0x7C, 0x85, 0x94)},     // edges
    {COLOR_GRAYTEXT, RGB(0x6A, 0x6A, 0x6A), RGB(0x98, 0xA0, 0xAE)},
    {COLOR_HIGHLIGHT, RGB(0x00, 0x63, 0xB8), RGB(0x35, 0x69, 0xBD)},
    {COLOR_HIGHLIGHTTEXT, RGB(255, 255, 255), RGB(255, 255, 255)},
    {COLOR_HOTLIGHT, RGB(0x00, 0x5A, 0xB4), RGB(0x8A, 0xB4, 0xFF)},
    {COLOR_INFOBK, RGB(255, 255, 255), RGB(0x30, 0x35, 0x3F)},
    {COLOR_INFOTEXT, RGB(0, 0, 0), RGB(0xE3, 0xE6, 0xEB)},
    {COLOR_MENU, RGB(0xF6, 0xF6, 0xF6), RGB(0x2B, 0x30, 0x38)},
    {COLOR_MENUTEXT, RGB(0, 0, 0), RGB(0xE3, 0xE6, 0xEB)},
};
constexpr std::size_t kRoleCount = std::size(kRoles);

struct State {
  Brightness wanted = Brightness::System;
  Look look = Look::System;
  bool dark = false, highContrast = false;
  unsigned version = 0;
  UniqueBrush brushes[kRoleCount];  // of a look of our own, made when asked for
};

State& state() {
  static State state;
  return state;
}

bool isDarkGround(COLORREF ground) {
  return 299 * GetRValue(ground) + 587 * GetGValue(ground) + 114 * GetBValue(ground) < 128 * 1000;
}

bool contrastIsHigh() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

bool appsAreDark() {
  DWORD light = 1, size = sizeof light;
  return RegGetValueW(HKEY_CURRENT_USER,
                      L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                      L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light,
                      &size) == ERROR_SUCCESS &&
         light == 0;
}

const Role* roleOf(int index) {
  const Role* const role = std::ranges::find(kRoles, index, &Role::index);
  return isOwn() && role != std::end(kRoles) ? role : nullptr;
}

COLORREF colorOf(const Role& role) { return isDark() ? role.dark : role.light; }

}  // namespace

Look decide(Brightness wanted, const SystemState& system) {
  if (system.highContrast) return Look::System;
  const bool dark = wanted == Brightness::Dark ||
                    (wanted == Brightness::System && (system.darkColors || system.darkApps));
  if (dark) return Look::Dark;
  return system.darkColors ? Look::Light : Look::System;
}

void choose(Brightness wanted) {
  state().wanted = wanted;
  update();
}

void update() {
  State& now = state();
  const SystemState system{.highContrast = contrastIsHigh(),
                           .darkColors = isDarkGround(GetSysColor(COLOR_WINDOW)),
                           .darkApps = appsAreDark()};
  const Look look = decide(now.wanted, system);
  const bool dark = look == Look::System ? system.darkColors : look == Look::Dark;
  const bool same = look == now.look && dark == now.dark && system.highContrast == now.highContrast;
  if (same) return;
  now.look = look;
  now.dark = dark;
  now.highContrast = system.highContrast;
  ++now.version;
  for (UniqueBrush& brush : now.brushes) brush.reset();
}

unsigned version() { return state().version; }

bool isOwn() { return state().look != Look::System; }

bool isDark() { return state().dark; }

bool isHighContrast() { return state().highContrast; }

COLORREF color(int index) {
  const Role* const role = roleOf(index);
  return role != nullptr ? colorOf(*role) : GetSysColor(index);
}

HBRUSH brush(int index) {
  const Role* const role = roleOf(index);
  if (role == nullptr) return GetSysColorBrush(index);
  UniqueBrush& brush = state().brushes[role - kRoles];
  if (!brush) brush.reset(CreateSolidBrush(colorOf(*role)));
  return brush.get();
}

HBRUSH controlColors(UINT message, HDC dc) {
  if (!isOwn()) return nullptr;
  const bool field = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
  const int ground = field ? COLOR_WINDOW : COLOR_BTNFACE;
  SetBkColor(dc, color(ground));
  SetTextColor(dc, color(COLOR_WINDOWTEXT));
  return brush(ground);
}

void dressFrame(HWND window) {
  constexpr DWORD kUseImmersiveDarkMode = 20;  // DWMWA_USE_IMMERSIVE_DARK_MODE
  using SetAttribute = HRESULT(WINAPI*)(HWND, DWORD, const void*, DWORD);
  static const auto setAttribute = [] {
    HMODULE library = LoadLibraryExW(L"dwmapi.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    FARPROC address =
        library != nullptr ? GetProcAddress(library, "DwmSetWindowAttribute") : nullptr;
    return reinterpret_cast<SetAttribute>(reinterpret_cast<void*>(address));
  }();
  const BOOL dark = isDark() && !isHighContrast();
  if (setAttribute != nullptr) setAttribute(window, kUseImmersiveDarkMode, &dark, sizeof dark);
}

// The system has dark scroll bars and marks under this name. Where it has not, the control looks
// as before.
void dress(HWND control) {
  const bool dark = isOwn() && isDark();
  SetWindowTheme(control, dark ? L"DarkMode_Explorer" : nullptr, nullptr);
}

// The system's themes of them know no other colours.
void dressTips(HWND tips) {
  SetWindowTheme(tips, isOwn() ? L"" : nullptr, isOwn() ? L"" : nullptr);
  SendMessageW(tips, TTM_SETTIPBKCOLOR, color(COLOR_INFOBK), 0);
  SendMessageW(tips, TTM_SETTIPTEXTCOLOR, color(COLOR_INFOTEXT), 0);
}

}  // namespace tintline::theme
