// What the user chose for the look of all programs.
//
// Tested by the tests that drive the program.
#pragma once

#include <windows.h>

namespace tintline {

// Whether he reads by the system's contrasting colours, beside which no others have a place.
inline bool isHighContrast() {
  HIGHCONTRASTW contrast{};
  contrast.cbSize = sizeof contrast;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
         (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// Whether light text is read on that ground.
inline bool isDark(COLORREF ground) {
  return 299 * GetRValue(ground) + 587 * GetGValue(ground) + 114 * GetBValue(ground) < 128 * 1000;
}

}  // namespace tintline
