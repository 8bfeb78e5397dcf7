// See line_text.h. Tested by tests/unit/reformat/wrapping_test.cpp.
#include "reformat/line_text.h"

#include <algorithm>

#include "base/text.h"
#include "vb/scan.h"

namespace tintline {
namespace {

const char8_t* decoded(std::string_view text) {
  return reinterpret_cast<const char8_t*>(text.data());
}

// Where the blanks at the end of decoded text begin.
std::size_t endOfDecoded(std::string_view text) {
  constexpr std::string_view kWideBlank = "\u3000";
  for (;;) {
    if (text.ends_with(kWideBlank))
      text.remove_suffix(kWideBlank.size());
    else if (!text.empty() &&
             vb::classOf(static_cast<char8_t>(text.back())) == vb::ByteClass::Blank)
      text.remove_suffix(1);
    else
      return text.size();
  }
}

}  // namespace

LineList linesOf(std::u8string_view text) {
  LineList lines;
  lines.reserveBytes(text.size());
  const char8_t* const end = text.data() + text.size();
  for (const char8_t* begin = text.data(); begin < end;) {
    const char8_t* next = vb::findAnyOf<u8'\r', u8'\n'>(begin, end);
    if (next < end) next = vb::skipLineEnd(next, end);
    lines.append({reinterpret_cast<const char*>(begin), static_cast<std::size_t>(next - begin)});
    begin = next;
  }
  return lines;
}

std::u8string textOf(const LineList& lines) {
  return {decoded(lines.text()), decoded(lines.text()) + lines.bytes()};
}

std::size_t skipBlanks(std::string_view text, std::size_t from, LineText kind) {
  if (kind == LineText::Ansi) return std::min(text.find_first_not_of(" \t", from), text.size());
  const char8_t* const begin = decoded(text);
  return static_cast<std::size_t>(vb::skipBlanks(begin + from, begin + text.size()) - begin);
}

std::string_view contentOf(std::string_view line, LineText kind) {
  if (kind == LineText::Ansi) return RTrim(line);
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line.substr(0, endOfDecoded(line));
}

std::size_t widthOf(std::string_view text, LineText kind) {
  if (kind == LineText::Ansi) return text.size();
  const auto following = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
  return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), following));
}

}  // namespace tintline
