// Where the words of a line are and what they are made of: a bit for each character, made for
// sixty-four characters at a time.
//
// Tested by tests/unit/engine/engine_property_test.cpp.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/block.h"

namespace tintline {

class LineMap {
  struct Bits {
    std::uint64_t blank;
    std::uint64_t special;  // , ( ) : < > " and code 3
    std::uint64_t other;    // all that do not pass fkt_NurBuchstaben
  };

 public:
  // Bytes behind a line: a window that begins at its end, and what is looked at behind that.
  static constexpr std::size_t kReadable = 80;

  // The words of the line in order: what stands between blanks and is not empty. They live until
  // the map changes.
  class Words {
   public:
    explicit Words(const LineMap& map)
        : window_(map.windows_.data()), last_(&map.windows_.back()), words_(~window_->blank) {}

    // Goes on to the first or next word; false behind the last one.
    bool next() {
      while (words_ == 0) {
        if (window_ == last_) return false;
        enterWindow();
      }
      std::uint64_t word = ~std::uint64_t{0} << std::countr_zero(words_);
      begin_ = offset_ + static_cast<std::size_t>(std::countr_zero(words_));
      special_ = other_ = 0;
      for (; (window_->blank & word) == 0; word = ~std::uint64_t{0}) {
        note(word);
        enterWindow();
      }
      const int end = std::countr_zero(window_->blank & word);
      const std::uint64_t behind = ~std::uint64_t{0} << end;
      note(word & ~behind);
      words_ &= behind;
      end_ = offset_ + static_cast<std::size_t>(end);
      return true;
    }

    std::size_t begin() const { return begin_; }
    std::size_t end() const { return end_; }

    // Whether one of , ( ) : < > " or code 3 is in it.
    bool holdsSpecial() const { return special_ != 0; }

    // Whether it passes fkt_NurBuchstaben.
    bool isLetters() const { return other_ == 0; }

   private:
    void enterWindow() {
      words_ = ~(++window_)->blank;
      offset_ += kWindow;
    }
    void note(std::uint64_t characters) {
      special_ |= window_->special & characters;
      other_ |= window_->other & characters;
    }

    const Bits *window_, *last_;
    std::uint64_t words_;  // characters of this window that are no blanks, from `end_` on
    std::size_t offset_ = 0, begin_ = 0, end_ = 0;
    std::uint64_t special_ = 0, other_ = 0;
  };

  // Reads a line. The bytes in front of `limit`, at or behind its end, can be read. Returns the
  // line, behind which kReadable bytes can be read; it lives until the next call, or as long as
  // the line that was given.
  std::string_view read(std::string_view line, const char* limit);

  // Leaves that many of the line's characters.
  void cut(std::size_t size) {
    size_ = size;
    windows_.resize(size / kWindow + 1);
    windows_.back().blank |= ~std::uint64_t{0} << size % kWindow;
  }

  bool holdsApostrophe() const { return apostrophe_; }

  // False when " REM" is not in the line, in any case.
  bool mayHoldRem() const { return rem_; }

  // Where the first word begins; the line's size when there is none.
  std::size_t firstWord() const {
    std::size_t window = 0;
    while (window + 1 < windows_.size() && ~windows_[window].blank == 0) ++window;
    const int first = std::countr_one(windows_[window].blank);
    return std::min(kWindow * window + static_cast<std::size_t>(first), size_);
  }

 private:
  static constexpr std::size_t kWindow = 64;  // characters, one a bit

  void readWindow(const char* text, Bits& bits, std::uint64_t behind);

  std::vector<Bits> windows_;  // the last one ends behind the line, as if blanks followed it
  std::size_t size_ = 0;
  bool apostrophe_ = false, rem_ = false;
  std::string padded_;
};

}  // namespace tintline
