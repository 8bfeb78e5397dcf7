// See call_linker.h. Tested by tests/unit/engine/engine_test.cpp and engine_property_test.cpp.
#include "engine/call_linker.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "base/text.h"

namespace tintline {
namespace {

constexpr unsigned kHashBits = 16;
constexpr unsigned kChainShift = 4;  // the bits of a hash that chains do without
constexpr std::uint32_t kChainEnd = 0xFFFFFFFF;
constexpr std::string_view kCommentSpan = "<span class='Rem'>";
constexpr std::string_view kMarksSpan = "<span class='Marks'>";

// What a highlighted line is full of. Text of the source that looks alike may be
// skipped with them: no name occurs in either.
constexpr std::string_view kClosingTag = "</span>";
constexpr std::string_view kCodeSpan = "<span class='Code'>";
constexpr std::string_view kParmsSpan = "<span class='Parms'>";
constexpr std::string_view kEndSubSpan = "<span class='EndSub'>";

constexpr std::string_view kTags[] = {kClosingTag, kCodeSpan,    kParmsSpan,
                                      kMarksSpan,  kCommentSpan, kEndSubSpan};
constexpr std::size_t kValue = 13;  // where the opening tags differ

bool holdsBracket(std::string_view name) {
  return name.find('<') != std::string_view::npos || name.find('>') != std::string_view::npos;
}

// The length of the tag that the text, which begins with "<", begins with; or 1
// to pass the "<" alone.
std::size_t tagLength(std::string_view text) {
  const auto lengthOf = [text](auto tag) { return text.starts_with(tag) ? tag.size() : 1; };
  if (text.size() <= kValue || text[1] == '/') return lengthOf(kClosingTag);
  switch (text[kValue]) {
    case 'C':
      return lengthOf(kCodeSpan);
    case 'M':
      return lengthOf(kMarksSpan);
    case 'P':
      return lengthOf(kParmsSpan);
    case 'R':
      return lengthOf(kCommentSpan);
    default:
      return lengthOf(kEndSubSpan);
  }
}

std::uint32_t foldedCode(char c) { return static_cast<unsigned char>(toLower(c)); }

// The first characters of a text, folded, the first one in the lowest byte; zeros behind its end.
std::uint64_t foldedStart(std::string_view text) {
  std::uint64_t start = 0;
  const std::size_t length = std::min(text.size(), sizeof start);
  for (std::size_t i = 0; i < length; ++i) start |= std::uint64_t{foldedCode(text[i])} << 8 * i;
  return start;
}

std::uint32_t hashKey(std::uint32_t key) { return key * 0x9E3779B1U >> (32 - kHashBits); }

// The trimmed names in order, without empty ones.
std::vector<std::string_view> trimmedNames(const ProcedureNames& ProzNamen) {
  std::vector<std::string_view> names;
  names.reserve(ProzNamen.size());
  for (const std::string& entry : ProzNamen)
    if (const std::string_view name = Trim(entry); !name.empty()) names.push_back(name);
  return names;
}

constexpr CaselessText kFirstComment(kCommentSpan, kValue);

// What stands around the occurrences of a name, found without regard to case.
struct Surroundings {
  bool assigned = false;    // " =" behind one of them
  bool atWordEdge = false;  // ">" in front of one, or a blank, a Marks span or the end behind it
};

Surroundings surroundings(std::string_view html, std::string_view name) {
  Surroundings around;
  const CaselessText searched(name);
  for (std::size_t at = 0; (at = searched.findIn(html, at)) != std::string_view::npos; ++at) {
    const std::string_view behind = html.substr(at + name.size());
    around.assigned = around.assigned || behind.starts_with(" =");
    around.atWordEdge = around.atWordEdge || (at > 0 && html[at - 1] == '>') || behind.empty() ||
                        behind.starts_with(' ') || startsWithIgnoreCase(behind, kMarksSpan);
  }
  return around;
}

}  // namespace

NameFilter::NameFilter(const std::vector<std::string_view>& names)
    : names_(names), entries_(names.size()) {
  for (std::size_t index = names.size(); index-- > 0;) {  // so that chains ascend
    const std::size_t length = names[index].size();
    const std::uint64_t start = foldedStart(names[index]);
    const std::uint32_t hash = hashKey(static_cast<std::uint32_t>(start));
    Group& group = groupOf(std::min(length, kWindow));
    group.seen[hash / 64] |= std::uint64_t{1} << hash % 64;
    const auto unused =
        static_cast<std::uint32_t>(8 * (sizeof start - std::min(length, sizeof start)));
    std::uint32_t& head = group.heads[hash >> kChainShift];
    entries_[index] = {start << unused, unused,
                       std::exchange(head, static_cast<std::uint32_t>(index))};
  }
  const auto holdsName = [this](std::string_view tag) {
    std::vector<std::size_t> found;
    find(tag, 0, found);
    return !found.empty();
  };
  skipTags_ = std::none_of(std::begin(kTags), std::end(kTags), holdsName) &&
              std::none_of(names.begin(), names.end(), holdsBracket);
}

NameFilter::Group& NameFilter::groupOf(std::size_t length) {
  for (Group& group : groups_)
    if (group.length == length) return group;
  constexpr std::size_t kHashes = std::size_t{1} << kHashBits;
  return groups_.emplace_back(Group{length, std::vector<std::uint64_t>(kHashes / 64),
                                    std::vector<std::uint32_t>(kHashes >> kChainShift, kChainEnd)});
}

void NameFilter::find(std::string_view text, std::size_t from,
                      std::vector<std::size_t>& found) const {
  found.clear();
  for (const Group& group : groups_) findInGroup(group, text, from, found);
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
}

void NameFilter::findInGroup(const Group& group, std::string_view text, std::size_t from,
                             std::vector<std::size_t>& found) const {
  const std::uint64_t* const seen = group.seen.data();
  const std::size_t length = group.length;
  const std::size_t shift = 8 * (kWindow - length);
  const bool skipTags = skipTags_;
  std::uint32_t window = 0;  // the last four characters, the newest in its highest byte
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '<' && skipTags) {
      i += tagLength(text.substr(i)) - 1;
      window = 0;
      continue;
    }
    window = window >> 8 | foldedCode(text[i]) << 24;
    const std::uint32_t hash = hashKey(window >> shift);
    if ((seen[hash / 64] >> hash % 64 & 1) != 0 && i + 1 >= length)
      collect(group, hash, text.substr(i + 1 - length), from, found);
  }
}

