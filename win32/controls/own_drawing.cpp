// See own_drawing.h. Tested by tests/win32/controls/theme_test.cpp.
#include "win32/controls/own_drawing.h"

#include <uxtheme.h>
#include <vssym32.h>

#include <algorithm>
#include <string>

#include "win32/controls/fonts.h"
#include "win32/controls/gdi.h"
#include "win32/controls/theme.h"
#include "win32/controls/window.h"

namespace tintline::own_drawing {
namespace {

using UniqueTheme = UniqueHandle<HTHEME, CloseThemeData>;

HFONT fontOf(HWND control) {
  return reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
}

int pixels(HWND control, int size) { return scaled(size, GetDpiForWindow(control)); }

LRESULT uiState(HWND control) { return SendMessageW(control, WM_QUERYUISTATE, 0, 0); }

RECT clientOf(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  return area;
}

// A box with an edge of that many pixels.
void drawBox(HDC dc, RECT area, int ground, int edge, int width) {
  FillRect(dc, &area, theme::brush(edge));
  InflateRect(&area, -width, -width);
  FillRect(dc, &area, theme::brush(ground));
}

// In the colours of the control's state; with its access key while the user goes by keys.
void drawCaption(HDC dc, HWND control, RECT area, UINT format) {
  const Selected font(dc, fontOf(control));
  const std::wstring text = windowText(control);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, theme::color(IsWindowEnabled(control) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  if ((uiState(control) & UISF_HIDEACCEL) != 0) format |= DT_HIDEPREFIX;
  DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area, format | DT_SINGLELINE);
}

void drawFocus(HDC dc, HWND control, const RECT& area) {
  if (GetFocus() != control || (uiState(control) & UISF_HIDEFOCUS) != 0) return;
  SetBkColor(dc, RGB(0, 0, 0));
  SetTextColor(dc, RGB(255, 255, 255));
  DrawFocusRect(dc, &area);
}

void drawPushButton(HDC dc, HWND button, bool isDefault, LRESULT state) {
  RECT area = clientOf(button);
  const bool enabled = IsWindowEnabled(button) != FALSE;
  const bool pressed = (state & BST_PUSHED) != 0, hot = (state & BST_HOT) != 0;
  const bool marked = enabled && (isDefault || (state & BST_FOCUS) != 0);
  const int edge = pixels(button, 1);
  FillRect(dc, &area, theme::brush(COLOR_BTNFACE));
  InflateRect(&area, -edge, -edge);
  drawBox(dc, area,
          !enabled || pressed ? COLOR_BTNFACE
          : hot               ? COLOR_3DLIGHT
                              : COLOR_BTNHIGHLIGHT,
          marked ? COLOR_HOTLIGHT : COLOR_BTNSHADOW, edge);
  drawCaption(dc, button, area, DT_CENTER | DT_VCENTER);
  InflateRect(&area, -2 * edge, -2 * edge);
  drawFocus(dc, button, area);
}

// The mark of a check box or option, as the system draws it.
void drawMark(HDC dc, HWND button, const RECT& area, bool option, LRESULT state) {
  const bool checked = (state & BST_CHECKED) != 0, enabled = IsWindowEnabled(button) != FALSE;
  const UniqueTheme theme(OpenThemeData(button, WC_BUTTONW));
  if (!theme) {
    RECT place = area;
    DrawFrameControl(dc, &place, DFC_BUTTON,
                     (option ? DFCS_BUTTONRADIO : DFCS_BUTTONCHECK) |
                         (checked ? DFCS_CHECKED : 0U) | (enabled ? 0U : DFCS_INACTIVE));
    return;
  }
  // Both have the same states: normal, hot, pressed, disabled, and then those with a mark.
  const int look = !enabled                    ? RBS_UNCHECKEDDISABLED
                   : (state & BST_PUSHED) != 0 ? RBS_UNCHECKEDPRESSED
                   : (state & BST_HOT) != 0    ? RBS_UNCHECKEDHOT
                                               : RBS_UNCHECKEDNORMAL;
  constexpr int kWithMark = RBS_CHECKEDNORMAL - RBS_UNCHECKEDNORMAL;
  DrawThemeBackground(theme.get(), dc, option ? BP_RADIOBUTTON : BP_CHECKBOX,
                      look + (checked ? kWithMark : 0), &area, nullptr);
}

void drawToggle(HDC dc, HWND button, bool option, LRESULT state) {
  const RECT area = clientOf(button);
  FillRect(dc, &area, theme::brush(COLOR_BTNFACE));
  const LONG size = pixels(button, 13), top = (area.bottom - size) / 2;
  drawMark(dc, button, {0, top, size, top + size}, option, state);
  RECT text = area;
  text.left += size + pixels(button, 5);
  drawCaption(dc, button, text, DT_LEFT | DT_VCENTER);
  const Selected font(dc, fontOf(button));
  const SIZE extent = textSize(fontOf(button), windowText(button));
  text.left -= pixels(button, 2);
  text.right = std::min(area.right, text.left + extent.cx + pixels(button, 4));
  InflateRect(&text, 0, -static_cast<int>(std::max<LONG>(0, (area.bottom - extent.cy) / 2 - 1)));
  drawFocus(dc, button, text);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                           DWORD_PTR data) {
  const bool paints = message == WM_PAINT || message == WM_PRINTCLIENT;
  if (!paints || !theme::isOwn()) return DefSubclassProc(window, message, wParam, lParam);
  const auto draw = reinterpret_cast<Draw>(data);
  if (message == WM_PRINTCLIENT) {
    draw(window, reinterpret_cast<HDC>(wParam));
  } else {
    PAINTSTRUCT paint{};
    draw(window, BeginPaint(window, &paint));
    EndPaint(window, &paint);
  }
  return 0;
}

// A thin line, and the control's ground inside of it.
LRESULT CALLBACK edgeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR) {
  const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
  if (message != WM_NCPAINT || !theme::isOwn()) return result;
  const FrameDc dc(window);
  RECT edge{};
  GetWindowRect(window, &edge);
  OffsetRect(&edge, static_cast<int>(-edge.left), static_cast<int>(-edge.top));
  FrameRect(dc, &edge, theme::brush(COLOR_BTNSHADOW));
  for (int i = 1; i < GetSystemMetrics(SM_CXEDGE); ++i) {
    InflateRect(&edge, -1, -1);
    FrameRect(dc, &edge, theme::brush(COLOR_WINDOW));
  }
  return result;
}

}  // namespace

