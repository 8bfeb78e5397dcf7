// See call_linker.h. Tested by tests/unit/engine/engine_test.cpp and engine_property_test.cpp.
#include "engine/call_linker.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <stdexcept>
#include <unordered_set>
#include <utility>

#include "base/text.h"

namespace tintline {
namespace {

constexpr unsigned kHashBits = 14;
constexpr std::size_t kRoomPerHash = 16;
constexpr unsigned kChainShift = 2;  // the bits of a hash that chains do without
constexpr std::uint32_t kChainEnd = 0xFFFFFFFF;
constexpr std::size_t kLongestWindow = 64;
constexpr std::string_view kCommentSpan = "<span class='Rem'>";
constexpr std::string_view kMarksSpan = "<span class='Marks'>";
constexpr CaselessText kFirstComment(kCommentSpan, 13);

// What the highlighter, the driver and links put between the characters of a line, folded.
constexpr std::string_view kMarkup =
    "</span>\n<span class='code'>\n<span class='parms'>\n<span class='endsub'>\n"
    "<span class='marks'>\n<span class='rem'>\n<hr>\n&lt;\n&gt;\n<a href='#\n' "
    "class='marks'>\n</a> ";

// A set of characters.
using CharacterSet = std::array<bool, 256>;

constexpr CharacterSet kEndsMarkup = [] {
  CharacterSet ends{};
  for (const unsigned char c : {'<', '>', '&', ';', '#', '=', ' '}) ends[c] = true;
  return ends;
}();

// Whether a character occurs in it, in any case.
constexpr CharacterSet kInMarkup = [] {
  CharacterSet occurs{};
  for (const char c : kMarkup) {
    occurs[static_cast<unsigned char>(c)] = true;
    if (c >= 'a' && c <= 'z') occurs[static_cast<unsigned char>(c - 0x20)] = true;
  }
  return occurs;
}();

// Whether a line of HTML can hold the name where its source does not, or because of a link.
// Markup stands between brackets, or "&" and ";", so that a name without them is either in it
// or in text of the source; and what a link adds to its name reaches from "<" to "#" and from
// the apostrophe to ">".
bool isInHtmlOnly(std::string_view name) {
  const auto isIn = [](const CharacterSet& set) {
    return [&set](unsigned char c) { return set[c]; };
  };
  if (std::ranges::any_of(name, isIn(kEndsMarkup)) || name.ends_with('\'')) return true;
  if (!std::ranges::all_of(name, isIn(kInMarkup))) return false;
  std::string folded(name);
  for (char& c : folded) c = toLower(c);
  return kMarkup.find(folded) != std::string_view::npos;
}

constexpr std::uint32_t foldedCode(char c) { return static_cast<unsigned char>(toLower(c)); }

// The first characters of a text, folded, the first one in the lowest byte; zeros behind its end.
std::uint64_t foldedStart(std::string_view text) {
  std::uint64_t start = 0;
  const std::size_t length = std::min(text.size(), sizeof start);
  for (std::size_t i = 0; i < length; ++i) start |= std::uint64_t{foldedCode(text[i])} << 8 * i;
  return start;
}

// What each character adds to the hash of a key, by its place from the key's end.
constexpr auto kHashParts = [] {
  std::array<std::array<std::uint32_t, 256>, 3> parts{};
  for (std::uint32_t place = 0; place < parts.size(); ++place)
    for (std::uint32_t code = 0; code < 256; ++code)
      parts[place][code] = (foldedCode(static_cast<char>(code)) << 8 * place) * 0x9E3779B1U;
  return parts;
}();

// The hash of so many characters, the same in either case.
template <std::size_t kSize>
std::uint32_t hashKey(const char* characters) {
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < kSize; ++i)
    sum += kHashParts[kSize - 1 - i][static_cast<unsigned char>(characters[i])];
  return sum >> (32 - kHashBits);
}

// The trimmed names in order, without empty ones; one that stands twice counts once.
std::vector<std::string_view> trimmedNames(const ProcedureNames& ProzNamen) {
  std::vector<std::string_view> names;
  std::unordered_set<std::string_view> known;
  names.reserve(ProzNamen.size());
  known.reserve(ProzNamen.size());
  for (const std::string& entry : ProzNamen)
    if (const std::string_view name = Trim(entry); !name.empty() && known.insert(name).second)
      names.push_back(name);
  return names;
}

// The indexes of the names that may be in the HTML only, or of the others.
std::vector<std::uint32_t> indexes(const std::vector<std::string_view>& names, bool inHtmlOnly) {
  std::vector<std::uint32_t> chosen;
  for (std::size_t index = 0; index < names.size(); ++index)
    if (isInHtmlOnly(names[index]) == inHtmlOnly)
      chosen.push_back(static_cast<std::uint32_t>(index));
  return chosen;
}

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

NameFilter::NameFilter(const std::vector<std::string_view>& names,
                       const std::vector<std::uint32_t>& wanted)
    : names_(names), entries_(names.size()) {
  std::vector<std::uint32_t> ofSize[kKeySize + 1];
  for (const std::uint32_t index : wanted)
    ofSize[std::min(names[index].size(), kKeySize)].push_back(index);
  addGroup<1>(ofSize[1]);
  addGroup<2>(ofSize[2]);
  addGroup<kKeySize>(ofSize[kKeySize]);
}

template <std::size_t kSize>
void NameFilter::addGroup(const std::vector<std::uint32_t>& indexes) {
  if (indexes.empty()) return;
  std::size_t window = kLongestWindow;
  for (const std::uint32_t index : indexes) window = std::min(window, names_[index].size());
  // A few names need no table that fills the cache.
  const std::size_t hashes =
      std::bit_ceil(std::min(indexes.size() * window * kRoomPerHash, std::size_t{1} << kHashBits));
  const auto farthest = static_cast<std::uint8_t>(window - kSize + 1);
  Group& group = groups_.emplace_back(
      Group{kSize, window, static_cast<std::uint32_t>(hashes - 1),
            std::vector<std::uint8_t>(hashes, farthest),
            std::vector<std::uint32_t>((hashes >> kChainShift) + 1, kChainEnd)});
  for (const std::uint32_t index : indexes) {
    const std::string_view name = names_[index];
    for (std::size_t end = kSize; end <= window; ++end) {
      std::uint8_t& step = group.steps[hashKey<kSize>(name.data() + end - kSize) & group.mask];
      step = std::min(step, static_cast<std::uint8_t>(window - end));
    }
    const std::uint32_t hash = hashKey<kSize>(name.data() + window - kSize) & group.mask;
    const std::uint64_t start = foldedStart(name);
    const auto unused =
        static_cast<std::uint32_t>(8 * (sizeof start - std::min(name.size(), sizeof start)));
    entries_[index] = {start << unused, unused,
                       std::exchange(group.heads[hash >> kChainShift], index)};
  }
}

void NameFilter::find(std::string_view text, std::vector<std::size_t>& found) const {
  for (const Group& group : groups_) {
    if (group.keySize == 1) findInGroup<1>(group, text, found);
    if (group.keySize == 2) findInGroup<2>(group, text, found);
    if (group.keySize == kKeySize) findInGroup<kKeySize>(group, text, found);
  }
}

template <std::size_t kSize>
void NameFilter::findInGroup(const Group& group, std::string_view text,
                             std::vector<std::size_t>& found) const {
  const std::uint8_t* const steps = group.steps.data();
  for (std::size_t end = group.window; end <= text.size();) {
    const std::uint32_t hash = hashKey<kSize>(text.data() + end - kSize) & group.mask;
    const std::uint8_t step = steps[hash];
    if (step == 0)
      collect(group.heads[hash >> kChainShift], text.substr(end - group.window), found);
    end += std::max<std::size_t>(step, 1);
  }
}

// Adds the names of a chain that the text begins with. Names of a module are much alike, so
// chains may be long.
void NameFilter::collect(std::uint32_t chain, std::string_view text,
                         std::vector<std::size_t>& found) const {
  const std::uint64_t start = foldedStart(text);
  for (std::uint32_t index = chain; index != kChainEnd; index = entries_[index].next) {
    const Entry& entry = entries_[index];
    if (start << entry.unused == entry.start && startsWithIgnoreCase(text, names_[index]))
      found.push_back(index);
  }
}

CallLinker::CallLinker(const ProcedureNames& ProzNamen)
    : names_(trimmedNames(ProzNamen)),
      inSource_(names_, indexes(names_, false)),
      inHtml_(names_, indexes(names_, true)) {}

std::string_view CallLinker::link(std::string_view html, std::string_view source) {
  if (names_.empty() || startsWithIgnoreCase(html, kCommentSpan)) return html;
  found_.clear();
  inSource_.find(source, found_);
  inHtml_.find(html, found_);
  if (found_.empty()) return html;
  html_ = html;
  longest_ = html.size() + kMaxGrowth;
  sortFound();
  for (std::size_t next = 0; next < found_.size();) {
    const std::size_t index = found_[next++];
    if (!linkName(names_[index]) || inHtml_.empty()) continue;
    // A link brings new text into the line, in which later names may occur.
    found_.erase(found_.begin(), found_.begin() + static_cast<std::ptrdiff_t>(next));
    inHtml_.find(html_, found_);
    sortFound();
    next = static_cast<std::size_t>(std::upper_bound(found_.begin(), found_.end(), index) -
                                    found_.begin());
  }
  return html_;
}

void CallLinker::sortFound() {
  std::sort(found_.begin(), found_.end());
  found_.erase(std::unique(found_.begin(), found_.end()), found_.end());
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
  link_.assign("<a HREF='#").append(name).append("' class='Marks'>").append(name).append(close);
  linked_.clear();
  std::size_t done = 0;
  for (std::size_t hit; (hit = code.find(name, done)) != std::string_view::npos;
       done = hit + name.size()) {
    linked_.append(code, done, hit - done).append(link_);
    if (linked_.size() > longest_) throw std::length_error("call links make a line too long");
  }
  if (done == 0) return false;
  linked_.append(html_, done);
  html_.swap(linked_);
  return true;
}

}  // namespace tintline