// Adds the names of that hash that the text begins with. One that stands twice counts at its
// first place only. Names of a module are much alike, so their chains may be long.
void NameFilter::collect(const Group& group, std::uint32_t hash, std::string_view text,
                         std::size_t from, std::vector<std::size_t>& found) const {
  const std::uint64_t start = foldedStart(text);
  const std::uint32_t head = group.heads[hash >> kChainShift];
  for (std::uint32_t index = head; index != kChainEnd; index = entries_[index].next) {
    const Entry& entry = entries_[index];
    if (start << entry.unused != entry.start || index < from ||
        !startsWithIgnoreCase(text, names_[index]))
      continue;
    std::uint32_t first = head;
    while (entries_[first].start != entry.start || names_[first] != names_[index])
      first = entries_[first].next;
    if (first == index) found.push_back(index);
  }
}

CallLinker::CallLinker(const ProcedureNames& ProzNamen)
    : names_(trimmedNames(ProzNamen)), filter_(names_) {}

std::string_view CallLinker::link(std::string_view html) {
  if (names_.empty() || startsWithIgnoreCase(html, kCommentSpan)) return html;
  filter_.find(html, 0, found_);
  if (found_.empty()) return html;
  html_ = html;
  longest_ = html.size() + kMaxGrowth;
  std::size_t next = 0;
  while (next < found_.size()) {
    const std::size_t index = found_[next++];
    if (!linkName(names_[index])) continue;
    // A link brings new text into the line, in which later names may occur.
    filter_.find(html_, index + 1, found_);
    next = 0;
  }
  return html_;
}

// True when the line was changed.
bool CallLinker::linkName(std::string_view name) {
  const std::size_t comment = kFirstComment.findIn(html_);
  if (comment == std::string::npos && !surroundings(html_, name).assigned)
    return replaceName(name, html_.size(), "</a> ");

  // The name may stand in front of a trailing comment, or end the line.
  const std::string_view code = std::string_view(html_).substr(0, comment);
  const Surroundings around = surroundings(code, name);
  return around.atWordEdge && !around.assigned && replaceName(name, code.size(), "</a>");
}

// Links every occurrence in the first `end` characters, unless the first one (in
// any case) stands in a string literal.
bool CallLinker::replaceName(std::string_view name, std::size_t end, std::string_view close) {
  const std::string_view code = std::string_view(html_).substr(0, end);
  const std::string_view before = code.substr(0, findIgnoreCase(code, name));
  if (std::count(before.begin(), before.end(), '"') % 2 != 0) return false;
  std::string link = "<a HREF='#";
  link.append(name).append("' class='Marks'>").append(name).append(close);
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
