// Sixteen bytes at a time: compilers make single instructions of what is done to a Block.
//
// Tested by tests/unit/base/text_test.cpp and tests/unit/any_text_property_test.cpp.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace tintline {

static_assert(std::endian::native == std::endian::little);

using Block [[gnu::vector_size(16)]] = unsigned char;

// What comparing blocks gives: all bits of a byte that compared true, none of the others.
using BlockMarks [[gnu::vector_size(16)]] = signed char;

inline Block loadBlock(const void* bytes) {
  Block block;
  std::memcpy(&block, bytes, sizeof block);
  return block;
}

// The block with zeros behind its first `count` bytes, up to sixteen.
inline Block firstBytes(Block block, std::size_t count) {
  static constexpr auto kOnesAndZeros = [] {
    std::array<std::uint8_t, 2 * sizeof(Block)> bytes{};
    for (std::size_t i = 0; i < sizeof(Block); ++i) bytes[i] = 0xFF;
    return bytes;
  }();
  return block & loadBlock(kOnesAndZeros.data() + sizeof(Block) - count);
}

// The first eight bytes and the last.
struct BlockHalves {
  std::uint64_t first, last;
};
inline BlockHalves halvesOf(Block block) {
  using Halves [[gnu::vector_size(16)]] = std::uint64_t;
  const auto halves = std::bit_cast<Halves>(block);
  return {halves[0], halves[1]};
}

// A bit for each byte, the first one lowest: whether it is marked.
inline unsigned markedBits(BlockMarks marks) {
#ifdef __SSE2__
  return static_cast<unsigned>(_mm_movemask_epi8(std::bit_cast<__m128i>(marks)));
#else
  constexpr std::uint64_t kOnes = 0x0101010101010101, kGather = 0x0102040810204080;
  const BlockHalves halves = halvesOf(std::bit_cast<Block>(marks));
  const std::uint64_t first = (halves.first & kOnes) * kGather >> 56;
  const std::uint64_t last = (halves.last & kOnes) * kGather >> 56;
  return static_cast<unsigned>(first | last << 8);
#endif
}

// The index of the first byte that is marked, 16 when none is.
inline std::size_t firstMarked(BlockMarks marks) {
  return static_cast<std::size_t>(std::countr_zero(markedBits(marks) | 0x10000U));
}

}  // namespace tintline
