// See line_list.h. Tested by tests/unit/app/controls_test.cpp.
#include "base/line_list.h"

namespace tintline {

void LineList::append(std::string_view line, std::string_view tail) {
  text_.append(line).append(tail);
  ends_.push_back(text_.size());
}

void LineList::insert(std::size_t index, std::string_view line) {
  if (index == size()) return append(line);
  const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
  const std::size_t length = line.size();
  text_.insert(begin, line);
  ends_.insert(ends_.begin() + static_cast<std::ptrdiff_t>(index), begin);
  for (std::size_t i = index; i < ends_.size(); ++i) ends_[i] += length;
}

void LineList::clear() {
  text_.clear();
  ends_.clear();
}

}  // namespace tintline
