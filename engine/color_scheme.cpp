// See color_scheme.h. Tested by tests/unit/engine/engine_test.cpp.
#include "engine/color_scheme.h"

#include <charconv>
#include <stdexcept>

#include "base/text.h"

namespace tintline::modColor {
namespace {

struct DefaultColors {
  std::uint32_t text, back;  // 0x00BBGGRR
};
constexpr std::array<DefaultColors, kColorCategories> kDefaults = {{
    {0x800000, 0xDFDFDF},  // dark blue on light grey
    {0xFF0000, 0xFFFFFF},  // blue
    {0x808000, 0xFFFFFF},  // dark cyan
    {0x008000, 0xFFFFFF},  // dark green
    {0x0000FF, 0xFFFFFF},  // red
}};

// The defaults name no system colour.
std::uint32_t noSystemColor(std::uint32_t) { return 0; }

std::string hexPart(std::uint32_t part) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  return {digits[part >> 4], digits[part & 0xF]};
}

}  // namespace

std::string fkt_FarbText(std::uint32_t color, const SystemColor& systemColor) {
  if ((color & 0xFF000000) != 0) color = systemColor(color & 0x00FFFFFF);
  return "#" + hexPart(color & 0xFF) + hexPart(color >> 8 & 0xFF) + hexPart(color >> 16 & 0xFF);
}

std::string fkt_FarbText(std::string_view decimal, const SystemColor& systemColor) {
  const std::string_view digits = Trim(decimal);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size() || value > 0xFFFFFFFFLL ||
      value < -0x80000000LL)
    throw std::invalid_argument("fkt_FarbText: not a colour integer");
  return fkt_FarbText(static_cast<std::uint32_t>(value), systemColor);
}

void Farbesetzen(ColorScheme& scheme) {
  for (std::size_t category = 0; category < kColorCategories; ++category) {
    const DefaultColors& colors = kDefaults[category];
    scheme[category][kTextColor] = fkt_FarbText(colors.text, noSystemColor);
    scheme[category][kBackColor] = fkt_FarbText(colors.back, noSystemColor);
    scheme[category][kTextNumber] = std::to_string(colors.text);
    scheme[category][kBackNumber] = std::to_string(colors.back);
    scheme[category][kTransparency] = "0";
  }
}

bool isTransparent(const ColorScheme& scheme, std::size_t category) {
  std::string_view number = Trim(scheme[category][kTransparency]);
  if (!number.empty() && (number.front() == '+' || number.front() == '-')) number.remove_prefix(1);
  const std::size_t point = number.find('.');
  const bool onlyDigits = number.find_first_not_of("0123456789.") == std::string_view::npos &&
                          (point == std::string_view::npos || number.rfind('.') == point);
  return onlyDigits && number.find_first_of("123456789") != std::string_view::npos;
}

}  // namespace tintline::modColor
