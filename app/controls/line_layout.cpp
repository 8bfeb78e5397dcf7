// See line_layout.h. Tested by tests/unit/app/controls_test.cpp.
#include "app/controls/line_layout.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace tintline {
namespace {

struct Range {
  std::uint32_t first, last;
};
constexpr Range kWide[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x4DBF},  {0x4E00, 0xA4CF}, {0xA960, 0xA97C},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},  {0xFF01, 0xFF60}, {0xFFE0, 0xFFE6},
    {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

bool isWide(std::uint32_t character) {
  const auto* const behind = std::ranges::upper_bound(kWide, character, {}, &Range::first);
  return behind != std::begin(kWide) && character <= std::prev(behind)->last;
}

// The columns of a unit. Of a pair of two units, both have one.
std::size_t widthOf(wchar_t unit) {
  const auto character = static_cast<std::uint32_t>(unit);
  return character >= kWide[0].first && isWide(character) ? 2 : 1;
}

}  // namespace

LineLayout layOutLine(std::wstring_view line) {
  LineLayout layout{std::wstring(line), {}};
  layout.columns.reserve(line.size() + 1);
  std::size_t column = 0;
  for (wchar_t& unit : layout.text) {
    layout.columns.push_back(column);
    column += unit == L'\t' ? kTabStop - column % kTabStop : widthOf(unit);
    if (unit == L'\t') unit = L' ';
  }
  layout.columns.push_back(column);
  return layout;
}

}  // namespace tintline
