// Where a window opens: on a screen that is there, and beside others of its kind.
//
// Tested by tests/win32/controls/layout_test.cpp.
#pragma once

#include <windows.h>

#include <vector>

namespace tintline {

// As near to `wanted` as it goes inside the work area of its screen; `step` pixels to the right and
// down from each of the others that stands there already, and from the corner again where there is
// no more room.
RECT openingPlace(const RECT& wanted, const RECT& work, const std::vector<RECT>& others, int step);

// The windows of that class on the screen but for one.
std::vector<RECT> placesOfOthers(HWND window, const wchar_t* className);

}  // namespace tintline
