// The width of text in a control's font.
#pragma once

#include <string_view>

namespace tintline {

class TextMeasure {
 public:
  virtual ~TextMeasure() = default;

  // The width of the text in pixels.
  virtual int width(std::wstring_view text) = 0;

  // The width of the font's widest character in pixels.
  virtual int widestCharacter() = 0;
};

}  // namespace tintline
