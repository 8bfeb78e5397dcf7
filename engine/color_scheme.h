// The colours of the five highlighting categories, as the texts in which CSS
// and the settings file hold them.
//
// Tested by tests/unit/engine/engine_test.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tintline {

// First index of the colour table.
enum ColorCategory : std::size_t {
  kProzeduren = 0,        // classes Sub and EndSub
  kReservierteWorte = 1,  // class Code
  kParameter = 2,         // class Parms
  kKommentare = 3,        // class Rem
  kStrings = 4            // class Marks
};
inline constexpr std::size_t kColorCategories = 5;

// Second index of the colour table. Field 0 is stored and saved like the others.
enum ColorField : std::size_t {
  kTextColor = 1,    // "#RRGGBB"
  kBackColor = 2,    // "#RRGGBB"
  kTextNumber = 3,   // decimal colour integer
  kBackNumber = 4,   // decimal colour integer
  kTransparency = 5  // "0": the background colour is used
};
inline constexpr std::size_t kColorFields = 6;

using ColorScheme = std::array<std::array<std::string, kColorFields>, kColorCategories>;

namespace modColor {

// Gives the current value (0x00BBGGRR) of a system colour by its index.
using SystemColor = std::function<std::uint32_t(std::uint32_t index)>;

// "#RRGGBB" of a colour integer 0x00BBGGRR; a value whose high byte is not 0
// names the system colour whose index its low 24 bits are.
std::string fkt_FarbText(std::uint32_t color, const SystemColor& systemColor);

// The same for the decimal text of a colour integer (negative for system
// colours in 32 bits); throws std::invalid_argument when it is not one.
std::string fkt_FarbText(std::string_view decimal, const SystemColor& systemColor);

// Fills the table with the default colours; field 0 stays as it is.
void Farbesetzen(ColorScheme& scheme);

// True when the category has no background of its own: its transparency flag is
// a number (blanks around it, sign, digits, decimal point) other than 0.
bool isTransparent(const ColorScheme& scheme, std::size_t category);

}  // namespace modColor

}  // namespace tintline
