// See line_map.h. Tested by tests/unit/engine/engine_property_test.cpp.
#include "engine/line_map.h"

namespace tintline {

std::string_view LineMap::read(std::string_view line, const char* limit) {
  if (limit - (line.data() + line.size()) < static_cast<std::ptrdiff_t>(kReadable)) {
    padded_.assign(line).append(kReadable, '\0');
    line = std::string_view(padded_).substr(0, line.size());
  }
  size_ = line.size();
  apostrophe_ = rem_ = false;
  windows_.resize(size_ / kWindow + 1);
  for (std::size_t i = 0; i < windows_.size(); ++i) {
    const bool last = i + 1 == windows_.size();
    const std::uint64_t behind = last ? ~std::uint64_t{0} << size_ % kWindow : 0;
    readWindow(line.data() + kWindow * i, windows_[i], behind);
  }
  return line;
}

// `behind` are the bits of the characters behind the line.
void LineMap::readWindow(const char* text, Bits& bits, std::uint64_t behind) {
  std::uint64_t blank = 0, special = 0, letter = 0, apostrophe = 0;
  BlockMarks rem{};
  const unsigned end = behind >> 31 & 1 ? kWindow / 2 : kWindow;  // many lines are short
  for (unsigned at = 0; at < end; at += sizeof(Block)) {
    const auto bitsOf = [at](BlockMarks marks) { return std::uint64_t{markedBits(marks)} << at; };
    const Block block = loadBlock(text + at), folded = block | 0x20;
    const BlockMarks isBlank = block == ' ';
    blank |= bitsOf(isBlank);
    special |= bitsOf((block == ',') | (block == ':') | (block == '"') | (block == 3) |
                      ((block & 0xFE) == '(') | ((block & 0xFD) == '<'));
    letter |= bitsOf((static_cast<Block>(folded - 'a') < 26) | (block == '$'));
    apostrophe |= bitsOf(block == '\'');
    rem |= isBlank & ((loadBlock(text + at + 1) | 0x20) == 'r') &
           ((loadBlock(text + at + 3) | 0x20) == 'm');
  }
  bits = {blank | behind, special, ~letter};
  apostrophe_ |= (apostrophe & ~behind) != 0;
  rem_ |= markedBits(rem) != 0;
}

}  // namespace tintline
