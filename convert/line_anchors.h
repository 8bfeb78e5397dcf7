// The ids of lines in an exact page of one module or of several: "12", "Modul1.12".
//
// Tested by tests/unit/convert/exact_source_test.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tintline {

class LineAnchors {
 public:
  // The next module of the page. Its lines have ids of the prefix and their number.
  void add(std::wstring prefix, std::size_t lines);

  // Of all modules.
  std::size_t lines() const;

  // Lines count from 0 through all modules; nothing for what is no line.
  std::optional<std::wstring> anchorOf(std::size_t line) const;
  std::optional<std::size_t> lineOf(std::wstring_view anchor) const;

 private:
  struct Module {
    std::wstring prefix;
    std::size_t first, lines;
  };
  std::vector<Module> modules_;
};

}  // namespace tintline
