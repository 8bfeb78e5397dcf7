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
  allocated_ = 0;
  return std::exchange(content_, {});
}

void cStringBuilder::TheString(std::string_view text) {
  if (text.empty()) allocated_ = 0;
  while (allocated_ < text.size()) addChunk();
  content_ = text;
}

void cStringBuilder::Insert(std::size_t index, std::string_view text) {
  if (index > content_.size()) return;
  makeRoomFor(text.size());
  content_.insert(index, text);
}

void cStringBuilder::Remove(std::size_t index, std::size_t count) {
  if (index > content_.size() || count > content_.size() - index) return;
  content_.erase(index, count);
}

std::size_t cStringBuilder::Find(std::string_view text, std::size_t start, CompareMode mode) const {
  if (start == 0) return 0;
  // A match may begin in the content and end among the blanks of the reserve.
  const std::size_t reserve = std::min(allocated_ - content_.size(), text.size());
  const std::string buffer = content_ + std::string(reserve, ' ');
  const std::size_t hit = mode == CompareMode::Binary ? buffer.find(text, start - 1)
                                                      : findIgnoreCase(buffer, text, start - 1);
  return hit != std::string::npos && hit + 1 < content_.size() ? hit + 1 : 0;
}

void cStringBuilder::HeapMinimize() {
  while (allocated_ - content_.size() > chunk_) allocated_ -= chunk_;
  content_.shrink_to_fit();
}

void cStringBuilder::addChunk() {
  if (chunk_ > kMaxLength - allocated_) throw std::overflow_error("cStringBuilder: text too long");
  allocated_ += chunk_;
}

void cStringBuilder::makeRoomFor(std::size_t characters) {
  if (characters > appendLimit()) throw std::length_error("cStringBuilder: piece too long");
  if (characters > allocated_ - content_.size()) addChunk();
}

}  // namespace tintline
