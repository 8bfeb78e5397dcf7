// See palette.h. Tested by tests/unit/listing/palette_test.cpp.
#include "listing/palette.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace tintline::listing {
namespace {

constexpr double kReadable = 4.5;  // the contrast that WCAG 2.2 asks for

// Each at least 4.7:1 on what it stands on.
//                              Text      Page      Word      Name      Head      Parameter Comment
constexpr Palette kLight = {0x1C1E21, 0xFFFFFF, 0x0000C8, 0x000080, 0xE4E8F1, 0x00697A, 0x1A6E1A,
                            // String  Number   Directive Error     LineNumber Border  Quiet
                            0xB00020, 0x7A3E00, 0x6B4A9C, 0xB00020, 0x5F6672, 0xD5D9E2, 0x5A606B,
                            // Target
                            0xFFF2C4};
constexpr Palette kDark = {0xE3E6EB, 0x1B1E24, 0x8AB4FF, 0xC3D4FF, 0x2A3040,
                           0x6FD3DD, 0x8FCF8F, 0xFF9E9E, 0xF0B27A, 0xC9A9FF,
                           0xFF9E9E, 0x9AA3B2, 0x3A4150, 0xA3ABB8, 0x3A3418};

constexpr Color& at(Palette& palette, Tint tint) { return palette[static_cast<std::size_t>(tint)]; }

double channel(Color color, int shift) { return (color >> shift & 0xFF) / 255.0; }

double luminance(Color color) {
  const auto linear = [&](int shift) {
    const double value = channel(color, shift);
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
}

// The colour with another lightness (HSL), its hue and saturation kept.
Color withLightness(Color color, double lightness) {
  const double red = channel(color, 16), green = channel(color, 8), blue = channel(color, 0);
  const double low = std::min({red, green, blue}), high = std::max({red, green, blue});
  const double chroma = high - low, middle = (high + low) / 2;
  const double reach = 1 - std::abs(2 * middle - 1);
  const double newChroma = reach > 0 ? chroma / reach * (1 - std::abs(2 * lightness - 1)) : 0;
  const auto byte = [&](double value) {
    const double share = chroma > 0 ? (value - middle) / chroma : 0;  // hue: where between them
    return static_cast<Color>(
        std::lround(255 * std::clamp(lightness + share * newChroma, 0.0, 1.0)));
  };
  return byte(red) << 16 | byte(green) << 8 | byte(blue);
}

double lightnessOf(Color color) {
  const auto [low, high] = std::minmax({channel(color, 16), channel(color, 8), channel(color, 0)});
  return (low + high) / 2;
}

// The colour, as much lighter as it takes to be read on all these.
Color readableOn(std::initializer_list<Color> backgrounds, Color color) {
  const auto readable = [&](Color candidate) {
    return std::ranges::all_of(backgrounds, [&](Color background) {
      return contrast(candidate, background) >= kReadable;
    });
  };
  Color lighter = color;
  for (double lightness = lightnessOf(color); !readable(lighter) && lightness < 1;) {
    lightness = std::min(1.0, lightness + 0.01);
    lighter = withLightness(color, lightness);
  }
  return lighter;
}

template <class Shade>
void apply(Palette& palette, const UserColors& user, Shade shade) {
  const auto set = [&](Tint tint, const std::optional<Color>& color) {
    if (color) at(palette, tint) = shade(*color);
  };
  set(Tint::Name, user.procedures);
  set(Tint::Word, user.reservedWords);
  set(Tint::Parameter, user.parameters);
  set(Tint::Comment, user.comments);
  set(Tint::String, user.strings);
}

}  // namespace

std::optional<Color> colorFromText(std::string_view text) {
  if (text.size() != 7 || text[0] != '#') return {};
  Color color = 0;
  const auto [end, error] = std::from_chars(text.data() + 1, text.data() + 7, color, 16);
  if (error != std::errc() || end != text.data() + 7) return {};
  return color;
}

double contrast(Color a, Color b) {
  const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

Palette lightPalette(const UserColors& user) {
  Palette palette = kLight;
  apply(palette, user, [](Color color) { return color; });
  return palette;
}

Palette darkPalette(const UserColors& user) {
  Palette palette = kDark;
  const Color page = at(palette, Tint::Page), head = at(palette, Tint::Head);
  apply(palette, user, [&](Color color) { return readableOn({page, head}, color); });
  return palette;
}

}  // namespace tintline::listing
