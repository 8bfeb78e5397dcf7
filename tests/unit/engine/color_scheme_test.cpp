// Tests engine/color_scheme.h.
#include "engine/color_scheme.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tintline::modColor {
namespace {

std::uint32_t systemColor(std::uint32_t index) { return index == 5 ? 0x0A0B0C : 0x112233; }

TEST(ColorScheme, ColourTextsTakeRedFromTheLowByte) {
  EXPECT_EQ(fkt_FarbText(255u, systemColor), "#FF0000");
  EXPECT_EQ(fkt_FarbText(0x123456u, systemColor), "#563412");
  EXPECT_EQ(fkt_FarbText(0x80000005u, systemColor), "#0C0B0A") << "two digits a part";
  EXPECT_EQ(fkt_FarbText(0x80000008u, systemColor), "#332211");
}

TEST(ColorScheme, DecimalTexts) {
  EXPECT_EQ(fkt_FarbText("14671839", systemColor), "#DFDFDF");
  EXPECT_EQ(fkt_FarbText(" -2147483643 ", systemColor), "#0C0B0A");
  for (const std::string_view text : {"", "x", "12x", "4294967296"})
    EXPECT_THROW(fkt_FarbText(text, systemColor), std::invalid_argument) << text;
}

TEST(ColorScheme, DefaultsLeaveFieldZeroAlone) {
  ColorScheme scheme;
  scheme[2][0] = "mine";
  Farbesetzen(scheme);
  using Fields = std::array<std::string, kColorFields>;
  EXPECT_EQ(scheme[0], (Fields{"", "#000080", "#DFDFDF", "8388608", "14671839", "0"}));
  EXPECT_EQ(scheme[1], (Fields{"", "#0000FF", "#FFFFFF", "16711680", "16777215", "0"}));
  EXPECT_EQ(scheme[2], (Fields{"mine", "#008080", "#FFFFFF", "8421376", "16777215", "0"}));
  EXPECT_EQ(scheme[3], (Fields{"", "#008000", "#FFFFFF", "32768", "16777215", "0"}));
  EXPECT_EQ(scheme[4], (Fields{"", "#FF0000", "#FFFFFF", "255", "16777215", "0"}));
}

TEST(ColorScheme, TransparencyIsANumberOtherThanZero) {
  ColorScheme scheme;
  for (const std::string_view flag : {"1", "-1", " 2 ", "+.5", "0.01", "10"}) {
    scheme[3][kTransparency] = flag;
    EXPECT_TRUE(isTransparent(scheme, 3)) << flag;
  }
  for (const std::string_view flag :
       {"", "0", "-0", "0.0", "True", "1x", "1.2.3", "1,5", "--1", "."}) {
    scheme[3][kTransparency] = flag;
    EXPECT_FALSE(isTransparent(scheme, 3)) << flag;
  }
}

}  // namespace
}  // namespace tintline::modColor
