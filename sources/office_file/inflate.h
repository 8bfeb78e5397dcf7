// Inflating, by zlib.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "sources/office_file/byte_source.h"
#include "sources/office_file/fault.h"
#include "sources/office_file/limits.h"

namespace tintline::office_file {

enum class Wrapping : std::uint8_t {
  Raw,  // deflate alone, as in zip packages (RFC 1951)
  Zlib  // with zlib's head and checksum (RFC 1950)
};

// Inflates what lies from `offset` to `end` in the source and stops at the end of the stream, which
// others bytes may follow, or at `limit` bytes of result. What was inflated in front of damage is
// given with the fault. The work is spent.
Bytes inflated(ByteSource& source, std::uint64_t offset, std::uint64_t end, Wrapping wrapping,
               std::size_t limit, Budget& budget);

std::uint32_t crc32Of(std::string_view bytes);

}  // namespace tintline::office_file
