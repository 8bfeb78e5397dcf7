// See tool_tips.h.
#include "win32/controls/tool_tips.h"

#include <commctrl.h>

#include "win32/controls/fonts.h"
#include "win32/controls/theme.h"

namespace tintline {

void ToolTips::create(HWND owner) {
  owner_ = owner;
  tips_.reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                              WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                              GetModuleHandleW(nullptr), nullptr));
}

void ToolTips::set(HWND control, const std::wstring& text) {
  std::wstring shown = text;
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = owner_;
  tool.uId = reinterpret_cast<UINT_PTR>(control);
  tool.lpszText = shown.data();
  SendMessageW(tips_.get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  if (!text.empty()) SendMessageW(tips_.get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::followTheme() { theme::dressTips(tips_.get()); }

void ToolTips::setFont(HFONT font) {
  const LONG width = textSize(font, std::wstring(70, L'n')).cx;
  SendMessageW(tips_.get(), WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
  SendMessageW(tips_.get(), TTM_SETMAXTIPWIDTH, 0, width);
}

}  // namespace tintline
