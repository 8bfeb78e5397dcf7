// The names that the modules of a site declare, and which of them its code or texts hold without
// telling what they mean.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "vb/fold.h"
#include "vb/name_table.h"

namespace tintline::site {

class Names {
 public:
  static constexpr std::uint32_t kUnknown = vb::NameTable::kUnknown;

  // The number of a name, equal for names that are equal without regard to case.
  std::uint32_t add(std::u8string_view name) {
    const std::uint32_t number = table_.add(text_, vb::NameKey(name), text_.size());
    if (number == seen_.size()) {
      text_ += name;
      seen_.emplace_back();
    }
    return number;
  }

  // What follows may be called by several threads, once all names are added.

  std::uint32_t find(std::u8string_view name) const {
    return table_.find(text_, vb::NameKey(name));
  }

  // Code holds the name, and it is not known what it means there.
  void seeInCode(std::uint32_t number) { set(seen_[number].inCode); }
  bool isInCode(std::uint32_t number) const { return seen_[number].inCode; }
  // A string holds it.
  void seeInText(std::uint32_t number) { set(seen_[number].inText); }
  bool isInText(std::uint32_t number) const { return seen_[number].inText; }

 private:
  struct Seen {
    std::atomic<bool> inCode = false, inText = false;
  };
  static void set(std::atomic<bool>& flag) {
    if (!flag.load(std::memory_order_relaxed)) flag.store(true, std::memory_order_relaxed);
  }

  std::u8string text_;  // of all names
  vb::NameTable table_;
  std::deque<Seen> seen_;  // by number
};

}  // namespace tintline::site
