// Searching the lines of a list: for a text, and for procedures.
//
// Tested by tests/app/search_test.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/controls/list_box.h"

namespace tintline {

// Text in which texts are looked for whatever their case.
class FoldedText {
 public:
  explicit FoldedText(std::wstring_view text);
  bool contains(const FoldedText& part) const { return text_.find(part.text_) != text_.npos; }

 private:
  std::u8string text_;
};

// A line that holds the text.
struct FoundLine {
  std::size_t line;    // from 0
  std::size_t number;  // which of those that hold it, from 1
  std::size_t count;   // how many hold it
  bool wrapped;        // the search went on at the other end
};

// The next one behind the current line of the list, or in front of it; when no line is current,
// the first or the last. Nothing when no line holds the text.
std::optional<FoundLine> findLine(const ListBox& list, std::wstring_view text, bool forward);

struct ProcedureLine {
  std::wstring name;  // "Wert (Get)"
  std::wstring kind;  // "Sub", "Function", "Property"
  std::size_t line;   // of its head, from 0
};

// The procedures of the code that a list shows, in its order.
std::vector<ProcedureLine> proceduresOf(const ListBox& list);

}  // namespace tintline
