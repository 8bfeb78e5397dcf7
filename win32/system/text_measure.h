// The width of text in the font of the lists.
//
// Tested by tests/win32/controls/layout_test.cpp.
#pragma once

#include "ports/text_measure.h"

namespace tintline {

// The font has one width for all characters, so a count of columns is enough: thousands of
// lines are measured while the user waits. The width is that at 96 dpi, whatever monitor
// the lists are on; they convert it (see ListView).
class ListTextMeasure final : public TextMeasure {
 public:
  ListTextMeasure();
  int width(std::wstring_view text) override;
  int widestCharacter() override { return characterWidth_; }

 private:
  int characterWidth_;
};

}  // namespace tintline
