// See selection_colors.h. Tested by tests/unit/app/selection_colors_test.cpp.
#include "app/controls/selection_colors.h"

#include <algorithm>
#include <cmath>

namespace tintline {
namespace {

constexpr std::uint32_t kBlack = 0x000000, kWhite = 0xFFFFFF;

unsigned part(std::uint32_t color, unsigned index) { return color >> (8 * index) & 0xFF; }

double luminance(std::uint32_t color) {
  const auto linear = [color](unsigned index) {
    const double share = part(color, index) / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(0) + 0.7152 * linear(1) + 0.0722 * linear(2);
}

// `share` of 256 parts of the way from one colour to the other.
std::uint32_t mixed(std::uint32_t from, std::uint32_t to, unsigned share) {
  std::uint32_t color = 0;
  for (unsigned index = 0; index < 3; ++index)
    color |= (part(from, index) * (256 - share) + part(to, index) * share) / 256 << (8 * index);
  return color;
}

std::uint32_t furthest(std::uint32_t color) {
  return contrast(color, kBlack) > contrast(color, kWhite) ? kBlack : kWhite;
}

std::uint32_t readableOn(std::uint32_t back, std::uint32_t text) {
  return contrast(back, text) >= kTextContrast ? text : furthest(back);
}

}  // namespace

double contrast(std::uint32_t one, std::uint32_t other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

// As little of the text's colour in the ground as suffices: that is paler than the selection
// with the keyboard.
SelectionColors unfocusedSelection(std::uint32_t window, std::uint32_t windowText) {
  const std::uint32_t toward = readableOn(window, windowText);
  unsigned share = 0;
  while (share < 256 && contrast(mixed(window, toward, share), window) < kShapeContrast) ++share;
  const std::uint32_t back = mixed(window, toward, share);
  return {back, readableOn(back, windowText)};
}

}  // namespace tintline
