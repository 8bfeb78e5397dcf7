// See vba_compression.h.
// Tested by tests/unit/sources/office_file_test.cpp and fuzz/vba_compression_fuzz.cpp.
#include "sources/office_file/vba_compression.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "sources/office_file/byte_source.h"

namespace tintline::office_file {
namespace {

constexpr char kContainerSignature = 1;
constexpr unsigned kChunkSignature = 3;
constexpr std::size_t kChunkText = 4096;  // what a chunk gives, but for the last
constexpr std::size_t kChunkHead = 2;
constexpr unsigned kCompressedFlag = 0x8000;  // without it a chunk is 4,096 bytes as they are

// The text of one chunk while it grows.
struct ChunkText {
  // Copying goes on in whole blocks, up to one block behind what is copied.
  static constexpr std::size_t kBlock = 8;

  std::array<char, kChunkText + kBlock> text;
  std::size_t size = 0;

  std::size_t room() const { return kChunkText - size; }

  // `length` characters that stand `offset` before the end; they may overlap what they make.
  void repeat(std::size_t offset, std::size_t length) {
    const char* from = text.data() + size - offset;
    char* to = text.data() + size;
    length = std::min(length, room());
    size += length;
    if (offset < kBlock) {
      for (const char* const end = to + length; to != end;) *to++ = *from++;
      return;
    }
    for (std::size_t copied = 0; copied < length; copied += kBlock)
      std::memcpy(to + copied, from + copied, kBlock);
  }
};

// A chunk behind its head. Its text is cut at what a chunk may give.
Fault readChunk(std::string_view chunk, ChunkText& result) {
  for (std::size_t at = 0; at < chunk.size();) {
    unsigned flags = static_cast<unsigned char>(chunk[at++]);
    if (flags == 0 && chunk.size() - at >= 8 && result.room() >= 8) {
      std::memcpy(result.text.data() + result.size, chunk.data() + at, 8);
      result.size += 8;
      at += 8;
      continue;
    }
    for (int i = 0; i < 8 && at < chunk.size(); ++i, flags >>= 1) {
      if (result.room() == 0) return Fault::None;
      if ((flags & 1U) == 0) {
        result.text[result.size++] = chunk[at++];
        continue;
      }
      if (result.size == 0 || chunk.size() - at < 2) return Fault::Damaged;
      const unsigned token = u16(chunk, at);
      at += 2;
      const int offsetBits = std::max(4, static_cast<int>(std::bit_width(result.size - 1)));
      const std::size_t offset = (token >> (16 - offsetBits)) + 1;
      if (offset > result.size) return Fault::Damaged;
      result.repeat(offset, (token & (0xFFFFU >> offsetBits)) + 3);
    }
  }
  return Fault::None;
}

// Appends what the chunk behind that head gives.
Fault decompressChunk(unsigned head, std::string_view chunk, std::string& text) {
  if ((head >> 12 & 7U) != kChunkSignature) return Fault::Damaged;
  if ((head & kCompressedFlag) == 0) {
    text += chunk;
    return Fault::None;
  }
  ChunkText result;
  const Fault fault = readChunk(chunk, result);
  text.append(result.text.data(), result.size);
  return fault;
}

}  // namespace

Bytes decompressed(std::string_view container, std::size_t limit) {
  Bytes result;
  if (container.empty()) return {{}, Fault::Truncated};
  if (container.front() != kContainerSignature) return {{}, Fault::Damaged};
  container.remove_prefix(1);
  bool last = false;  // a short chunk was read: others may follow, or bytes that mean nothing
  while (container.size() >= kChunkHead && result.bytes.size() < limit) {
    const unsigned head = u16(container, 0);
    const std::size_t announced = (head & kCompressedFlag) != 0 ? (head & 0xFFFU) + 1 : kChunkText;
    const std::size_t size = std::min(announced, container.size() - kChunkHead);
    const std::size_t before = result.bytes.size();
    Fault fault = decompressChunk(head, container.substr(kChunkHead, size), result.bytes);
    if (fault == Fault::None && size < announced) fault = Fault::Truncated;
    if (fault != Fault::None) {
      if (last || container.find_first_not_of('\0') == container.npos)
        result.bytes.resize(before);  // bytes behind the last chunk
      else
        result.fault = fault;
      return result;
    }
    last = result.bytes.size() - before < kChunkText;
    container.remove_prefix(kChunkHead + size);
  }
  if (result.bytes.size() >= limit && container.size() >= kChunkHead) {
    result.bytes.resize(limit);
    result.fault = Fault::TooLarge;
  }
  return result;
}

std::size_t findSource(std::string_view stream) {
  // A first chunk of literals: a flag byte in front of each eight of them.
  constexpr std::string_view kAttribute("\0Attribut\0e ", 11);
  constexpr std::size_t kInFront = 3;  // the container's signature and the chunk's head
  for (std::size_t at = 0; (at = stream.find(kAttribute, at)) != stream.npos; ++at)
    if (at >= kInFront && stream[at - kInFront] == kContainerSignature) return at - kInFront;
  return stream.npos;
}

}  // namespace tintline::office_file
