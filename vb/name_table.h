// Numbers for names that are compared without regard to case: equal names have equal numbers,
// counted from 0. The names themselves stay where they are, in one text.
//
// Tested by tests/unit/vb/fold_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "vb/fold.h"

namespace tintline::vb {

class NameTable {
 public:
  static constexpr std::uint32_t kUnknown = 0xFFFFFFFF;

  // Each call gives the text that the names added so far lie in.
  std::uint32_t find(std::u8string_view text, std::u8string_view name, std::uint32_t hash) const {
    return slots_.empty() ? kUnknown : slots_[slotOf(text, name, hash)].number;
  }

  // The number of a name, which is a new one (size() before the call) when it was not known. In
  // that case it lies, or will lie, at `offset` of the text.
  std::uint32_t add(std::u8string_view text, std::u8string_view name, std::uint32_t hash,
                    std::size_t offset) {
    if (places_.size() * 2 >= slots_.size()) grow();
    Slot& slot = slots_[slotOf(text, name, hash)];
    if (slot.number == kUnknown) {
      slot = {hash, static_cast<std::uint32_t>(places_.size())};
      places_.push_back(
          {static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(name.size())});
    }
    return slot.number;
  }

  std::uint32_t hashOf(std::u8string_view text, std::uint32_t number) const {
    return foldedHash(nameOf(text, number));
  }
  std::u8string_view nameOf(std::u8string_view text, std::uint32_t number) const {
    return text.substr(places_[number].offset, places_[number].size);
  }
  std::uint32_t size() const { return static_cast<std::uint32_t>(places_.size()); }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t number = kUnknown;
  };
  struct Place {
    std::uint32_t offset, size;
  };

  // Where the name is, or would be added.
  std::size_t slotOf(std::u8string_view text, std::u8string_view name, std::uint32_t hash) const {
    std::size_t at = hash & (slots_.size() - 1);
    while (slots_[at].number != kUnknown &&
           !(slots_[at].hash == hash && equalFolded(nameOf(text, slots_[at].number), name)))
      at = (at + 1) & (slots_.size() - 1);
    return at;
  }

  void grow() {
    std::vector<Slot> old(slots_.empty() ? 64 : slots_.size() * 2);
    old.swap(slots_);
    for (const Slot& slot : old) {
      if (slot.number == kUnknown) continue;
      std::size_t at = slot.hash & (slots_.size() - 1);
      while (slots_[at].number != kUnknown) at = (at + 1) & (slots_.size() - 1);
      slots_[at] = slot;
    }
  }

  std::vector<Slot> slots_;  // a power of two, at most half of them taken
  std::vector<Place> places_;
};

}  // namespace tintline::vb
