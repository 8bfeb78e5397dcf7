// See menu_drawing.h. Tested by tests/win32/controls/theme_test.cpp.
#include "win32/forms/menu_drawing.h"

#include <algorithm>
#include <string>

#include "win32/controls/fonts.h"
#include "win32/controls/gdi.h"
#include "win32/controls/theme.h"

namespace tintline {
namespace {

constexpr int kMarkWidth = 24, kGap = 28, kArrowWidth = 18, kRowAround = 8, kLineHeight = 7;
constexpr int kBarAround = 2;  // beside what the system leaves around the captions of a bar

// (Not that of the C library, which knows no umlauts.)
wchar_t lower(wchar_t letter) {
  CharLowerBuffW(&letter, 1);
  return letter;
}

// What is behind the first single "&", in lower case; 0 for none.
wchar_t accessKeyOf(const std::wstring& text) {
  for (std::size_t i = 0; i + 1 < text.size(); ++i)
    if (text[i] == L'&' && text[++i] != L'&') return lower(text[i]);
  return 0;
}

UniqueFont menuFont(unsigned dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
  return UniqueFont(CreateFontIndirectW(&metrics.lfMenuFont));
}

int textWidth(HDC dc, const std::wstring& text) {
  RECT area{};
  DrawTextW(dc, text.c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
  return static_cast<int>(area.right);
}

bool isBar(HWND window, HMENU menu) { return GetMenu(window) == menu; }

// A check mark or a dot, in the middle.
void drawMark(HDC dc, const RECT& area, unsigned dpi, bool dot) {
  const auto x = static_cast<int>(area.left + area.right) / 2;
  const auto y = static_cast<int>(area.top + area.bottom) / 2;
  const auto px = [dpi](int size) { return scaled(size, dpi); };
  const UniquePen pen(CreatePen(PS_SOLID, px(2), GetTextColor(dc)));
  const Selected selected(dc, pen.get());
  if (dot) {
    const Selected filled(dc, GetStockObject(DC_BRUSH));
    SetDCBrushColor(dc, GetTextColor(dc));
    Ellipse(dc, x - px(3), y - px(3), x + px(3), y + px(3));
  } else {
    const POINT hook[] = {{x - px(4), y}, {x - px(1), y + px(3)}, {x + px(4), y - px(3)}};
    Polyline(dc, hook, 3);
  }
}

void drawArrow(HDC dc, const RECT& row, unsigned dpi) {
  const int size = scaled(4, dpi), x = static_cast<int>(row.right) - scaled(kArrowWidth / 2, dpi);
  const auto y = static_cast<int>(row.top + row.bottom) / 2;
  const UniquePen pen(CreatePen(PS_SOLID, scaled(1, dpi), GetTextColor(dc)));
  const Selected selected(dc, pen.get());
  const POINT arrow[] = {{x - size / 2, y - size}, {x + size / 2, y}, {x - size / 2, y + size}};
  Polyline(dc, arrow, 3);
}

// The ground of an entry, and the colour of its text.
void setColors(const DRAWITEMSTRUCT& item) {
  const bool enabled = (item.itemState & (ODS_GRAYED | ODS_DISABLED)) == 0;
  const bool marked = (item.itemState & (ODS_SELECTED | ODS_HOTLIGHT)) != 0 && enabled;
  FillRect(item.hDC, &item.rcItem, theme::brush(marked ? COLOR_HIGHLIGHT : COLOR_MENU));
  SetTextColor(item.hDC, theme::color(!enabled ? COLOR_GRAYTEXT
                                      : marked ? COLOR_HIGHLIGHTTEXT
                                               : COLOR_MENUTEXT));
  SetBkMode(item.hDC, TRANSPARENT);
}

void setGround(HMENU menu, HBRUSH brush) {
  MENUINFO ground{};
  ground.cbSize = sizeof ground;
  ground.fMask = MIM_BACKGROUND;
  ground.hbrBack = brush;
  SetMenuInfo(menu, &ground);
}

void drawLine(HDC dc, const RECT& row, unsigned dpi) {
  const LONG middle = (row.top + row.bottom) / 2;
  const RECT line{row.left + scaled(kMarkWidth, dpi), middle, row.right, middle + scaled(1, dpi)};
  FillRect(dc, &row, theme::brush(COLOR_MENU));
  FillRect(dc, &line, theme::brush(COLOR_3DLIGHT));
}

}  // namespace

MenuDrawing::Entry MenuDrawing::readEntry(HMENU menu, UINT place) {
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_STRING | MIIM_FTYPE | MIIM_SUBMENU;
  GetMenuItemInfoW(menu, place, TRUE, &info);
  std::wstring text(static_cast<std::size_t>(++info.cch), L'\0');
  info.dwTypeData = text.data();
  GetMenuItemInfoW(menu, place, TRUE, &info);
  text.resize(info.cch);
  const std::size_t tab = std::min(text.find(L'\t'), text.size());
  return {.accessible = {},
          .menu = menu,
          .type = info.fType,
          .opensMenu = info.hSubMenu != nullptr,
          .text = text.substr(0, tab),
          .keys = text.substr(std::min(tab + 1, text.size()))};
}

void MenuDrawing::setEntry(HMENU menu, UINT place, UINT type, const Entry* entry) {
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE | MIIM_DATA;
  info.fType = type;
  info.dwItemData = reinterpret_cast<ULONG_PTR>(entry);
  SetMenuItemInfoW(menu, place, TRUE, &info);
}

void MenuDrawing::dress(HMENU menu) {
  undress(menu);
  if (!theme::isOwn()) return;
  setGround(menu, theme::brush(COLOR_MENU));
  std::vector<Entry>& entries = dressed_[menu];
  const auto count = static_cast<UINT>(std::max(GetMenuItemCount(menu), 0));
  for (UINT place = 0; place < count; ++place) entries.push_back(readEntry(menu, place));
  for (UINT place = 0; place < count; ++place) {
    Entry& entry = entries[place];
    entry.accessible = {MSAA_MENU_SIG, static_cast<DWORD>(entry.text.size()), entry.text.data()};
    setEntry(menu, place, entry.type | MFT_OWNERDRAW, &entry);
  }
}

void MenuDrawing::undress(HMENU menu) {
  const auto found = dressed_.find(menu);
  if (found == dressed_.end()) return;
  setGround(menu, nullptr);
  for (UINT place = 0; place < found->second.size(); ++place)
    setEntry(menu, place, found->second[place].type, nullptr);
  dressed_.erase(found);
}

void MenuDrawing::measure(HWND window, MEASUREITEMSTRUCT& item) {
  const auto& entry = *reinterpret_cast<const Entry*>(item.itemData);
  const unsigned dpi = GetDpiForWindow(window);
  const UniqueFont font = menuFont(dpi);
  const auto px = [dpi](int size) { return scaled(size, dpi); };
  const WindowDc dc(window);
  const Selected selected(dc, font.get());
  const auto line = static_cast<int>(textSize(font.get(), L"Ag").cy);
  int width = textWidth(dc, entry.text), height = line + px(kRowAround);
  if (isBar(window, entry.menu)) {
    width += px(kBarAround);
  } else {
    width += px(kMarkWidth + kArrowWidth);
    if (!entry.keys.empty()) width += px(kGap) + textWidth(dc, entry.keys);
    if ((entry.type & MFT_SEPARATOR) != 0) height = px(kLineHeight);
  }
  item.itemWidth = static_cast<UINT>(width);
  item.itemHeight = static_cast<UINT>(height);
}

void MenuDrawing::draw(HWND window, const DRAWITEMSTRUCT& item) {
  const auto& entry = *reinterpret_cast<const Entry*>(item.itemData);
  const unsigned dpi = GetDpiForWindow(window);
  if ((entry.type & MFT_SEPARATOR) != 0) return drawLine(item.hDC, item.rcItem, dpi);
  const UniqueFont font = menuFont(dpi);
  const Selected selected(item.hDC, font.get());
  setColors(item);
  const UINT format =
      DT_SINGLELINE | DT_VCENTER | ((item.itemState & ODS_NOACCEL) != 0 ? DT_HIDEPREFIX : 0U);
  RECT area = item.rcItem;
  if (isBar(window, entry.menu)) {
    DrawTextW(item.hDC, entry.text.c_str(), -1, &area, format | DT_CENTER);
    return;
  }
  area.right = area.left + scaled(kMarkWidth, dpi);
  if ((item.itemState & ODS_CHECKED) != 0)
    drawMark(item.hDC, area, dpi, (entry.type & MFT_RADIOCHECK) != 0);
  area = {area.right, area.top, item.rcItem.right - scaled(kArrowWidth, dpi), area.bottom};
  DrawTextW(item.hDC, entry.text.c_str(), -1, &area, format);
  DrawTextW(item.hDC, entry.keys.c_str(), -1, &area, format | DT_RIGHT);
  if (!entry.opensMenu) return;
  drawArrow(item.hDC, item.rcItem, dpi);
  ExcludeClipRect(item.hDC, static_cast<int>(item.rcItem.left), static_cast<int>(item.rcItem.top),
                  static_cast<int>(item.rcItem.right),
                  static_cast<int>(item.rcItem.bottom));  // from the system's own arrow
}

LRESULT MenuDrawing::entryOf(HMENU menu, wchar_t accessKey) const {
  const auto found = dressed_.find(menu);
  if (found == dressed_.end()) return MAKELRESULT(0, MNC_IGNORE);
  const auto& entries = found->second;
  const auto entry = std::ranges::find(entries, lower(accessKey),
                                       [](const Entry& known) { return accessKeyOf(known.text); });
  return entry == entries.end() ? MAKELRESULT(0, MNC_IGNORE)
                                : MAKELRESULT(entry - entries.begin(), MNC_EXECUTE);
}

// Beside the last entry, and the line below.
void MenuDrawing::paintRestOfBar(HWND window) {
  MENUBARINFO bar{};
  bar.cbSize = sizeof bar;
  RECT frame{}, last{};
  HMENU menu = GetMenu(window);
  if (!theme::isOwn() || !GetMenuBarInfo(window, OBJID_MENU, 0, &bar) ||
      !GetWindowRect(window, &frame) ||
      !GetMenuItemRect(window, menu, static_cast<UINT>(GetMenuItemCount(menu) - 1), &last))
    return;
  RECT rest = bar.rcBar, line = bar.rcBar;
  rest.left = last.right;
  line.top = line.bottom;
  line.bottom += 1;
  const FrameDc dc(window);
  for (RECT* const area : {&rest, &line}) {
    OffsetRect(area, static_cast<int>(-frame.left), static_cast<int>(-frame.top));
    FillRect(dc, area, theme::brush(COLOR_MENU));
  }
}

}  // namespace tintline
