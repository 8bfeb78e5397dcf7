// Pictures for toolbar and tree: strips of equal pictures in three sizes.
//
// Tested by the tests that drive the program.
#pragma once

#include <string_view>

#include "win32/controls/gdi.h"

namespace tintline {

enum class Strip { Toolbar, Tree };

// The pictures in the size for the resolution.
UniqueImageList loadStrip(Strip strip, unsigned dpi);

// Where in its strip the picture of that key stands, or I_IMAGENONE.
int pictureOf(Strip strip, std::string_view key);

}  // namespace tintline
