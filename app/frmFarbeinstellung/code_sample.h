// A piece of code as the pages of a mode show it. It is converted and read like any page, so it
// shows what becomes of the colours: also those that a mode does without.
//
// Tested by tests/unit/app/dialogs_test.cpp.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "convert/format.h"
#include "engine/color_scheme.h"
#include "output/rendered_page.h"

namespace tintline {

struct CodeSample {
  struct Piece {
    std::wstring text;
    TextLooks looks;

    bool operator==(const Piece&) const = default;
  };
  struct Line {
    std::vector<Piece> pieces;
    std::optional<Color> ground = {};  // of the whole line; nothing: the page's

    bool operator==(const Line&) const = default;
  };

  std::vector<Line> lines;
  Color ink = 0x000000, ground = 0xFFFFFF;  // of the page, where nothing else is said

  // The lines without looks.
  std::wstring text() const;

  bool operator==(const CodeSample&) const = default;
};

// Of a light page whose colours are in a style sheet.
CodeSample codeSample(Mode mode, const ColorScheme& colors);

}  // namespace tintline
