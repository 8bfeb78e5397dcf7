// See keyword_table.h. Tested by tests/unit/engine/engine_test.cpp.
#include "engine/keyword_table.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "base/ini.h"

namespace tintline {
namespace {

constexpr char kNul = '\0';
constexpr std::size_t kMaxSection = 65000;

// The list text of a resource: its lines as NUL-delimited entries.
std::string listText(std::string_view resource) {
  std::string list(1, kNul);
  list.reserve(resource.size() + 2);
  for (std::size_t begin = 0, end; begin < resource.size(); begin = end + 1) {
    end = std::min(resource.find('\n', begin), resource.size());
    std::size_t at = list.size();
    list += resource.substr(begin, end - begin);
    while ((at = list.find('\r', at)) != std::string::npos) list[at] = kNul;
  }
  if (list.back() != kNul) list += kNul;  // the last word counts without a line end too
  return list;
}

std::size_t entriesOf(std::string_view list) {
  std::size_t entries = 0;
  for (std::size_t at = 0; (at = list.find(kNul, at)) != list.npos; ++at) ++entries;
  return entries;
}

}  // namespace

KeywordTable::KeywordTable() : KeywordTable(std::string(), std::string()) {}

KeywordTable::KeywordTable(std::string keywords1, std::string keywords2)
    : keywords1_(std::move(keywords1)), keywords2_(std::move(keywords2)) {
  const std::size_t entries = entriesOf(keywords1_) + entriesOf(keywords2_);
  entries_.reserve(entries + 1);
  entries_.push_back({Key(), 0, WordClass::None});
  slots_.resize(std::bit_ceil(2 * entries + 2));
  addEntries(keywords1_, WordClass::Code);
  addEntries(keywords2_, WordClass::Parms);
}

KeywordTable::Key KeywordTable::keyOf(std::string_view word) {
  std::array<char, sizeof(Block)> start{};
  std::memcpy(start.data(), word.data(), std::min(word.size(), start.size()));
  return {loadBlock(start.data()), word.size()};
}

void KeywordTable::addEntries(const std::string& list, WordClass wordClass) {
  if (list.empty()) return;
  std::size_t begin = 1;  // behind the leading NUL
  for (std::size_t end; (end = list.find(kNul, begin)) != std::string::npos; begin = end + 1)
    add(static_cast<std::uint32_t>(begin), std::string_view(list).substr(begin, end - begin),
        wordClass);
}

void KeywordTable::add(std::uint32_t offset, std::string_view word, WordClass wordClass) {
  const Key key = keyOf(word);
  Slot& slot = slots_[slotOf(word, key)];
  if (slot.entry != 0) return;  // Keywords1 is entered, and so found, first
  if (entries_.size() > std::numeric_limits<std::uint16_t>::max())
    throw std::length_error("more keywords than a table holds");
  slot = {Slot::tagOf(key.hash()), static_cast<std::uint16_t>(entries_.size())};
  entries_.push_back({key, offset, wordClass});
}

std::string_view KeywordTable::text(const Entry& entry) const {
  const std::string& list = entry.wordClass == WordClass::Code ? keywords1_ : keywords2_;
  return std::string_view(list).substr(entry.offset, entry.key.size);
}

bool fkt_NurBuchstaben(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '$';
  });
}

KeywordTable StandardSchluesselworteLaden(std::string_view list101, std::string_view list102) {
  return KeywordTable(listText(list101), listText(list102));
}

KeywordLoad SchluesselworteLaden(std::string_view iniFile) {
  const std::string section1 = ini::sectionText(iniFile, "Keywords 1", kMaxSection);
  const std::string section2 = ini::sectionText(iniFile, "Keywords 2", kMaxSection);
  KeywordLoad load;
  if (section1.empty()) {
    load.outcome = KeywordOutcome::Keywords1Missing;
    return load;
  }
  load.entries = entriesOf(section1);
  if (section2.empty()) load.outcome = KeywordOutcome::Keywords2Missing;
  load.table = KeywordTable(kNul + section1, section2.empty() ? section2 : kNul + section2);
  return load;
}

}  // namespace tintline
