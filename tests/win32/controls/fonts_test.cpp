// Tests of win32/controls/fonts.h and win32/system/text_measure.h.
#include "win32/controls/fonts.h"

#include <gtest/gtest.h>

#include "base/codepage.h"
#include "win32/system/text_measure.h"

namespace tintline {
namespace {

TEST(fonts, tabsGoToEveryFourthColumn) {
  const struct {
    const char *line, *shown;
  } cases[] = {
      {"", ""},
      {"ohne", "ohne"},
      {"\tx", "    x"},
      {"a\tx", "a   x"},
      {"abc\tx", "abc x"},
      {"abcd\tx", "abcd    x"},
      {"\t\tx", "        x"},
      {"a\t\tx", "a       x"},
  };
  for (const auto& c : cases) EXPECT_EQ(expandTabs(c.line), c.shown) << c.line;
}

// What counting the characters stands on.
TEST(fonts, theListFontHasOneWidthForAllCharacters) {
  const UniqueFont font = listFont(kDesignDpi);
  ListTextMeasure measure;
  for (const char* text : {"iiiiiiiiii", "WWWWWWWWWW", "", "\xC4\xD6\xDC\xDF\x80", "If a Then\tb"})
    EXPECT_EQ(measure.width(text), textSize(font.get(), fromAnsi(expandTabs(text))).cx) << text;
}

TEST(fonts, growWithTheResolution) {
  const int at96 = characterSize(listFont(96).get()).height;
  const int at192 = characterSize(listFont(192).get()).height;
  EXPECT_NEAR(at192, 2 * at96, 2);
  EXPECT_GT(textSize(messageFont(192).get(), L"Ag").cy, textSize(messageFont(96).get(), L"Ag").cy);
}

}  // namespace
}  // namespace tintline
