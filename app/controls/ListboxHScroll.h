// Keeps the horizontal scroll range of a list box fitting its longest line.
//
// Lines of at most kDirectLength characters may go into the list box directly:
// only their columns are counted, as if each character were the font's widest.
// Longer lines are measured.
//
// Tested by tests/unit/app/controls_test.cpp.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "app/controls/list_box.h"
#include "ports/text_measure.h"

namespace tintline {

// What AddItem refuses; `source` names the procedure.
struct ListboxError : std::runtime_error {
  ListboxError(const char* message, std::string procedure)
      : std::runtime_error(message), source(std::move(procedure)) {}
  std::string source;
};

class ListboxHScroll {
 public:
  // How AddItem treats the scroll range.
  enum Mode : int {
    kLeave = 0,  // as it is
    kFit = 1,    // measured anew over all lines
    kGrow = 2    // grown to fit the new line
  };

  // Both must live as long as this object.
  ListboxHScroll(ListBox& list, TextMeasure& measure);

  // Adds a line in front of line `index`, at the end for -1. Throws ListboxError
  // with the source "ListBoxHScroll.AddItem" when there is no such place or the list
  // is full (kMaxLines).
  void AddItem(std::string_view text, std::ptrdiff_t index, Mode mode);

  // Empties the list box and the scroll range. Lines that come now are of that encoding.
  void Clear(TextEncoding encoding = TextEncoding::Ansi);

  // The scroll range in pixels; 0 for none.
  int ScrollWidth() const;
  void setScrollWidth(int pixels);

  // Fits the range to the lines as they stand: after lines were replaced, or added
  // directly, or the font changed. Measures only lines that may turn out the widest.
  void fit();

 private:
  ListBox& list_;
  TextMeasure& measure_;
};

}  // namespace tintline
