// Pictures of windows as they stand on the screen.
//
// Tested by ./dev pictures.
#pragma once

#include <filesystem>

#include "bench/win32/driver.h"

namespace tintline::test {

// Saves a picture of the window as PNG, once it is painted.
void savePicture(Window window, const std::filesystem::path& file);

}  // namespace tintline::test
