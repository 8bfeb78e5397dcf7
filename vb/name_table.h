// Numbers for names that are compared without regard to case: equal names have equal numbers,
// counted from 0. The names themselves stay where they are, in one text.
//
// Tested by tests/unit/vb/fold_test.cpp.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/block.h"
#include "vb/fold.h"

namespace tintline::vb {

// What a name is looked up by, equal for equal names: the folded name itself when it has up to
// sixteen bytes, else its beginning and a hash of the whole.
class NameKey {
 public:
  // The bytes in front of `limit`, at or behind the end of the name, can be read.
  NameKey(std::u8string_view name, const char8_t* limit) : NameKey(keyOf(name, limit)) {}
  explicit NameKey(std::u8string_view name) : NameKey(name, name.data() + name.size()) {}

  // The same of a name of at most sixteen ASCII characters, with which `block` begins.
  static NameKey ofShort(std::u8string_view name, Block block) {
    return NameKey(name, halvesOf(foldAscii(firstBytes(block, name.size()))));
  }

  std::u8string_view name() const { return name_; }
  std::uint32_t hash() const {
    return static_cast<std::uint32_t>((head_ * factor() + tail_ * std::rotl(factor(), 32)) >> 32);
  }

 private:
  friend class NameTable;
  static constexpr std::size_t kShort = sizeof(Block);

  NameKey(std::u8string_view name, BlockHalves folded) : NameKey(name, folded, name.size()) {}
  NameKey(std::u8string_view name, BlockHalves folded, std::size_t size)
      : name_(name), head_(folded.first), tail_(folded.last), size_(size) {}

  // Odd, and another in each run, as the system loads programs at places that nobody foresees: no
  // file can be written whose names all have one hash.
  static std::uint64_t factor() {
    static constexpr char kSomewhere = 0;
    return (reinterpret_cast<std::uintptr_t>(&kSomewhere) | 1) * 0x9E3779B97F4A7C15U;
  }
  static std::uint64_t mix(std::uint64_t hash) {
    hash *= factor();
    return hash ^ hash >> 32;
  }
  static NameKey keyOf(std::u8string_view name, const char8_t* limit) {
    if (name.size() <= kShort && limit - name.data() >= static_cast<std::ptrdiff_t>(kShort)) {
      const Block block = loadBlock(name.data());
      if (firstMarked(firstBytes(block, name.size()) >= 0x80) == kShort)
        return ofShort(name, block);
    }
    return whole(name);
  }
  static Block foldAscii(Block block) {
    return block | (static_cast<Block>(block - 'A' < 26) & 0x20);
  }
  static NameKey whole(std::u8string_view name);  // also long ones and those beyond ASCII
  bool setFrom(std::u8string_view text);

  std::u8string_view name_;
  std::uint64_t head_, tail_;
  std::size_t size_;  // bytes of the folded name
};

class NameTable {
 public:
  static constexpr std::uint32_t kUnknown = 0xFFFFFFFF;

  // Each call gives the text that the names added so far lie in.
  [[gnu::always_inline]] std::uint32_t find(std::u8string_view text, const NameKey& key) const {
    if (slots_.empty()) return kUnknown;
    const std::uint32_t hash = key.hash();
    for (std::size_t at = hash >> shift_;; at = (at + 1) & (slots_.size() - 1)) {
      const Slot slot = slots_[at];
      if (slot.number == kUnknown || (slot.hash == hash && isAt(text, slot.number, key)))
        return slot.number;
    }
  }

  // The number of a name, which is a new one (size() before the call) when it was not known. In
  // that case it lies, or will lie, at `offset` of the text.
  [[gnu::always_inline]] std::uint32_t add(std::u8string_view text, const NameKey& key,
                                           std::size_t offset) {
    const std::uint32_t known = find(text, key);
    return known != kUnknown ? known : addNew(key, offset);
  }

  // The same for a name that lies in the text.
  std::uint32_t add(std::u8string_view text, std::u8string_view name) {
    return add(text, NameKey(name, text.data() + text.size()),
               static_cast<std::size_t>(name.data() - text.data()));
  }

  std::u8string_view nameOf(std::u8string_view text, std::uint32_t number) const {
    return text.substr(entries_[number].offset, entries_[number].length);
  }
  NameKey keyOf(std::u8string_view text, std::uint32_t number) const {
    const Entry& entry = entries_[number];
    return NameKey(nameOf(text, number), {entry.head, entry.tail}, entry.size);
  }
  std::uint32_t size() const { return static_cast<std::uint32_t>(entries_.size()); }
  void reserve(std::size_t names);
  std::size_t memory() const {  // bytes
    return slots_.capacity() * sizeof(Slot) + entries_.capacity() * sizeof(Entry);
  }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t number = kUnknown;
  };
  struct Entry {
    std::uint64_t head, tail;
    std::size_t size;  // of the folded name
    std::uint32_t offset, length;
  };

  std::uint32_t addNew(NameKey key, std::size_t offset);
  void addSlot(const Slot& slot);
  void resizeSlots(std::size_t count);

  [[gnu::always_inline]] bool isAt(std::u8string_view text, std::uint32_t number,
                                   const NameKey& key) const {
    const Entry& entry = entries_[number];
    return entry.head == key.head_ && entry.tail == key.tail_ && entry.size == key.size_ &&
           (key.size_ <= NameKey::kShort || equalFolded(nameOf(text, number), key.name()));
  }

  std::vector<Slot> slots_;  // a power of two, at most half of them taken
  unsigned shift_ = 0;       // of a hash to its slot: its highest bits depend on the whole name
  std::vector<Entry> entries_;
};

}  // namespace tintline::vb
