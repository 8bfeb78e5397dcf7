// Collects a long text from many small pieces. The buffer is longer than the
// content and grows in chunks of blanks, so an append copies its own text only.
// The blanks of the reserve are counted, not stored: nothing but Find can see them.
//
// Sizes and positions are characters. The limits come from sizes that count two
// bytes a character in 32 bits: beyond kMaxLength every growth throws
// std::overflow_error and leaves the content as it was.
//
// Tested by tests/unit/base/cStringBuilder_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tintline {

enum class CompareMode { Binary, Text };  // Text: without regard to case

class cStringBuilder {
 public:
  static constexpr std::size_t kMaxLength = 0x3FFFFFFF;

  std::size_t Length() const { return content_.size(); }
  std::size_t Capacity() const { return allocated_; }
  std::size_t ChunkSize() const { return chunk_; }

  // Sets the growth step. A step of 0 could never make room and throws
  // std::invalid_argument, one beyond kMaxLength std::overflow_error.
  void ChunkSize(std::size_t characters);

  // The content; an rvalue builder gives its buffer away.
  std::string ToString() const& { return content_; }
  std::string ToString() &&;

  // Replaces the whole content.
  void TheString(std::string_view text);

  // Adds `text` behind the content. The buffer grows by one chunk at most: a
  // text that does not fit then throws std::length_error, nothing is changed.
  void Append(std::string_view text) {
    if (text.size() > allocated_ - content_.size()) makeRoomFor(text.size());
    content_.append(text);
  }
  // NOLINTNEXTLINE(performance-unnecessary-value-param): by value is what sets it apart
  void AppendByVal(std::string text) { Append(text); }

  // Adds `text` in front of character `index` (0-based). Ignored when the index
  // lies behind the content; grows like Append.
  void Insert(std::size_t index, std::string_view text);
  // NOLINTNEXTLINE(performance-unnecessary-value-param): by value is what sets it apart
  void InsertByVal(std::size_t index, std::string text) { Insert(index, text); }

  // Takes `count` characters out from `index` on (0-based). Ignored when the
  // stretch does not lie within the content.
  void Remove(std::size_t index, std::size_t count);

  // 1-based position of `text` at or behind `start` (1-based), or 0. A position
  // counts only when it is below Length(), so a match at the very last
  // character is not found either: kept on purpose. An empty text is found at
  // `start`.
  std::size_t Find(std::string_view text, std::size_t start = 1,
                   CompareMode mode = CompareMode::Binary) const;

  // Gives back spare chunks until at most one chunk is in reserve.
  void HeapMinimize();

  // Takes memory for that many characters now; changes no size above.
  void reserveMemory(std::size_t characters) { content_.reserve(characters); }

  // How long a text Append takes at the moment.
  std::size_t appendLimit() const { return allocated_ - content_.size() + chunk_; }

 private:
  void addChunk();
  void makeRoomFor(std::size_t characters);

  std::string content_;
  std::size_t allocated_ = 0;  // length of the buffer: content and reserve
  std::size_t chunk_ = 8192;
};

}  // namespace tintline
