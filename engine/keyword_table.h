// The two word lists against which every word of a source line is tested.
//
// A list is one text: NUL, entry, NUL, entry, …, entry, NUL. A word is in a list
// when NUL + word + NUL occurs in that text, letter for letter.
//
// Tested by tests/unit/engine/engine_test.cpp.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/block.h"

namespace tintline {

enum class WordClass : std::uint8_t {
  None,
  Code,  // in Keywords1: reserved words and built-in functions
  Parms  // in Keywords2 only: constants and object-model names
};

class KeywordTable {
 public:
  // An empty table: no word is in it.
  KeywordTable();

  // Takes the two list texts, each in the form above (or empty). Throws std::length_error when
  // they hold more than 65,535 words.
  KeywordTable(std::string keywords1, std::string keywords2);

  // The class of a word that is not empty and passes fkt_NurBuchstaben. Sixteen bytes from its
  // beginning on can be read, whatever those behind it are.
  WordClass lookupReadable(std::string_view word) const {
    return classOf(word, Key(loadBlock(word.data()), word.size()));
  }

  // The same of any word.
  WordClass lookup(std::string_view word) const { return classOf(word, keyOf(word)); }

  const std::string& Keywords1() const { return keywords1_; }
  const std::string& Keywords2() const { return keywords2_; }

 private:
  // The first sixteen characters of a word, the first one lowest, zeros behind its end.
  struct Key {
    Key() = default;
    Key(Block block, std::size_t ofSize)
        : start(halvesOf(firstBytes(block, std::min(ofSize, sizeof block)))), size(ofSize) {}

    bool operator==(const Key& other) const {
      return start.first == other.start.first && start.last == other.start.last &&
             size == other.size;
    }
    std::uint64_t hash() const {
      const std::uint64_t mixed = (start.first ^ std::rotl(start.last, 29)) * 0x9E3779B97F4A7C15U;
      return mixed ^ mixed >> 32;
    }

    BlockHalves start{};
    std::size_t size = 0;
  };

  struct Entry {
    Key key;
    std::uint32_t offset;  // in its list text
    WordClass wordClass;
  };

  // Small, so that they stay in the cache: most words are told by their tags to be in no list.
  struct Slot {
    // The bits of a hash that do not choose the slot.
    static std::uint16_t tagOf(std::uint64_t hash) {
      return static_cast<std::uint16_t>(hash >> 48);
    }

    std::uint16_t tag = 0;
    std::uint16_t entry = 0;  // its index in entries_; 0: the slot is free
  };

  static Key keyOf(std::string_view word);
  WordClass classOf(std::string_view word, const Key& key) const {
    return entries_[slots_[slotOf(word, key)].entry].wordClass;
  }
  // The slot that holds the word, else the one in which it would be.
  std::size_t slotOf(std::string_view word, const Key& key) const {
    const std::size_t mask = slots_.size() - 1;
    const std::uint64_t hash = key.hash();
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
      const Slot& slot = slots_[at];
      if (slot.entry == 0) return at;
      if (slot.tag == Slot::tagOf(hash) && isEntry(entries_[slot.entry], word, key)) return at;
    }
  }
  bool isEntry(const Entry& entry, std::string_view word, const Key& key) const {
    return entry.key == key && (key.size <= sizeof(Block) || text(entry) == word);
  }
  void addEntries(const std::string& list, WordClass wordClass);
  void add(std::uint32_t offset, std::string_view word, WordClass wordClass);
  std::string_view text(const Entry& entry) const;

  std::string keywords1_, keywords2_;
  std::vector<Entry> entries_;  // behind one that stands for all other words
  std::vector<Slot> slots_;     // open addressing, the size is a power of two
};

// True when the text holds letters A to Z (either case) and "$" only; an empty
// text passes.
bool fkt_NurBuchstaben(std::string_view text);

// The table of the two built-in lists, given as their file bytes (CR LF lines).
KeywordTable StandardSchluesselworteLaden(std::string_view list101, std::string_view list102);

// What reading a control file gave.
enum class KeywordOutcome {
  Loaded,
  Keywords1Missing,  // section "Keywords 1" missing or empty: the table stays empty
  Keywords2Missing   // section "Keywords 2" missing or empty: Keywords1 is in use
};

struct KeywordLoad {
  KeywordTable table;
  KeywordOutcome outcome = KeywordOutcome::Loaded;
  std::size_t entries = 0;  // number of entries of "Keywords 1"
};

// Reads the control file, given as its bytes: sections "Keywords 1" and
// "Keywords 2", one word a line, at most 65000 characters of each section.
KeywordLoad SchluesselworteLaden(std::string_view iniFile);

}  // namespace tintline
