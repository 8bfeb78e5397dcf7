// See status_line.h. Tested by tests/win32/controls/layout_test.cpp.
#include "win32/controls/status_line.h"

#include <algorithm>
#include <numeric>

#include "app/controls/selection_colors.h"
#include "win32/controls/accessible.h"
#include "win32/controls/fonts.h"
#include "win32/controls/gdi.h"
#include "win32/controls/theme.h"

namespace tintline {
namespace {

constexpr std::wstring_view kEllipsis = L"…";

// How much of the text's end says most.
std::size_t endThatCounts(const std::wstring& text) {
  std::size_t begin = 0;
  for (const std::wstring_view behind : {L"\\", L": "})
    if (const std::size_t found = text.rfind(behind); found != std::wstring::npos)
      begin = std::max(begin, found);
  return text.size() - begin;
}

// The text with that many characters left, of its beginning and its end.
std::wstring withoutMiddle(const std::wstring& text, std::size_t left) {
  constexpr std::size_t kBeginning = 3;  // that is to be seen before the end gets all it wants
  const std::size_t wanted = endThatCounts(text), half = (left + 1) / 2;
  const std::size_t end = left >= wanted + kBeginning ? std::max(wanted, half) : half;
  return text.substr(0, left - end).append(kEllipsis) + text.substr(text.size() - end);
}

}  // namespace

std::array<int, 3> shareLine(int width, const std::array<int, 3>& needed) {
  const std::array<int, 3> usual = {width / 4, width / 4, width - 2 * (width / 4)};
  const auto fits = [](int need, int place) { return need <= place; };
  if (std::equal(needed.begin(), needed.end(), usual.begin(), fits)) return usual;
  std::array<std::size_t, 3> order = {0, 1, 2};
  std::ranges::sort(order, {}, [&needed](std::size_t i) { return needed[i]; });
  std::array<int, 3> widths{};
  int rest = width, labels = 3;
  for (const std::size_t i : order) {
    widths[i] = std::min(needed[i], rest / labels--);
    rest -= widths[i];
  }
  widths[2] += rest;  // which nobody needs
  return widths;
}

std::wstring shortened(const std::wstring& text,
                       const std::function<bool(const std::wstring&)>& fits) {
  if (fits(text)) return text;
  std::size_t few = 0, many = text.size();  // `few` characters fit, `many` do not
  while (many - few > 1) {
    const std::size_t middle = (few + many) / 2;
    (fits(withoutMiddle(text, middle)) ? few : many) = middle;
  }
  return withoutMiddle(text, few);
}

StatusWidget::StatusWidget(WidgetHost& host, Label& model, int id)
    : LabelWidget(host, model, id, SS_OWNERDRAW | SS_NOPREFIX | SS_NOTIFY) {
  makeAccessibleLink(hwnd(), [this] { return isLink(); });
}

void StatusWidget::setFont(HFONT font, unsigned dpi) {
  LabelWidget::setFont(font, dpi);
  font_ = font;
}

int StatusWidget::needed() const { return static_cast<int>(textSize(font_, model_.Caption()).cx); }

void StatusWidget::draw(const DRAWITEMSTRUCT& item) {
  const Selected selected(item.hDC, font_);
  const COLORREF ground = theme::color(COLOR_BTNFACE), link = theme::color(COLOR_HOTLIGHT);
  const bool inLinkColor = isLink() && contrast(link, ground) >= kTextContrast;
  SetBkColor(item.hDC, ground);
  SetTextColor(item.hDC, inLinkColor ? link : theme::color(COLOR_BTNTEXT));
  SIZE size{};
  const std::wstring text = shortened(model_.Caption(), [&](const std::wstring& part) {
    GetTextExtentPoint32W(item.hDC, part.c_str(), static_cast<int>(part.size()), &size);
    return size.cx <= item.rcItem.right - item.rcItem.left;
  });
  const int top = static_cast<int>(item.rcItem.top + item.rcItem.bottom - size.cy) / 2;
  ExtTextOutW(item.hDC, item.rcItem.left, top, ETO_OPAQUE | ETO_CLIPPED, &item.rcItem, text.c_str(),
              static_cast<UINT>(text.size()), nullptr);
  if (isLink()) underline(item.hDC, item.rcItem, text, top);
  tellWhole(text != model_.Caption());
}

bool StatusWidget::isLink() const { return model_.Click && !model_.Caption().empty(); }

HCURSOR StatusWidget::pointer() const {
  return isLink() ? LoadCursorW(nullptr, IDC_HAND) : nullptr;
}

// As links are known by more than their colour.
void StatusWidget::underline(HDC dc, const RECT& area, const std::wstring& text, int top) {
  SIZE size{};
  GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  const LONG line = top + metrics.tmAscent + 1;
  const RECT stroke{area.left, line, std::min(area.left + size.cx, area.right), line + 1};
  SetBkColor(dc, GetTextColor(dc));
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &stroke, nullptr, 0, nullptr);
}

// A tip of the model's own says the whole already.
void StatusWidget::tellWhole(bool cut) {
  const std::wstring tip = cut && model_.ToolTipText().empty() ? model_.Caption() : L"";
  if (tip_ == tip) return;
  tip_ = tip;
  if (model_.ToolTipText().empty()) host().tips.set(hwnd(), tip);
}

}  // namespace tintline
