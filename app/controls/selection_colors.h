// The colours of what is selected in a list or a tree that does not have the keyboard: in every
// colour scheme of the system they stand out from the list's ground, and their text from them.
//
// Tested by tests/unit/app/selection_colors_test.cpp.
#pragma once

#include <cstdint>

namespace tintline {

// How far two colours 0x00BBGGRR are apart for the eye, from 1 (the same) to 21 (black and
// white): the contrast ratio of WCAG 2.1, https://www.w3.org/TR/WCAG21/#dfn-contrast-ratio
double contrast(std::uint32_t one, std::uint32_t other);

inline constexpr double kShapeContrast = 3;   // that a shape needs, by WCAG 1.4.11
inline constexpr double kTextContrast = 4.5;  // and a text, by WCAG 1.4.3

struct SelectionColors {
  std::uint32_t back, text;
};

// For a list of that ground, with text in that colour.
SelectionColors unfocusedSelection(std::uint32_t window, std::uint32_t windowText);

}  // namespace tintline
