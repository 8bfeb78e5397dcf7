// Which parts of a line have which colour in a list.
//
// Tested by tests/unit/app/line_colors_test.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/format.h"
#include "engine/color_scheme.h"
#include "listing/palette.h"

namespace tintline {

// A list's lines in the user's colours, on light ground and on dark.
struct LineInks {
  enum class Lines : std::uint8_t { Plain, Source, Html };

  Lines lines = Lines::Plain;
  bool allTints = false;  // of the exact conversion; the classic one has the five categories
  listing::Palette light{}, dark{};
  std::array<std::string, kColorCategories> categories;  // "#RRGGBB": in the style of an element

  bool operator==(const LineInks&) const = default;
};

LineInks inksOf(LineInks::Lines lines, Mode mode, const ColorScheme& colors);

// A part of a line, up to `end`; without a tint it is in the colour of all texts.
struct InkedPart {
  std::size_t end;
  std::optional<listing::Tint> tint;

  bool operator==(const InkedPart&) const = default;
};

// The parts of a line as the user reads it, in their order. A line of source is coloured by
// itself, whatever stands around it. Lines of HTML have their tags quiet and their texts as these
// tags say. Of a line that is longer than anybody reads the rest has no colours.
std::vector<InkedPart> inkedParts(std::wstring_view line, const LineInks& inks);

}  // namespace tintline
