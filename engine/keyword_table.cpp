// See keyword_table.h. Tested by tests/unit/engine/engine_test.cpp.
#include "engine/keyword_table.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/ini.h"

namespace tintline {
namespace {

constexpr char kNul = '\0';
constexpr std::size_t kMaxSection = 65000;

// The first and the last characters say enough about a word; loads of a fixed
// size are what makes this cheap.
std::uint64_t hashWord(std::string_view word) {
  const std::size_t size = word.size();
  const auto load = [&word]<typename Unit>(std::size_t at, Unit unit) -> std::uint64_t {
    std::memcpy(&unit, word.data() + at, sizeof unit);
    return unit;
  };
  std::uint64_t head = 0, tail = 0;
  if (size >= 8) {
    head = load(0, std::uint64_t{});
    tail = load(size - 8, std::uint64_t{});
  } else if (size >= 4) {
    head = load(0, std::uint32_t{});
    tail = load(size - 4, std::uint32_t{});
  } else if (size > 0) {
    head = load(0, std::uint8_t{}) | load(size / 2, std::uint8_t{}) << 8;
    tail = load(size - 1, std::uint8_t{});
  }
  const std::uint64_t mixed = (head ^ std::rotl(tail, 29) ^ size) * 0x9E3779B97F4A7C15U;
  return mixed ^ mixed >> 32;
}

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
  slots_.resize(std::bit_ceil(2 * (entriesOf(keywords1_) + entriesOf(keywords2_)) + 2));
  addEntries(keywords1_, WordClass::Code);
  addEntries(keywords2_, WordClass::Parms);
}

WordClass KeywordTable::lookup(std::string_view word) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hashWord(word) & mask;; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.wordClass == WordClass::None || entry(slot) == word) return slot.wordClass;
  }
}

void KeywordTable::addEntries(const std::string& list, WordClass wordClass) {
  if (list.empty()) return;
  std::size_t begin = 1;  // behind the leading NUL
  for (std::size_t end; (end = list.find(kNul, begin)) != std::string::npos; begin = end + 1)
    add(static_cast<std::uint32_t>(begin), static_cast<std::uint16_t>(end - begin), wordClass);
}

void KeywordTable::add(std::uint32_t offset, std::uint16_t length, WordClass wordClass) {
  const Slot added{offset, length, wordClass};
  const std::string_view word = entry(added);
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hashWord(word) & mask;
  for (; slots_[at].wordClass != WordClass::None; at = (at + 1) & mask)
    if (entry(slots_[at]) == word) return;  // Keywords1 is entered, and so found, first
  slots_[at] = added;
}

std::string_view KeywordTable::entry(const Slot& slot) const {
  const std::string& list = slot.wordClass == WordClass::Code ? keywords1_ : keywords2_;
  return std::string_view(list).substr(slot.offset, slot.length);
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