LRESULT drawButton(const NMCUSTOMDRAW& drawn) {
  if (drawn.dwDrawStage != CDDS_PREPAINT) return CDRF_DODEFAULT;
  HWND button = drawn.hdr.hwndFrom;
  const LONG type = GetWindowLongW(button, GWL_STYLE) & BS_TYPEMASK;
  const LRESULT state = SendMessageW(button, BM_GETSTATE, 0, 0);
  if (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON)
    drawPushButton(drawn.hdc, button, type == BS_DEFPUSHBUTTON, state);
  else
    drawToggle(drawn.hdc, button, type == BS_AUTORADIOBUTTON, state);
  return CDRF_SKIPDEFAULT;
}

LRESULT drawToolBar(NMTBCUSTOMDRAW& drawn) {
  if (drawn.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawn.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const UINT state = drawn.nmcd.uItemState;
  const int edge = pixels(drawn.nmcd.hdr.hwndFrom, 1);
  if ((state & (CDIS_SELECTED | CDIS_CHECKED)) != 0)
    drawBox(drawn.nmcd.hdc, drawn.nmcd.rc, COLOR_BTNHIGHLIGHT, COLOR_HOTLIGHT, edge);
  else if ((state & CDIS_HOT) != 0)
    drawBox(drawn.nmcd.hdc, drawn.nmcd.rc, COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW, edge);
  return TBCDRF_NOBACKGROUND | TBCDRF_NOEDGES | TBCDRF_NOOFFSET;
}

void drawFrame(HWND frame, HDC dc) {
  const RECT area = clientOf(frame);
  FillRect(dc, &area, theme::brush(COLOR_BTNFACE));
  const std::wstring text = windowText(frame);
  const SIZE extent = textSize(fontOf(frame), text);
  RECT box = area;
  box.top += extent.cy / 2;
  FrameRect(dc, &box, theme::brush(COLOR_BTNSHADOW));
  if (text.empty()) return;
  RECT caption{pixels(frame, 7), 0, 0, extent.cy};
  caption.right = caption.left + extent.cx + pixels(frame, 4);
  FillRect(dc, &caption, theme::brush(COLOR_BTNFACE));
  drawCaption(dc, frame, caption, DT_CENTER);
}

void drawCombo(HWND combo, HDC dc) {
  const RECT area = clientOf(combo);
  drawBox(dc, area, COLOR_BTNHIGHLIGHT, GetFocus() == combo ? COLOR_HOTLIGHT : COLOR_BTNSHADOW,
          pixels(combo, 1));
  RECT text = area;
  text.left += pixels(combo, 5);
  text.right -= pixels(combo, 20);
  drawCaption(dc, combo, text, DT_LEFT | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  const int size = pixels(combo, 4), x = static_cast<int>(area.right) - pixels(combo, 11),
            y = static_cast<int>(area.bottom) / 2;
  const POINT arrow[] = {{x - size, y - size / 2}, {x, y + size / 2}, {x + size, y - size / 2}};
  const UniquePen pen(
      CreatePen(PS_SOLID, pixels(combo, 1),
                theme::color(IsWindowEnabled(combo) ? COLOR_BTNTEXT : COLOR_GRAYTEXT)));
  const Selected selected(dc, pen.get());
  Polyline(dc, arrow, 3);
}

void drawProgress(HWND progress, HDC dc) {
  const auto all = static_cast<int>(SendMessageW(progress, PBM_GETRANGE, FALSE, 0));
  const auto done = static_cast<int>(SendMessageW(progress, PBM_GETPOS, 0, 0));
  RECT area = clientOf(progress);
  drawBox(dc, area, COLOR_WINDOW, COLOR_BTNSHADOW, 1);
  InflateRect(&area, -1, -1);
  area.right = area.left + MulDiv(static_cast<int>(area.right - area.left), done, std::max(all, 1));
  FillRect(dc, &area, theme::brush(COLOR_HOTLIGHT));
}

void drawEdge(HWND control) { SetWindowSubclass(control, edgeProcedure, 0, 0); }

void drawInstead(HWND control, Draw draw) {
  SetWindowSubclass(control, procedure, 0, reinterpret_cast<DWORD_PTR>(draw));
}

}  // namespace tintline::own_drawing
