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

// The index of the first byte that is marked, 16 when none is.
inline std::size_t firstMarked(BlockMarks marks) {
#ifdef __SSE2__
  const auto bits = static_cast<unsigned>(_mm_movemask_epi8(std::bit_cast<__m128i>(marks)));
  return static_cast<std::size_t>(std::countr_zero(bits | 0x10000U));
#else
  const auto halves = std::bit_cast<std::array<std::uint64_t, 2> >(marks);
  const int zeros = halves[0] != 0 ? std::countr_zero(halves[0]) : 64 + std::countr_zero(halves[1]);
  return static_cast<std::size_t>(zeros) / 8;
#endif
}

}  // namespace tintline
