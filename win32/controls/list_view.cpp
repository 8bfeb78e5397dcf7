// See list_view.h.
#include "win32/controls/list_view.h"

#include <commctrl.h>
#include <uxtheme.h>

#include <algorithm>
#include <vector>

#include "app/controls/line_layout.h"
#include "app/controls/selection_colors.h"
#include "win32/control_ids.h"
#include "win32/controls/list_accessible.h"
#include "win32/controls/theme.h"

namespace tintline {
namespace {

constexpr DWORD kListStyle = LBS_NODATA | LBS_OWNERDRAWFIXED | LBS_EXTENDEDSEL | LBS_NOTIFY |
                             LBS_NOINTEGRALHEIGHT | WS_HSCROLL | WS_VSCROLL | WS_TABSTOP | WS_GROUP;
constexpr int kMargin = 2;  // pixels at 96 dpi in front of the text

SelectionColors lineColors(bool selected, bool focused) {
  const SelectionColors colors{theme::color(COLOR_WINDOW), theme::color(COLOR_WINDOWTEXT)};
  if (selected && focused)
    return {theme::color(COLOR_HIGHLIGHT), theme::color(COLOR_HIGHLIGHTTEXT)};
  return selected ? unfocusedSelection(colors.back, colors.text) : colors;
}

COLORREF colorRef(listing::Color color) {
  return RGB(color >> 16 & 0xFF, color >> 8 & 0xFF, color & 0xFF);
}

}  // namespace

ListView::ListView(WidgetHost& host, ListBox& model, int id, int designCharacterWidth)
    : Widget(host, model, id, {WC_LISTBOXW, kListStyle, WS_EX_CLIENTEDGE}),
      model_(model),
      designCharacterWidth_(designCharacterWidth) {
  SetWindowSubclass(hwnd(), listProcedure, 0, reinterpret_cast<DWORD_PTR>(this));
  SetWindowTheme(hwnd(), L"Explorer", nullptr);  // scroll bars as in the file manager
  shownLines_ = model.lineVersion() - 1;         // not shown yet
  model.shownPlace = [this] {
    return ListBox::Place{static_cast<std::size_t>(send(LB_GETTOPINDEX)),
                          GetScrollPos(hwnd(), SB_HORZ)};
  };
}

ListView::~ListView() { model_.shownPlace = nullptr; }

void ListView::setFont(HFONT font, unsigned dpi) {
  hintFont_ = font;
  UniqueFont before = std::exchange(font_, listFont(dpi));
  character_ = characterSize(font_.get());
  Widget::setFont(font_.get(), dpi);
  send(LB_SETITEMHEIGHT, 0, character_.height);
  shownExtent_ = -1;
  showExtent();
}

// ------------------------------------------------------------- from the model
void ListView::show() {
  const bool newLines = shownLines_ != model_.lineVersion();
  if (newLines) showLines();
  if (shownInks_ != model_.Inks()) {
    shownInks_ = model_.Inks();
    InvalidateRect(hwnd(), nullptr, FALSE);
  }
  if (std::exchange(shownHint_, model_.Hint()) != model_.Hint() && model_.ListCount() == 0)
    InvalidateRect(hwnd(), nullptr, TRUE);
  showText(spokenName());
  showExtent();  // in front of what scrolls: its bar takes room from the lines
  if (newLines || shownSelection_ != model_.selectionVersion()) showSelection();
  if (std::exchange(shownScroll_, model_.scrollVersion()) != model_.scrollVersion())
    showPlace(model_.wantedPlace());
}

// Nobody sees it. An empty list says what can be done, too.
std::wstring ListView::spokenName() const {
  const bool hint = model_.ListCount() == 0 && !model_.Hint().empty();
  return hint ? model_.AccessibleName + L". " + model_.Hint() : model_.AccessibleName;
}

void ListView::showPlace(ListBox::Place place) {
  constexpr int kMost = 0xFFFF;  // pixels that the message has room for
  send(LB_SETTOPINDEX, place.top);
  if (place.left != GetScrollPos(hwnd(), SB_HORZ) && place.left <= kMost)
    send(WM_HSCROLL, MAKEWPARAM(SB_THUMBPOSITION, place.left));
}

// The place that the user scrolled to stays as long as there are lines there.
void ListView::showLines() {
  shownLines_ = model_.lineVersion();
  const LRESULT top = send(LB_GETTOPINDEX);
  send(WM_SETREDRAW, FALSE);
  send(LB_SETCOUNT, model_.ListCount());
  send(LB_SETTOPINDEX, static_cast<WPARAM>(top));
  send(WM_SETREDRAW, TRUE);
  InvalidateRect(hwnd(), nullptr, FALSE);
  NotifyWinEvent(EVENT_OBJECT_REORDER, hwnd(), OBJID_CLIENT, CHILDID_SELF);
}

void ListView::showSelection() {
  shownSelection_ = model_.selectionVersion();
  const std::vector<bool>& wanted = model_.selection();
  const bool all = model_.SelCount() == wanted.size();
  if (model_.SelCount() != 0 || send(LB_GETSELCOUNT) != 0)
    send(LB_SETSEL, all && !wanted.empty(), -1);
  for (std::size_t i = 0; !all && model_.SelCount() != 0 && i < wanted.size();) {
    if (!wanted[i]) {
      ++i;
      continue;
    }
    const std::size_t first = i;
    while (i < wanted.size() && wanted[i]) ++i;
    send(LB_SELITEMRANGEEX, first, static_cast<LPARAM>(i - 1));
  }
  showCurrent();
}

// The control itself draws its current line, which it brings into view, with the keyboard only.
void ListView::showCurrent() {
  if (model_.ListIndex() == ListBox::kNone) return;
  const LRESULT before = send(LB_GETCARETINDEX);
  send(LB_SETCARETINDEX, static_cast<WPARAM>(model_.ListIndex()), FALSE);
  for (const LRESULT line : {before, send(LB_GETCARETINDEX)}) {
    RECT area{};
    if (line >= 0 &&
        send(LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&area)) != LB_ERR)
      InvalidateRect(hwnd(), &area, FALSE);
  }
}

