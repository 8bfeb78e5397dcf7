// The two word lists against which every word of a source line is tested.
//
// A list is one text: NUL, entry, NUL, entry, …, entry, NUL. A word is in a list
// when NUL + word + NUL occurs in that text, letter for letter.
//
// Tested by tests/unit/engine/engine_test.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

  // Takes the two list texts, each in the form above (or empty).
  KeywordTable(std::string keywords1, std::string keywords2);

  // The class of a word that is not empty and passes fkt_NurBuchstaben.
  WordClass lookup(std::string_view word) const;

  const std::string& Keywords1() const { return keywords1_; }
  const std::string& Keywords2() const { return keywords2_; }

 private:
  struct Slot {
    std::uint32_t offset = 0;  // of the entry in its list text
    std::uint16_t length = 0;
    WordClass wordClass = WordClass::None;
  };

  void addEntries(const std::string& list, WordClass wordClass);
  void add(std::uint32_t offset, std::uint16_t length, WordClass wordClass);
  std::string_view entry(const Slot& slot) const;

  std::string keywords1_, keywords2_;
  std::vector<Slot> slots_;  // open addressing, the size is a power of two
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
