// See html_text.h. Tested by tests/golden/exact.
#include "listing/html_text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "listing/utf8.h"

namespace tintline::listing {
namespace {

// HTML allows neither control characters, but for tab and line ends, nor noncharacters.
bool isForbidden(char32_t c) {
  if (c < 0x20) return c != '\t' && c != '\n' && c != '\f';
  return (c >= 0x7F && c <= 0x9F) || (c >= 0xFDD0 && c <= 0xFDEF) || (c & 0xFFFE) == 0xFFFE;
}

bool changesDirection(char32_t c) {
  return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

std::u8string_view reference(char32_t c) {
  switch (c) {
    case '&':
      return u8"&amp;";
    case '<':
      return u8"&lt;";
    case '>':
      return u8"&gt;";
    case '"':
      return u8"&quot;";
    default:
      return {};
  }
}

// ASCII that means nothing in HTML.
constexpr std::array<bool, 256> kPlain = [] {
  std::array<bool, 256> plain{};
  for (unsigned c = 0x20; c < 0x7F; ++c) plain[c] = c != '&' && c != '<' && c != '>' && c != '"';
  return plain;
}();

// What is shown for a character that HTML does not allow.
char32_t picture(char32_t c) {
  if (c == 0 || c > 0x7F) return kReplacement;
  return c == 0x7F ? 0x2421 : 0x2400 + c;
}

// A character that has its number as title.
void writeTitled(Output& out, std::string_view tag, char32_t shown, char32_t number) {
  std::array<char, 8> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), std::uint32_t{number}, 16).ptr;
  std::string text(digits.begin(), end);
  text.insert(0, text.size() < 4 ? 4 - text.size() : 0, '0');
  std::ranges::transform(text, text.begin(), [](char c) { return c >= 'a' ? char(c - 32) : c; });
  std::u8string character;
  appendUtf8(character, shown);
  out << tag << "\"U+" << text << "\">" << character << "</span>";
}

void writeSpecial(Output& out, std::u8string_view character) {
  const char32_t c = codePointOf(character);
  if (const auto written = reference(c); !written.empty())
    out << written;
  else if (isForbidden(c))
    writeTitled(out, "<span title=", picture(c), c);
  else if (changesDirection(c))
    writeTitled(out, "<span style=unicode-bidi:isolate title=", c, c);
  else
    out << character;
}

}  // namespace

void appendHtml(std::u8string& html, std::u8string_view text) {
  appendText(html, text, kPlain, [&](std::u8string_view character) {
    const char32_t c = codePointOf(character);
    if (const auto written = reference(c); !written.empty())
      html += written;
    else if (isForbidden(c))
      appendUtf8(html, picture(c));
    else
      html += character;
  });
}

std::u8string toHtml(std::u8string_view text) {
  std::u8string html;
  appendHtml(html, text);
  return html;
}

namespace detail {
namespace {

// Where the first byte is that begins a character which may not stand as it is.
std::size_t firstSpecial(Block block) {
  return firstMarked(((block < 0x20) & (block != '\t')) | (block == '&') |
                     ((block & 0xFD) == '<') |  // and '>'
                     (block == 0x7F) | (block == 0xC2) | (block == 0xE2) | (block >= 0xEF));
}

}  // namespace

void writeLongHtml(Output& out, std::u8string_view text, const char8_t* end) {
  while (!text.empty()) {
    Block block{};
    if (end - text.data() >= static_cast<std::ptrdiff_t>(sizeof block))
      std::memcpy(&block, text.data(), sizeof block);
    else
      std::memcpy(&block, text.data(), std::min(text.size(), sizeof block));
    std::memcpy(out.reserve(), &block, sizeof block);
    const std::size_t special = firstSpecial(block);
    if (special == sizeof block && text.size() >= sizeof block) {
      out.advance(sizeof block);
      text.remove_prefix(sizeof block);
      continue;
    }
    const std::size_t plain = std::min(special, text.size());
    out.advance(plain);
    text.remove_prefix(plain);
    if (text.empty()) return;
    const std::size_t size = sizeOfFirst(text);
    writeSpecial(out, text.substr(0, size));
    text.remove_prefix(size);
  }
}

}  // namespace detail

}  // namespace tintline::listing
