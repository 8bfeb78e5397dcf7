// Tests of listing/palette.h: what can be read on what, light and dark.
#include "listing/palette.h"

#include <gtest/gtest.h>

namespace tintline::listing {
namespace {

TEST(palette, DefaultsAndChosenColors) {
  EXPECT_EQ(colorFromText("#0a0B0c"), 0x0A0B0CU);
  for (const char* text :
       {"", "#12345", "#1234567", "red", "#12345g", "#+12345", "# 12345", "url(x)"})
    EXPECT_EQ(colorFromText(text), std::nullopt) << text;
  const auto at = [](const Palette& palette, Tint tint) {
    return palette[static_cast<std::size_t>(tint)];
  };
  for (const Palette& palette : {lightPalette({}), darkPalette({})})
    for (const Tint tint :
         {Tint::Text, Tint::Word, Tint::Name, Tint::Parameter, Tint::Comment, Tint::String,
          Tint::Number, Tint::Directive, Tint::Error, Tint::LineNumber, Tint::Quiet})
      for (const Tint background : {Tint::Page, Tint::Head})
        EXPECT_GE(contrast(at(palette, tint), at(palette, background)), 4.5) << int(tint);
  const UserColors user{.comments = 0x800000, .strings = 0x000000};
  EXPECT_EQ(at(lightPalette(user), Tint::Comment), 0x800000U);
  const Palette dark = darkPalette(user);
  EXPECT_GE(contrast(at(dark, Tint::Comment), at(dark, Tint::Head)), 4.5);
  const Color comment = at(dark, Tint::Comment);  // still red
  EXPECT_EQ(comment >> 8 & 0xFF, comment & 0xFF);
  EXPECT_GT(comment >> 16, comment & 0xFF);
  EXPECT_GE(contrast(at(dark, Tint::String), at(dark, Tint::Page)), 4.5);
}

}  // namespace
}  // namespace tintline::listing
