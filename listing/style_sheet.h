// The style sheet of exact pages.
//
// Tested by tests/browser/run.py.
#pragma once

#include <string>
#include <string_view>

#include "listing/options.h"

namespace tintline::listing {

// `severalModules`: procedures have headings one level lower, and lines their numbers in data-n.
std::string styleSheet(const Options& options, bool severalModules);

// A style sheet of the user as it stands in the page: it cannot end the element that it is in, and
// means what it meant.
std::string embeddedStyle(std::u8string_view css);

}  // namespace tintline::listing
