// Any text as text of an HTML document, of which nothing is lost and nothing becomes markup.
//
// Of the characters that HTML does not allow, a control character is shown by its picture
// (U+2400 ...), the others by U+FFFD; in code a title tells which it was. Characters that change
// the direction of what follows are kept, but change nothing outside of their element.
//
// Tested by tests/golden/exact and tests/unit/any_text_property_test.cpp.
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

#include "base/block.h"
#include "listing/output.h"

namespace tintline::listing {

// Text between tags, or in an attribute that stands in double quotes.
void appendHtml(std::u8string& html, std::u8string_view text);
std::u8string toHtml(std::u8string_view text);

namespace detail {

// Where the first byte is that is not ASCII, a control or begins markup. Almost no text of code
// has one, and it is told faster than whether it may stand as it is.
inline std::size_t firstUnusual(Block block) {
  const auto shifted = std::bit_cast<BlockMarks>(static_cast<Block>(block + 1));
  return firstMarked((shifted < 0x21) | (block == '&') | ((block | 2) == '>'));
}

void writeLongHtml(Output& out, std::u8string_view text, const char8_t* end);

}  // namespace detail

// Writes text of the code (UTF-8, without line ends) between tags. `end` is the end of the memory
// that may be read, at or behind the end of the text.
inline void writeHtml(Output& out, std::u8string_view text, const char8_t* end) {
  Block block;
  if (text.size() > sizeof block || end - text.data() < static_cast<std::ptrdiff_t>(sizeof block))
    return detail::writeLongHtml(out, text, end);
  std::memcpy(&block, text.data(), sizeof block);
  if (detail::firstUnusual(block) < text.size()) return detail::writeLongHtml(out, text, end);
  std::memcpy(out.reserve(), &block, sizeof block);
  out.advance(text.size());
}

}  // namespace tintline::listing
