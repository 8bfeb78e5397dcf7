// Controls drawn by us: what the system has no other colours for. Used while the look of the
// windows is not the system's (theme.h).
//
// Tested by tests/win32/controls/theme_test.cpp.
#pragma once

#include <windows.h>
#include <commctrl.h>

namespace tintline::own_drawing {

// The answers to NM_CUSTOMDRAW of a push button, check box or option, and of a tool bar.
LRESULT drawButton(const NMCUSTOMDRAW& drawn);
LRESULT drawToolBar(NMTBCUSTOMDRAW& drawn);

// A frame around other controls, with its caption and all of its ground; a drop-down list while it
// is closed; a progress bar.
void drawFrame(HWND frame, HDC dc);
void drawCombo(HWND combo, HDC dc);
void drawProgress(HWND progress, HDC dc);

// Has a control drawn so instead of by the system, whenever the look is not the system's.
using Draw = void (*)(HWND control, HDC dc);
void drawInstead(HWND control, Draw draw);

// Has the sunken edge of a control drawn by us whenever the look is not the system's.
void drawEdge(HWND control);

}  // namespace tintline::own_drawing
