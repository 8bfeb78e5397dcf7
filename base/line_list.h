// Ordered text lines in one block of memory: source lines as they were read,
// thousands of them without an allocation a line. Lines are only ever added,
// nearly always at the end; a command that changes lines builds a new list.
//
// Tested by tests/unit/app/controls_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tintline {

// The counters of the program are 16 bits wide; a source may not be longer.
inline constexpr std::size_t kMaxLines = 32767;

class LineList {
 public:
  std::size_t size() const { return ends_.size(); }
  bool empty() const { return ends_.empty(); }

  // All lines, one directly behind the other.
  std::string_view text() const { return text_; }

  // The length of all lines together.
  std::size_t bytes() const { return text_.size(); }

  // Line `index` (0-based, below size()); the view lives until the list changes.
  std::string_view operator[](std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(text_).substr(begin, ends_[index] - begin);
  }

  // Adds one line: `line` followed directly by `tail`.
  void append(std::string_view line, std::string_view tail = {});

  // Adds one line in front of line `index` (at most size()); moves all behind it.
  void insert(std::size_t index, std::string_view line);

  // Makes room for a text of that many bytes; saves copies, changes nothing.
  void reserveBytes(std::size_t bytes) { text_.reserve(bytes); }

  void clear();

 private:
  std::string text_;
  std::vector<std::size_t> ends_;  // ends_[i]: offset in text_ behind line i
};

}  // namespace tintline
