// See name_table.h. Tested by tests/unit/vb/fold_test.cpp.
#include "vb/name_table.h"

#include <string>

namespace tintline::vb {

NameKey NameKey::whole(std::u8string_view name) {
  NameKey key(name, BlockHalves{});
  if (!key.setFrom(name)) key.setFrom(folded(name));
  return key;
}

// Takes the folded text, and tells whether it was all ASCII.
bool NameKey::setFrom(std::u8string_view text) {
  Block all{};
  for (std::size_t at = 0; at < text.size(); at += kShort) {
    Block block{};
    std::memcpy(&block, text.data() + at, std::min(text.size() - at, kShort));
    all |= block;
    const BlockHalves halves = halvesOf(foldAscii(block));
    if (at == 0) head_ = halves.first;
    tail_ = at == 0 ? halves.last : mix(mix(tail_ ^ halves.first) ^ halves.last);
  }
  size_ = text.size();
  return firstMarked(all >= 0x80) == kShort;
}

std::uint32_t NameTable::addNew(NameKey key, std::size_t offset) {
  if (entries_.size() * 2 >= slots_.size()) resizeSlots(slots_.empty() ? 256 : slots_.size() * 2);
  addSlot({key.hash(), size()});
  entries_.push_back({key.head_, key.tail_, key.size_, static_cast<std::uint32_t>(offset),
                      static_cast<std::uint32_t>(key.name().size())});
  return size() - 1;
}

void NameTable::addSlot(const Slot& slot) {
  std::size_t at = slot.hash >> shift_;
  while (slots_[at].number != kUnknown) at = (at + 1) & (slots_.size() - 1);
  slots_[at] = slot;
}

void NameTable::reserve(std::size_t names) {
  if (names * 2 > slots_.size()) resizeSlots(std::bit_ceil(names * 2));
}

void NameTable::resizeSlots(std::size_t count) {
  std::vector<Slot> old(count);
  old.swap(slots_);
  entries_.reserve(count / 2);
  shift_ = 32 - static_cast<unsigned>(std::countr_zero(count));
  for (const Slot& slot : old)
    if (slot.number != kUnknown) addSlot(slot);
}

}  // namespace tintline::vb
