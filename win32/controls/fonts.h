// The fonts of the windows in the resolution of a monitor.
//
// Tested by tests/win32/controls/layout_test.cpp.
#pragma once

#include <string>
#include <string_view>

#include "win32/controls/gdi.h"

namespace tintline {

inline constexpr int kDesignDpi = 96;  // sizes in this program are pixels at 96 dpi

// A size at 96 dpi in the pixels of `dpi`.
inline int scaled(int size, unsigned dpi) {
  return MulDiv(size, static_cast<int>(dpi), kDesignDpi);
}

struct FontLook {
  int percent = 100;  // of the message font's height
  bool bold = false;
  bool italic = false;
  bool underlined = false;
};

// The user's font for messages and dialogs.
UniqueFont messageFont(unsigned dpi, const FontLook& look = {});

// The fixed-pitch font of the two lists and of code samples.
UniqueFont listFont(unsigned dpi, const FontLook& look = {});

// The width of one character and the height of a line in a fixed-pitch font.
struct CharacterSize {
  int width, height;
};
CharacterSize characterSize(HFONT font);

// The size of a text of one line, its "&" taken as they stand.
SIZE textSize(HFONT font, std::wstring_view text);

}  // namespace tintline
