// See cStringBuilder.h. Tested by tests/unit/base/cStringBuilder_test.cpp.
#include "base/cStringBuilder.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/text.h"

namespace tintline {

void cStringBuilder::ChunkSize(std::size_t characters) {
  if (characters == 0) throw std::invalid_argument("cStringBuilder: chunk size 0");
  if (characters > kMaxLength) throw std::overflow_error("cStringBuilder: chunk size");
  chunk_ = characters;
}

std::string cStringBuilder::ToString() && {
  buffer_.resize(used_);
  used_ = 0;
  return std::exchange(buffer_, {});
}

void cStringBuilder::TheString(std::string_view text) {
  if (text.empty()) {
    buffer_.clear();
    used_ = 0;
    return;
  }
  while (Capacity() < text.size()) addChunk();
  std::copy(text.begin(), text.end(), buffer_.begin());
  used_ = text.size();
}

void cStringBuilder::Insert(std::size_t index, std::string_view text) {
  if (index > used_) return;
  makeRoomFor(text.size());
  const auto gap = buffer_.begin() + static_cast<std::ptrdiff_t>(index);
  const auto end = buffer_.begin() + static_cast<std::ptrdiff_t>(used_);
  std::copy_backward(gap, end, end + static_cast<std::ptrdiff_t>(text.size()));
  std::copy(text.begin(), text.end(), gap);
  used_ += text.size();
}

void cStringBuilder::Remove(std::size_t index, std::size_t count) {
  if (index > used_ || count > used_ - index) return;
  const auto begin = buffer_.begin() + static_cast<std::ptrdiff_t>(index);
  const auto end = buffer_.begin() + static_cast<std::ptrdiff_t>(used_);
  std::copy(begin + static_cast<std::ptrdiff_t>(count), end, begin);
  used_ -= count;
}

std::size_t cStringBuilder::Find(std::string_view text, std::size_t start, CompareMode mode) const {
  if (start == 0) return 0;
  const std::string_view buffer(buffer_);
  const std::size_t hit = mode == CompareMode::Binary ? buffer.find(text, start - 1)
                                                      : findIgnoreCase(buffer, text, start - 1);
  return hit != std::string_view::npos && hit + 1 < used_ ? hit + 1 : 0;
}

void cStringBuilder::HeapMinimize() {
  std::size_t kept = Capacity();
  while (kept - used_ > chunk_) kept -= chunk_;
  buffer_.resize(kept);
  buffer_.shrink_to_fit();
}

void cStringBuilder::addChunk() {
  if (chunk_ > kMaxLength - Capacity()) throw std::overflow_error("cStringBuilder: text too long");
  buffer_.append(chunk_, ' ');
}

void cStringBuilder::makeRoomFor(std::size_t characters) {
  if (characters > appendLimit()) throw std::length_error("cStringBuilder: piece too long");
  if (characters > Capacity() - used_) addChunk();
}

}  // namespace tintline
