// The page that a word processor inserts into a new document.
//
// Tested by tests/unit/output/output_test.cpp.
#pragma once

#include <ostream>
#include <string_view>

#include "engine/color_scheme.h"
#include "output/clipboard_text.h"

namespace tintline {

// The selected HTML lines, all of them when none is selected, with their colours as style
// attributes: a style sheet would leave its classes behind as styles of the document.
//
// Links are plain text, because a word processor underlines them in its own colour. Nothing
// but the program's own tags gets through: code may hold tags that would load something.
// The page is ASCII, so that no reader has to guess a character set.
void writeWordPage(std::ostream& page, const ColorScheme& colors, const SelectableLines& List2);

// A page around an element in UTF-8 that needs nothing else: a formatted copy of exact code.
void writeWordPage(std::ostream& page, std::string_view copy);

}  // namespace tintline
