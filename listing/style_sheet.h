// The style sheet of exact pages.
//
// Tested by tests/browser/exact.py.
#pragma once

#include <string>

#include "listing/options.h"

namespace tintline::listing {

// `severalModules`: procedures have headings one level lower, and lines their numbers in data-n.
std::string styleSheet(const Options& options, bool severalModules);

}  // namespace tintline::listing
