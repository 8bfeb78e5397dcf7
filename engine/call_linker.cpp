// See call_linker.h. Tested by tests/unit/engine/call_linker_test.cpp and
// tests/unit/engine/engine_property_test.cpp.
#include "engine/call_linker.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <unordered_set>

#include "base/text.h"

namespace tintline {
namespace {

constexpr unsigned kHashBits = 16;
constexpr std::string_view kCommentSpan = "<span class='Rem'>";
constexpr std::string_view kMarksSpan = "<span class='Marks'>";

// What a highlighted line is full of. Text of the source that looks alike may be
// skipped with them: no name occurs in either.
constexpr std::string_view kTags[] = {"</span>", "<span class='Code'>", kMarksSpan,
                                      "<span class='Parms'>", kCommentSpan};

bool mayOccurInTags(const std::string& name) {
  return name.find_first_of("<>") != std::string::npos ||
         std::any_of(std::begin(kTags), std::end(kTags),
                     [&name](std::string_view tag) { return containsIgnoreCase(tag, name); });
}

// The length of the tag that the text begins with, or 1 to pass a single "<".
std::size_t tagLength(std::string_view text) {
  for (const std::string_view tag : kTags)
    if (text.starts_with(tag)) return tag.size();
  return 1;
}

std::uint32_t hashWindow(std::uint32_t window) { return window * 0x9E3779B1U >> (32 - kHashBits); }

std::vector<std::string> distinctNames(const ProcedureNames& ProzNamen) {
  std::vector<std::string> names;
  std::unordered_set<std::string_view> known;
  for (const std::string& entry : ProzNamen) {
    const std::string_view name = Trim(entry);
    if (!name.empty() && known.insert(name).second) names.emplace_back(name);
  }
  return names;
}

// Position of the first comment span without regard to case, or npos.
std::size_t findCommentSpan(std::string_view html) {
  constexpr std::size_t kValue = 13;  // position of "Rem'>", which is rarer than "<span"
  static_assert(kCommentSpan.substr(kValue) == "Rem'>");
  for (std::size_t at = 0;
       (at = findIgnoreCase(html, kCommentSpan.substr(kValue), at)) != std::string_view::npos; ++at)
    if (at >= kValue && startsWithIgnoreCase(html.substr(at - kValue), kCommentSpan))
      return at - kValue;
  return std::string_view::npos;
}

// What stands around the occurrences of a name, found without regard to case.
struct Surroundings {
  bool assigned = false;    // " =" behind one of them
  bool atWordEdge = false;  // ">" in front of one, or a blank, a Marks span or the end behind it
};

Surroundings surroundings(std::string_view html, std::string_view name) {
  Surroundings around;
  for (std::size_t at = 0; (at = findIgnoreCase(html, name, at)) != std::string_view::npos; ++at) {
    const std::string_view behind = html.substr(at + name.size());
    around.assigned = around.assigned || behind.starts_with(" =");
    around.atWordEdge = around.atWordEdge || (at > 0 && html[at - 1] == '>') || behind.empty() ||
                        behind.starts_with(' ') || startsWithIgnoreCase(behind, kMarksSpan);
  }
  return around;
}

}  // namespace

NameFilter::NameFilter(const std::vector<std::string>& names)
    : names_(names), skipTags_(std::none_of(names.begin(), names.end(), mayOccurInTags)) {
  for (std::size_t index = 0; index < names.size(); ++index) {
    const std::size_t length = std::min(names[index].size(), kWindow);
    auto group = std::find_if(groups_.begin(), groups_.end(),
                              [length](const Group& g) { return g.length == length; });
    if (group == groups_.end()) {
      group = groups_.insert(groups_.end(), Group{length, 0, {}, {}});
      std::memset(&group->mask, 0xFF, length);
      group->seen.resize((std::size_t{1} << kHashBits) / 64);
    }
    add(*group, index);
  }
  for (Group& group : groups_) std::sort(group.entries.begin(), group.entries.end());
}

void NameFilter::add(Group& group, std::size_t index) const {
  char folded[kWindow] = {};
  for (std::size_t i = 0; i < group.length; ++i) folded[i] = toLower(names_[index][i]);
  std::uint32_t window;
  std::memcpy(&window, folded, sizeof window);
  const std::uint32_t hash = hashWindow(window);
  group.seen[hash / 64] |= std::uint64_t{1} << hash % 64;
  group.entries.emplace_back(window, index);
}

void NameFilter::find(std::string_view text, std::size_t from, std::vector<std::size_t>& found) {
  found.clear();
  if (groups_.empty()) return;
  folded_.resize(std::max(folded_.size(), text.size() + kWindow));
  while (!text.empty()) {
    const std::size_t length = foldStretch(text);
    for (const Group& group : groups_) findInGroup(group, text.substr(0, length), from, found);
    text.remove_prefix(length);
    if (!text.empty()) text.remove_prefix(tagLength(text));
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
}

// Puts the text up to its next tag into folded_ and returns how long that is.
std::size_t NameFilter::foldStretch(std::string_view text) {
  std::size_t length = 0;
  for (; length < text.size() && !(skipTags_ && text[length] == '<'); ++length)
    folded_[length] = toLower(text[length]);
  return length;
}

void NameFilter::findInGroup(const Group& group, std::string_view text, std::size_t from,
                             std::vector<std::size_t>& found) const {
  const char* const folded = folded_.data();
  const std::uint64_t* const seen = group.seen.data();
  const std::uint32_t mask = group.mask;
  for (std::size_t at = 0; at + group.length <= text.size(); ++at) {
    std::uint32_t window;
    std::memcpy(&window, folded + at, sizeof window);
    window &= mask;
    const std::uint32_t hash = hashWindow(window);
    if ((seen[hash / 64] >> hash % 64 & 1) == 0) continue;
    auto entry =
        std::lower_bound(group.entries.begin(), group.entries.end(), std::pair(window, from));
    for (; entry != group.entries.end() && entry->first == window; ++entry)
      if (startsWithIgnoreCase(text.substr(at), names_[entry->second]))
        found.push_back(entry->second);
  }
}

CallLinker::CallLinker(const ProcedureNames& ProzNamen)
    : names_(distinctNames(ProzNamen)), filter_(names_) {}

std::string_view CallLinker::link(std::string_view html) {
  if (names_.empty() || startsWithIgnoreCase(html, kCommentSpan)) return html;
  filter_.find(html, 0, found_);
  if (found_.empty()) return html;
  html_ = html;
  longest_ = html.size() + kMaxGrowth;
  while (!found_.empty()) {
    const std::size_t index = found_.front();
    // A link brings new text into the line, in which later names may occur.
    if (linkName(names_[index]))
      filter_.find(html_, index + 1, found_);
    else
      found_.erase(found_.begin());
  }
  return html_;
}

// True when the line was changed.
bool CallLinker::linkName(const std::string& name) {
  const std::size_t comment = findCommentSpan(html_);
  if (comment == std::string::npos && !surroundings(html_, name).assigned)
    return replaceName(name, html_.size(), "</a> ");

  // The name may stand in front of a trailing comment, or end the line.
  const std::string_view code = std::string_view(html_).substr(0, comment);
  const Surroundings around = surroundings(code, name);
  return around.atWordEdge && !around.assigned && replaceName(name, code.size(), "</a>");
}

// Links every occurrence in the first `end` characters, unless the first one (in
// any case) stands in a string literal.
bool CallLinker::replaceName(const std::string& name, std::size_t end, std::string_view close) {
  const std::string_view code = std::string_view(html_).substr(0, end);
  const std::string_view before = code.substr(0, findIgnoreCase(code, name));
  if (std::count(before.begin(), before.end(), '"') % 2 != 0) return false;
  const std::string link = "<a HREF='#" + name + "' class='Marks'>" + name + std::string(close);
  std::string linked;
  std::size_t done = 0;
  for (std::size_t hit; (hit = code.find(name, done)) != std::string_view::npos;
       done = hit + name.size()) {
    linked.append(code, done, hit - done).append(link);
    if (linked.size() > longest_) throw std::length_error("call links make a line too long");
  }
  if (done == 0) return false;
  html_ = linked.append(html_, done);
  return true;
}

}  // namespace tintline
