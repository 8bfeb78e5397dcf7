// See line_list.h. Tested by tests/unit/base/line_list_test.cpp.
#include "base/line_list.h"

namespace tintline {

void LineList::append(std::string_view line, std::string_view tail) {
  text_.append(line).append(tail);
  ends_.push_back(text_.size());
}

void LineList::clear() {
  text_.clear();
  ends_.clear();
}

}  // namespace tintline
