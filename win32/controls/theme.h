// Light or dark: what decides it, and the colours that the windows have by it.
//
// The colours are the system's own in light windows, and always when the user reads by contrasting
// colours; the controls then look as the system makes them. Dark ones, and light ones where the
// system's are dark, come from a palette of ours, and what the system would draw in its own colours
// is drawn here. As of the system's, there is one set of colours in the whole program.
//
// Tested by tests/win32/controls/theme_test.cpp.
#pragma once

#include <windows.h>

#include "app/window_memory.h"

namespace tintline::theme {

enum class Look { System, Light, Dark };

// What the system says about it.
struct SystemState {
  bool highContrast;  // the user reads by contrasting colours, beside which no others have a place
  bool darkColors;    // its colours are light text on dark ground
  bool darkApps;      // its setting for programs
};

Look decide(Brightness wanted, const SystemState& system);

// What the user wants; looks at the system anew.
void choose(Brightness wanted);

// Looks at the system anew: to be called when it tells of changes.
void update();

// Grows whenever something of the following has changed. It is 0 as long as everything is light and
// the system's.
unsigned version();
bool isOwn();   // the look is not the system's
bool isDark();  // light text is read on dark ground
bool isHighContrast();

// As GetSysColor and GetSysColorBrush, in the look's colours. The brush is not the caller's.
COLORREF color(int index);
HBRUSH brush(int index);

// The answer to WM_CTLCOLOR… messages; null: the system's default will do.
HBRUSH controlColors(UINT message, HDC dc);

// The title bar of a top-level window.
void dressFrame(HWND window);

// The system's drawing of a control, its scroll bars included.
void dress(HWND control);

void dressTips(HWND tips);

}  // namespace tintline::theme
