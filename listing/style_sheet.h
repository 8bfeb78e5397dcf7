// The style sheet of exact pages.
//
// Tested by tests/browser/run.py.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "listing/options.h"
#include "listing/palette.h"

namespace tintline::listing {

// `severalModules`: procedures have headings one level lower, and lines their numbers in data-n.
std::string styleSheet(const Options& options, bool severalModules);

// A style sheet of the user as it stands in the page: it cannot end the element that it is in, and
// means what it meant.
std::string embeddedStyle(std::u8string_view css);

// The parts of it that say how any page looks, in this order: its text; links, its header.
extern const std::string_view kBaseStyle;
extern const std::string_view kFrameStyle;

struct ColorRule {
  std::string_view selectors;
  std::string_view property;
  Tint tint;
};

// The rules in the colours of light pages and, where the theme has them, of dark ones.
std::string colorStyle(std::span<const ColorRule> rules, const Options& options);

}  // namespace tintline::listing
