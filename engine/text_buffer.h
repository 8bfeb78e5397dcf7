// A growing stretch of characters for hot loops: room is asked for once per
// word, then characters and literals are put without further checks.
//
// Tested through the classes that write into it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace tintline {

class TextBuffer {
 public:
  std::string_view view() const { return {data_.get(), size_}; }
  void clear() { size_ = 0; }

  // Makes room for `more` further characters, keeping what is there.
  void ensure(std::size_t more) {
    if (more > capacity_ - size_) grow(more);
  }

  // The caller has made room for what it puts.
  void put(char c) { data_[size_++] = c; }
  void put(std::string_view text) {
    std::memcpy(data_.get() + size_, text.data(), text.size());
    size_ += text.size();
  }
  // The same of a text from whose beginning on kShort bytes can be read: one that is no longer
  // is copied with what stands behind it, as that takes no decisions.
  void putReadable(std::string_view text) {
    if (text.size() > kShort) return put(text);
    std::memcpy(data_.get() + size_, text.data(), kShort);
    size_ += text.size();
  }
  template <std::size_t N>
  void put(const char (&literal)[N]) {
    std::memcpy(data_.get() + size_, literal, N - 1);
    size_ += N - 1;
  }

 private:
  static constexpr std::size_t kShort = 32;

  void grow(std::size_t more) {
    const std::size_t wanted = std::max(size_ + more, 2 * capacity_);
    auto larger = std::make_unique_for_overwrite<char[]>(wanted + kShort);
    if (size_ > 0) std::memcpy(larger.get(), data_.get(), size_);
    data_ = std::move(larger);
    capacity_ = wanted;
  }

  std::unique_ptr<char[]> data_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;  // without room for what is copied behind a short text
};

}  // namespace tintline
