// Tells the lines of a module file that are no code: they are read line by line by the
// tools of the language and must stay as they are.
//
// Tested by tests/unit/reformat/wrapping_test.cpp.
#pragma once

#include <cstddef>
#include <string_view>

namespace tintline {

// "Attribute VB_…" and "Attribute Name.VB_…".
bool isAttribute(std::string_view line);

// Finds the headers of form and class files in a list of lines: "VERSION …" and behind
// it "Object = …" and one block from Begin to End, which holds others. A list may hold
// several modules.
class FileHeader {
 public:
  // Whether the line belongs to a header. Takes the lines in their order.
  bool holds(std::string_view line);

 private:
  bool inside_ = false;    // behind VERSION, the block has not ended yet
  std::size_t depth_ = 0;  // blocks that are open
};

}  // namespace tintline
