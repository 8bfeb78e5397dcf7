// Ids of which no two are equal without regard to case.
//
// Tested by tests/golden/exact.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vb/name_table.h"

namespace tintline::listing {

// The ids lie in a text that grows; each call gives the same one.
class UniqueIds {
 public:
  // The text from `begin` on is wanted as an id. When it was taken before, ".2" or a higher number
  // is appended.
  void add(std::u8string& text, std::size_t begin) {
    const std::size_t end = text.size();
    const std::uint32_t known = ids_.size(), wanted = numberOf(text, begin);
    for (std::uint32_t number = wanted; number < known; number = numberOf(text, begin)) {
      repeats_.resize(known, 1);
      const std::string repeat = std::to_string(++repeats_[wanted]);
      text.resize(end);
      (text += u8'.').append(repeat.begin(), repeat.end());
    }
  }

 private:
  // A new number when the id was not there yet.
  std::uint32_t numberOf(std::u8string_view text, std::size_t begin) {
    return ids_.add(text, text.substr(begin));
  }

  vb::NameTable ids_;
  // By number of an id: the last number behind it. Those of the last ids may be missing.
  std::vector<std::uint32_t> repeats_;
};

}  // namespace tintline::listing
