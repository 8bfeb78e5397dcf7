// The width of text in the font of the lists.
//
// Tested by the tests that drive the program.
#pragma once

#include "ports/text_measure.h"
#include "win32/gdi.h"

namespace tintline {

// Measures at 96 dpi, whatever monitor the lists are on: the font has one width for
// all characters, so the lists convert by it (see ListView).
class ListTextMeasure final : public TextMeasure {
 public:
  ListTextMeasure();
  int width(std::string_view text) override;
  int widestCharacter() override { return characterWidth_; }

 private:
  UniqueFont font_;
  int characterWidth_;
};

}  // namespace tintline