void ListView::showExtent() {
  if (shownExtent_ == model_.HorizontalExtent) return;
  shownExtent_ = model_.HorizontalExtent;
  const int here = MulDiv(shownExtent_, character_.width, designCharacterWidth_);
  send(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(here));
}

// ---------------------------------------------------------------- to the model
void ListView::command(WORD code) {
  if (code == LBN_SELCHANGE || code == LBN_SELCANCEL) userSelected();
  if (code == LBN_DBLCLK && model_.DblClick) model_.DblClick();
  if ((code == LBN_SETFOCUS || code == LBN_KILLFOCUS) && focused) focused(code == LBN_SETFOCUS);
}

void ListView::userSelected() {
  std::vector<int> items(static_cast<std::size_t>(std::max<LRESULT>(send(LB_GETSELCOUNT), 0)));
  if (!items.empty()) send(LB_GETSELITEMS, items.size(), reinterpret_cast<LPARAM>(items.data()));
  std::vector<bool> selection(model_.ListCount());
  for (const int item : items)
    if (static_cast<std::size_t>(item) < selection.size())
      selection[static_cast<std::size_t>(item)] = true;
  model_.userSelected(std::move(selection), send(LB_GETCARETINDEX));
}

// A menu is about something: a line that is not selected is selected first.
void ListView::rightPressed(LPARAM place) {
  SetFocus(hwnd());
  const auto line = static_cast<std::size_t>(send(LB_GETTOPINDEX)) +
                    static_cast<std::size_t>(HIWORD(place) / character_.height);
  if (line >= model_.ListCount() || model_.Selected(line)) return;
  send(LB_SETSEL, FALSE, -1);
  send(LB_SETSEL, TRUE, static_cast<LPARAM>(line));
  send(LB_SETCARETINDEX, line, FALSE);
  userSelected();
}

// -------------------------------------------------------------------- drawing
void ListView::draw(const DRAWITEMSTRUCT& item) {
  if (static_cast<std::size_t>(item.itemID) >= model_.ListCount()) return;
  drawLine(item);
  if (isCurrent(item)) DrawFocusRect(item.hDC, &item.rcItem);
}

// Without the keyboard, too: it may be the partner of a line in the other list.
bool ListView::isCurrent(const DRAWITEMSTRUCT& item) const {
  constexpr UINT kFocused = ODS_FOCUS | ODS_NOFOCUSRECT;
  if (GetFocus() == hwnd()) return (item.itemState & kFocused) == ODS_FOCUS;
  return static_cast<std::ptrdiff_t>(item.itemID) == model_.ListIndex();
}

