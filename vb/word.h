// The words of the language, and those that a user adds.
//
// Tested by tests/unit/any_text_property_test.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/block.h"
#include "vb/name_table.h"

namespace tintline::vb {

// Which word a token is, without regard to case; of words that mean nothing to a reader None.
// A token has one only where the word has its meaning: never as a name (x.End, Sub Print).
enum class Word : std::uint16_t {
  None,
  // Statements
  Call,
  Case,
  Close,
  Const,
  Declare,
  DefType,  // DefBool, DefInt ...
  Dim,
  Do,
  Else,
  ElseIf,
  End,
  EndIf,
  Enum,
  Erase,
  Event,
  Exit,
  For,
  Friend,
  Function,
  Get,
  Global,
  GoSub,
  GoTo,
  If,
  Implements,
  Input,
  Let,
  Lock,
  Loop,
  LSet,
  Next,
  On,
  Open,
  Option,
  Print,
  Private,
  Public,
  Put,
  RaiseEvent,
  ReDim,
  Rem,
  Resume,
  Return,
  RSet,
  Select,
  Set,
  Static,
  Stop,
  Sub,
  Type,
  Unlock,
  Wend,
  While,
  With,
  Write,
  // Parts of statements
  Any,
  As,
  ByRef,
  ByVal,
  Each,
  In,
  New,
  Optional,
  ParamArray,
  Preserve,
  Shared,
  Spc,
  Tab,
  Then,
  To,
  Until,
  WithEvents,
  Debug,
  Me,
  // Reserved by their place
  Access,
  Alias,
  Append,
  Assert,
  Attribute,
  Base,
  Binary,
  CDecl,
  Compare,
  Database,
  Error,
  Explicit,
  Lib,
  Line,
  Local,
  Module,
  Name,
  Object,
  Output,
  Property,
  PtrSafe,
  Random,
  Read,
  Reset,
  Seek,
  Step,
  Text,
  Width,
  // Of a file header
  Begin,
  BeginProperty,
  EndProperty,
  Version,
  // Operators
  AddressOf,
  And,
  Eqv,
  Imp,
  Is,
  Like,
  Mod,
  Not,
  Or,
  TypeOf,
  Xor,
  // Types and functions that a reader asks for, and all others of the runtime library
  Date,
  Len,
  String,
  ReservedFunction,
  LibraryFunction,  // statements, too
  LibraryObject,
  Continued,  // not a word: of a comment that goes on over several lines
  // All from here on: a name that is no word, by its number (see numberedName)
  FirstNumber
};

// What a token of a name knows of it in place of a word: its number in a NameTable. The names
// behind the first 65,000 or so have none.
inline Word numberedName(std::uint32_t number) {
  constexpr std::uint32_t kFirst = static_cast<std::uint32_t>(Word::FirstNumber);
  return number <= 0xFFFF - kFirst ? static_cast<Word>(kFirst + number) : Word::None;
}
inline bool isNumbered(Word word) { return word >= Word::FirstNumber; }
inline std::uint32_t numberOf(Word word) {  // of one that is numbered
  return static_cast<std::uint32_t>(word) - static_cast<std::uint32_t>(Word::FirstNumber);
}

// What a word is where nothing else decides.
enum class WordClass : std::uint8_t {
  None,
  Keyword,
  Type,
  Constant,
  Operator,
  ReservedFunction,  // of the runtime library, and never a name
  Runtime,           // of the runtime library, or a user's addition to the first list
  ByPlace,           // a keyword in some places, else a name
  Listed             // in the second list
};

struct KnownWord {
  Word word = Word::None;
  WordClass wordClass = WordClass::None;
};

// All words that have a meaning: those of the language and the two lists of a user's vb.ini,
// compared without case, also beyond ASCII. Words of the first list count when the built-in first
// list does not hold them; a "$" at an entry's end is no part of the word.
class WordLists {
 public:
  // Without a vb.ini: the built-in second list.
  WordLists();

  // The sections of a vb.ini, an entry a line (also NUL ends one).
  WordLists(std::u8string_view first, std::u8string_view second);

  // What a word is.
  [[gnu::always_inline]] KnownWord find(const NameKey& key) const {
    if (!mayHold(key.hash())) return {};
    const std::uint32_t number = words_.find(texts_, key);
    return number == NameTable::kUnknown ? KnownWord{} : known_[number];
  }

 private:
  explicit WordLists(std::u8string_view only);  // without the words of the language
  void reserve();
  void addLanguage();
  template <typename KnownAs>
  void addEach(std::u8string_view list, KnownAs knownAs);
  void add(const NameKey& word, KnownWord known);
  bool mayHold(std::uint32_t hash) const {
    return (filter_[hash / kBucket] >> (hash & 7) & 1) != 0;
  }

  std::u8string texts_;
  NameTable words_;               // in texts_
  std::vector<KnownWord> known_;  // by their numbers there
  // Most words of a source are names, in no list. That is seen by a bit for each hash, of which few
  // are set, in a table so small that it stays in the processor's cache.
  std::array<std::uint8_t, 4096> filter_{};
  static constexpr std::uint32_t kBucket = 0x100000;  // hashes with one byte of the filter
};

}  // namespace tintline::vb
