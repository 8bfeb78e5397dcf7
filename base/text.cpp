// See text.h. Tested by tests/unit/base/text_test.cpp.
#include "base/text.h"

#include <algorithm>

namespace tintline {

std::string_view LTrim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

std::string_view RTrim(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view Trim(std::string_view text) { return LTrim(RTrim(text)); }

std::string Space(std::ptrdiff_t count) {
  return std::string(static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0)), ' ');
}

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && startsWithIgnoreCase(a, b);
}

bool startsWithIgnoreCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i)
    if (toLower(text[i]) != toLower(prefix[i])) return false;
  return true;
}

namespace {

// Whether c | 0x20 is equal for two characters that are equal without regard to
// case: not so for the few partners that differ in other bits.
bool foldsByOneBit(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code < 0x80 || (code >= 0xA0 && code < 0xFF);
}

// False only when the first three characters of `part` stand nowhere in a row,
// without regard to case. May err the other way. Written so that the compiler
// makes vector code.
bool mayContainStart(std::string_view text, std::string_view part) {
  const auto fold = [](char c) { return static_cast<unsigned char>(c | 0x20); };
  const unsigned char a = fold(part[0]), b = fold(part[1]), c = fold(part[2]);
  unsigned char found = 0;
  for (std::size_t i = 2; i < text.size(); ++i)
    found |= static_cast<unsigned char>((fold(text[i - 2]) == a) & (fold(text[i - 1]) == b) &
                                        (fold(text[i]) == c));
  return found != 0;
}

}  // namespace

std::size_t findIgnoreCase(std::string_view text, std::string_view part, std::size_t from) {
  if (from > text.size() || part.size() > text.size() - from) return std::string_view::npos;
  if (part.empty()) return from;
  constexpr std::size_t kBlock = 256;  // a stretch without the part's start is passed in one go
  const bool filtered =
      part.size() > 2 && std::all_of(part.begin(), part.begin() + 3, foldsByOneBit);
  const char first = toLower(part.front());
  const std::size_t last = text.size() - part.size();
  for (std::size_t block = from; block <= last; block += kBlock) {
    const std::size_t end = std::min(block + kBlock, last + 1);
    if (filtered && !mayContainStart(text.substr(block, end - block + 2), part)) continue;
    for (std::size_t i = block; i < end; ++i)
      if (toLower(text[i]) == first && startsWithIgnoreCase(text.substr(i), part)) return i;
  }
  return std::string_view::npos;
}

bool containsIgnoreCase(std::string_view text, std::string_view part) {
  return findIgnoreCase(text, part) != std::string_view::npos;
}

namespace {
template <typename Find>
std::string replaceFound(std::string_view text, std::string_view from, std::string_view to,
                         Find find) {
  std::string result;
  std::size_t done = 0;
  for (std::size_t hit = find(text, from, 0); hit != std::string_view::npos;
       hit = find(text, from, done)) {
    result.append(text.substr(done, hit - done)).append(to);
    done = hit + from.size();
  }
  return result.append(text.substr(done));
}
}  // namespace

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  return replaceFound(
      text, from, to,
      [](std::string_view t, std::string_view part, std::size_t at) { return t.find(part, at); });
}

std::string ReplaceIgnoreCase(std::string_view text, std::string_view from, std::string_view to) {
  return replaceFound(text, from, to, findIgnoreCase);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  if (text.empty()) return pieces;
  std::size_t begin = 0;
  for (std::size_t end; (end = text.find(separator, begin)) != std::string_view::npos;
       begin = end + 1)
    pieces.push_back(text.substr(begin, end - begin));
  pieces.push_back(text.substr(begin));
  return pieces;
}

}  // namespace tintline