// Each part is drawn with its background in one call, so nothing flickers; of a long line only
// what shows is drawn.
void ListView::drawLine(const DRAWITEMSTRUCT& item) const {
  const Selected font(item.hDC, font_.get());
  const LineLayout line = layOutLine(model_.text(item.itemID));
  const int left = static_cast<int>(item.rcItem.left) + kMargin;
  RECT seen{};
  GetClipBox(item.hDC, &seen);
  const auto unitAt = [&](LONG x) {  // the first unit behind the column that is there
    const auto column = static_cast<std::size_t>(std::max<LONG>(0, x - left)) /
                        static_cast<std::size_t>(character_.width);
    return static_cast<std::size_t>(std::ranges::upper_bound(line.columns, column) -
                                    line.columns.begin());
  };
  const std::size_t end = std::min(unitAt(seen.right), line.text.size());
  std::size_t from = std::min(std::max<std::size_t>(unitAt(seen.left), 1) - 1, end);
  RECT area = item.rcItem;
  std::vector<int> widths;
  const auto draw = [&](std::size_t to, bool last) {
    widths.clear();
    for (std::size_t i = from; i < to; ++i)
      widths.push_back(static_cast<int>(line.columns[i + 1] - line.columns[i]) * character_.width);
    const int place = left + static_cast<int>(line.columns[from]) * character_.width;
    area.right =
        last ? item.rcItem.right : left + static_cast<LONG>(line.columns[to]) * character_.width;
    ExtTextOutW(item.hDC, place, static_cast<int>(item.rcItem.top), ETO_OPAQUE | ETO_CLIPPED, &area,
                line.text.data() + from, static_cast<UINT>(widths.size()), widths.data());
    area.left = area.right;
    from = to;
  };
  const LineInks plain, &inks = setColors(item) ? model_.Inks() : plain;
  const COLORREF text = GetTextColor(item.hDC);
  const listing::Palette& palette = theme::isDark() ? inks.dark : inks.light;
  for (const InkedPart& part : inkedParts(line.text, inks)) {
    if (part.end <= from && part.end < end) continue;
    SetTextColor(item.hDC,
                 part.tint ? colorRef(palette[static_cast<std::size_t>(*part.tint)]) : text);
    draw(std::min(part.end, end), part.end >= end);
    if (from >= end) return;
  }
  draw(end, true);  // an empty line
}

// The colours of a line as a whole; whether its parts have others.
bool ListView::setColors(const DRAWITEMSTRUCT& item) const {
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  const bool disabled = (item.itemState & ODS_DISABLED) != 0;
  const SelectionColors colors = lineColors(selected, GetFocus() == hwnd());
  SetBkColor(item.hDC, colors.back);
  SetTextColor(item.hDC, disabled ? theme::color(COLOR_GRAYTEXT) : colors.text);
  return !selected && !disabled && !theme::isHighContrast();
}

// In the middle of the empty list, over as many lines as it takes.
void ListView::drawHint() const {
  const WindowDc dc(hwnd());
  const Selected font(dc, hintFont_);
  RECT room{}, text{};
  GetClientRect(hwnd(), &room);
  InflateRect(&room, -character_.width, -character_.height / 2);
  text = room;
  constexpr UINT kFormat = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;
  const std::wstring& hint = model_.Hint();
  const auto length = static_cast<int>(hint.size());
  DrawTextW(dc, hint.c_str(), length, &text, kFormat | DT_CALCRECT);
  room.top += std::max<LONG>(0, (room.bottom - room.top - (text.bottom - text.top)) / 2);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, theme::color(COLOR_GRAYTEXT));
  DrawTextW(dc, hint.c_str(), length, &room, kFormat);
}

// ------------------------------------------------------- for who reads the list
LRESULT ListView::copyLine(std::size_t index, char* buffer) const {
  if (index >= model_.ListCount()) return LB_ERR;
  const std::string_view line = model_.lines()[index];
  if (buffer != nullptr) buffer[line.copy(buffer, line.size())] = '\0';
  return static_cast<LRESULT>(line.size());
}

LRESULT ListView::copyText(std::size_t index, wchar_t* buffer) const {
  if (index >= model_.ListCount()) return LB_ERR;
  const std::wstring line = model_.text(index);
  if (buffer != nullptr) buffer[line.copy(buffer, line.size())] = L'\0';
  return static_cast<LRESULT>(line.size());
}

LRESULT CALLBACK ListView::listProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR, DWORD_PTR self) {
  auto& list = *reinterpret_cast<ListView*>(self);
  if (Accessible::isAskedFor(message, lParam))
    return Accessible::answer<ListAccessible>(wParam, window);
  switch (message) {
    case WM_RBUTTONDOWN:
      list.rightPressed(lParam);
      break;
    case kGetLine:
      return list.copyLine(wParam, reinterpret_cast<char*>(lParam));
    case LB_GETTEXTLEN:
      return list.copyText(wParam, nullptr);
    case LB_GETTEXT:
      return list.copyText(wParam, reinterpret_cast<wchar_t*>(lParam));
    case WM_PAINT: {
      const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
      if (list.model_.ListCount() == 0 && !list.model_.Hint().empty()) list.drawHint();
      return result;
    }
    default:
      break;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace tintline
