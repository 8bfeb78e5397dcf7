// The HTML lines of a run. They live once, inside the text that the run built:
// every line is a stretch of it, between line ends and frame openers.
//
// Tested by tests/unit/engine/engine_property_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tintline {

// How a line enters List2.
enum class Route : bool {
  Direct,  // the list's own add-item operation
  Wrapper  // the wrapper's AddItem, which widens the scroll extent
};

// A line of more than 90 characters takes the wrapper.
inline constexpr std::size_t kDirectLength = 90;

class HtmlLines {
 public:
  std::size_t size() const { return spans_.size(); }
  bool empty() const { return spans_.empty(); }

  // Line `index` (0-based, below size()); the view lives as long as this object.
  std::string_view operator[](std::size_t index) const {
    return text().substr(spans_[index].offset, spans_[index].length);
  }
  Route route(std::size_t index) const { return spans_[index].route; }

  // Everything that was written, line ends included.
  std::string_view text() const { return text_; }

  void reserve(std::size_t lines) { spans_.reserve(lines); }

  // Notes a line by its place in the text, which is handed over at the end.
  void add(std::size_t offset, std::size_t length, Route route) {
    spans_.push_back({offset, length, route});
  }
  void setText(std::string text) { text_ = std::move(text); }

 private:
  struct Span {
    std::size_t offset;
    std::size_t length;
    Route route;
  };
  std::string text_;
  std::vector<Span> spans_;
};

}  // namespace tintline
