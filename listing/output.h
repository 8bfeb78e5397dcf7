// Collects what is written and gives it to a stream in large pieces.
//
// Tested by tests/golden/exact.
#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <memory>
#include <ostream>
#include <string_view>

namespace tintline::listing {

class Output {
 public:
  static constexpr std::size_t kRoom = 1024;  // the most that `reserve` gives

  explicit Output(std::ostream& stream);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  // Where at least kRoom bytes can be written; `advance` tells how many were.
  char* reserve() {
    if (!hasRoom()) flush();
    return next_;
  }
  // The same, without writing anything first: null when there is no room.
  char* room() { return hasRoom() ? next_ : nullptr; }
  void advance(std::size_t size) { next_ += size; }

  // Gives all that was collected to the stream. Its failures show in the stream's state.
  void flush();

  Output& operator<<(std::string_view text) {
    if (text.size() > kRoom) return putLong(text);
    std::memcpy(reserve(), text.data(), text.size());
    advance(text.size());
    return *this;
  }
  Output& operator<<(char character) {
    *reserve() = character;
    advance(1);
    return *this;
  }
  Output& operator<<(std::u8string_view text) {
    return *this << std::string_view(reinterpret_cast<const char*>(text.data()), text.size());
  }
  Output& operator<<(std::unsigned_integral auto number) {
    char* const begin = reserve();
    next_ = std::to_chars(begin, begin + kRoom, number).ptr;
    return *this;
  }

 private:
  Output& putLong(std::string_view text);
  bool hasRoom() const { return static_cast<std::size_t>(end_ - next_) >= kRoom; }

  std::ostream& stream_;
  std::unique_ptr<char[]> buffer_;
  char* next_;
  char* end_;
};

}  // namespace tintline::listing
