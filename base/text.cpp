// See text.h. Tested by tests/unit/base/text_test.cpp.
#include "base/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "base/block.h"

namespace tintline {

std::string Space(std::ptrdiff_t count) {
  return std::string(static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0)), ' ');
}

bool equalsIgnoreCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && startsWithIgnoreCase(a, b);
}

namespace {

constexpr std::uint64_t kOnes = 0x0101010101010101U;  // one bit for each of eight characters

Block loadFolded(const char* text) { return loadBlock(text) | 0x20; }

}  // namespace

std::size_t CaselessText::findIn(std::string_view text, std::size_t from) const {
  if (from > text.size() || part_.size() > text.size() - from) return std::string_view::npos;
  constexpr std::size_t kStep = sizeof(Block);  // places that are looked at at once,
  constexpr std::size_t kRead = kStep + 2;      // by reading that many characters
  const std::size_t first = from + anchor_;     // where the anchor can be at first
  if (!filtered_ || text.size() - first < kRead) return findOneByOne(text, from);
  const Block wanted[] = {loadBlock(folded_[0].data()), loadBlock(folded_[1].data()),
                          loadBlock(folded_[2].data())};
  const std::size_t end = text.size() - part_.size() + anchor_ + 1;  // behind its last place
  for (std::size_t next = first; next < end; next += kStep) {
    const std::size_t at = std::min(next, text.size() - kRead);  // the last step overlaps
    const char* const block = text.data() + at;
    const auto equal = (loadFolded(block) == wanted[0]) & (loadFolded(block + 1) == wanted[1]) &
                       (loadFolded(block + 2) == wanted[2]);
    if (firstMarked(equal) == kStep) continue;
    const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>(equal);
    for (std::size_t half = 0; half < halves.size(); ++half)
      for (std::uint64_t places = halves[half] & kOnes; places != 0; places &= places - 1) {
        const std::size_t i = 8 * half + static_cast<std::size_t>(std::countr_zero(places)) / 8;
        const std::size_t place = at + i - anchor_;
        if (startsWithIgnoreCase(text.substr(place), part_)) return place;
      }
  }
  return std::string_view::npos;
}

std::size_t CaselessText::findOneByOne(std::string_view text, std::size_t from) const {
  if (part_.empty()) return from;
  const char first = toLower(part_.front());
  for (std::size_t at = from; at + part_.size() <= text.size(); ++at)
    if (toLower(text[at]) == first && startsWithIgnoreCase(text.substr(at), part_)) return at;
  return std::string_view::npos;
}

std::size_t findIgnoreCase(std::string_view text, std::string_view part, std::size_t from) {
  return CaselessText(part).findIn(text, from);
}

bool containsIgnoreCase(std::string_view text, std::string_view part) {
  return CaselessText(part).isIn(text);
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  result.reserve(text.size() + 4 * to.size());
  std::size_t done = 0;
  for (std::size_t hit; (hit = text.find(from, done)) != std::string_view::npos;
       done = hit + from.size())
    result.append(text, done, hit - done).append(to);
  return result.append(text, done);
}

namespace {

// Moves what stays to the front, without a copy of the text.
template <typename Find>
void eraseFound(std::string& text, std::size_t partSize, Find find) {
  std::size_t hit = find(0);
  if (hit == std::string::npos) return;
  std::size_t kept = hit;
  while (hit != std::string::npos) {
    const std::size_t from = hit + partSize;
    hit = find(from);
    const std::size_t stretch = std::min(hit, text.size()) - from;
    std::memmove(text.data() + kept, text.data() + from, stretch);
    kept += stretch;
  }
  text.resize(kept);
}

}  // namespace

void eraseAll(std::string& text, std::string_view part) {
  eraseFound(text, part.size(), [&](std::size_t from) { return text.find(part, from); });
}

void eraseAll(std::string& text, const CaselessText& part) {
  eraseFound(text, part.size(), [&](std::size_t from) { return part.findIn(text, from); });
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
