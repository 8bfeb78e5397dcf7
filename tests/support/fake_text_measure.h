// A font for tests: "W" is the widest character, "i" the narrowest.
#pragma once

#include <string_view>

#include "ports/text_measure.h"

namespace tintline::test {

class FakeTextMeasure final : public TextMeasure {
 public:
  int width(std::string_view text) override {
    ++measured;
    int pixels = 0;
    for (const char c : text) pixels += c == 'W' ? widest : c == 'i' ? 2 : 5;
    return pixels;
  }

  int widestCharacter() override { return widest; }

  int widest = 10;
  int measured = 0;  // how many texts were measured
};

}  // namespace tintline::test
