// See opening_place.h. Tested by tests/win32/controls/layout_test.cpp.
#include "win32/controls/opening_place.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace tintline {
namespace {

// At `left` and `top`, moved into the work area.
RECT inside(const RECT& work, LONG left, LONG top, LONG width, LONG height) {
  left = std::max(work.left, std::min(left, work.right - width));
  top = std::max(work.top, std::min(top, work.bottom - height));
  return {left, top, left + width, top + height};
}

}  // namespace

RECT openingPlace(const RECT& wanted, const RECT& work, const std::vector<RECT>& others, int step) {
  const LONG width = std::min(wanted.right - wanted.left, work.right - work.left);
  const LONG height = std::min(wanted.bottom - wanted.top, work.bottom - work.top);
  RECT place = inside(work, wanted.left, wanted.top, width, height);
  const auto covers = [&](const RECT& other) {
    return std::abs(other.left - place.left) < step && std::abs(other.top - place.top) < step;
  };
  for (std::size_t tries = 0; tries <= others.size(); ++tries) {
    if (std::ranges::none_of(others, covers)) break;
    const RECT next = inside(work, place.left + step, place.top + step, width, height);
    const bool stuck = next.left < place.left + step && next.top < place.top + step;
    place = stuck ? inside(work, work.left, work.top, width, height) : next;
  }
  return place;
}

std::vector<RECT> placesOfOthers(HWND window, const wchar_t* className) {
  struct Search {
    HWND but;
    std::wstring_view className;
    std::vector<RECT> found;
  } search{window, className, {}};
  const auto visit = [](HWND other, LPARAM parameter) -> BOOL {
    auto& wanted = *reinterpret_cast<Search*>(parameter);
    wchar_t name[64] = L"";
    GetClassNameW(other, name, 64);
    RECT place{};
    if (other != wanted.but && name == wanted.className && IsWindowVisible(other) &&
        GetWindowRect(other, &place))
      wanted.found.push_back(place);
    return TRUE;
  };
  EnumWindows(visit, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace tintline
