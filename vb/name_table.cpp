// See name_table.h. Tested by tests/unit/vb/fold_test.cpp.
#include "vb/name_table.h"

#include <string>

namespace tintline::vb {
namespace {

std::uint64_t mix(std::uint64_t hash) {
  hash *= 0x9E3779B97F4A7C15U;
  return hash ^ hash >> 32;
}

}  // namespace

void NameKey::setWhole() {
  if (!setFrom(name_)) setFrom(folded(name_));
}

// Takes the folded text, and tells whether it was all ASCII.
bool NameKey::setFrom(std::u8string_view text) {
  Block all{};
  for (std::size_t at = 0; at < text.size(); at += kShort) {
    Block block{};
    std::memcpy(&block, text.data() + at, std::min(text.size() - at, kShort));
    all |= block;
    const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>(foldAscii(block));
    if (at == 0) head_ = halves[0];
    tail_ = at == 0 ? halves[1] : mix(mix(tail_ ^ halves[0]) ^ halves[1]);
  }
  size_ = static_cast<std::uint32_t>(text.size());
  return firstMarked(all >= 0x80) == kShort;
}

}  // namespace tintline::vb
