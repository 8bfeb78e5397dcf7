// See ListboxHScroll.h. Tested by tests/unit/app/controls_test.cpp.
#include "app/controls/ListboxHScroll.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "app/controls/line_layout.h"
#include "engine/html_lines.h"

namespace tintline {
namespace {

// Of lines in UTF-8 it is at least as many: no character has more columns than bytes.
std::size_t mostColumns(std::string_view line) {
  std::size_t columns = line.find('\t');
  if (columns == std::string_view::npos) return line.size();
  for (const char c : line.substr(columns))
    columns += c == '\t' ? kTabStop - columns % kTabStop : 1;
  return columns;
}

// What lines ask for; the width of the widest character is looked up once.
class LineWidth {
 public:
  LineWidth(TextMeasure& measure, TextEncoding encoding)
      : measure_(measure), encoding_(encoding), widest_(std::max(measure.widestCharacter(), 0)) {}

  // What the line cannot be wider than.
  int bound(std::string_view line) const {
    constexpr int kMost = std::numeric_limits<int>::max();
    const auto columns = static_cast<std::uintmax_t>(mostColumns(line));
    if (widest_ != 0 && columns > static_cast<std::uintmax_t>(kMost / widest_)) return kMost;
    return static_cast<int>(columns) * widest_;
  }

  // What the line asks for.
  int needed(std::string_view line) const {
    return line.size() <= kDirectLength ? bound(line) : measure_.width(toWide(line, encoding_));
  }

 private:
  TextMeasure& measure_;
  TextEncoding encoding_;
  int widest_;
};

[[noreturn]] void refuse(const char* message) {
  throw ListboxError(message, "ListBoxHScroll.AddItem");
}

}  // namespace

ListboxHScroll::ListboxHScroll(ListBox& list, TextMeasure& measure)
    : list_(list), measure_(measure) {}

void ListboxHScroll::AddItem(std::string_view text, std::ptrdiff_t index, Mode mode) {
  const auto count = static_cast<std::ptrdiff_t>(list_.ListCount());
  if (index < -1 || index > count) refuse("there is no such place in the list");
  if (list_.ListCount() >= kMaxLines) refuse("the list is full");
  const auto place = static_cast<std::size_t>(index == -1 ? count : index);
  list_.AddItem(text, place);
  if (mode == kFit) fit();
  if (mode == kGrow)
    setScrollWidth(std::max(ScrollWidth(),
                            LineWidth(measure_, list_.encoding()).needed(list_.lines()[place])));
}

void ListboxHScroll::Clear(TextEncoding encoding) {
  list_.Clear(encoding);
  setScrollWidth(0);
}

int ListboxHScroll::ScrollWidth() const { return list_.HorizontalExtent; }

void ListboxHScroll::setScrollWidth(int pixels) { list_.HorizontalExtent = pixels; }

void ListboxHScroll::fit() {
  const LineList& lines = list_.lines();
  const LineWidth width(measure_, list_.encoding());
  // The longest line comes first: after it, few others may still be wider.
  std::size_t longest = 0;
  for (std::size_t i = 1; i < lines.size(); ++i)
    if (lines[i].size() > lines[longest].size()) longest = i;
  int widest = lines.empty() ? 0 : width.needed(lines[longest]);
  for (std::size_t i = 0; i < lines.size(); ++i)
    if (i != longest && width.bound(lines[i]) > widest)
      widest = std::max(widest, width.needed(lines[i]));
  setScrollWidth(widest);
}

}  // namespace tintline
