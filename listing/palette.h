// The colours of exact listings: the defaults, and what a user's five categories change.
//
// Tested by tests/unit/listing/palette_test.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tintline::listing {

// 0xRRGGBB.
using Color = std::uint32_t;

// The colour that "#RRGGBB" means; nothing for any other text.
std::optional<Color> colorFromText(std::string_view text);

// The colours that the user chose, where that is not what the program began with. They count on
// light pages; on dark ones they are as bright as it takes to be read.
struct UserColors {
  std::optional<Color> procedures = {};     // names of procedures, types and labels
  std::optional<Color> reservedWords = {};  // words of the language and of its library
  std::optional<Color> parameters = {};     // words of the second list, named arguments
  std::optional<Color> comments = {};
  std::optional<Color> strings = {};  // strings and dates
};

// What has a colour of its own.
enum class Tint : std::uint8_t {
  Text,
  Page,  // the background
  Word,
  Name,
  Head,  // the background of a procedure's head
  Parameter,
  Comment,
  String,
  Number,
  Directive,
  Error,
  LineNumber,
  Border,
  Quiet,   // less important texts
  Target,  // the background of the line that a link led to
};
inline constexpr std::size_t kTints = 15;

using Palette = std::array<Color, kTints>;  // by Tint
Palette lightPalette(const UserColors& user);
Palette darkPalette(const UserColors& user);

// How well one colour can be read on another, from 1 to 21 (WCAG 2.2, "contrast ratio").
double contrast(Color a, Color b);

}  // namespace tintline::listing
