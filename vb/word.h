// The words of the language, and those that a user adds.
//
// Tested by tests/unit/any_text_property_test.cpp.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "base/block.h"
#include "vb/name_table.h"
#include "vb/scan.h"

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
  LibraryObject
};

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

  // What the word from `begin` to `end` is; up to `limit` its text can be read.
  KnownWord find(const char8_t* begin, const char8_t* end, const char8_t* limit) const;

  // What the word at `p` is, and where it ends; the text ends at `limit`.
  struct WordHere {
    const char8_t* end;
    KnownWord known;
  };
  WordHere read(const char8_t* p, const char8_t* limit) const;

 private:
  // A word is found by its first eight bytes and the next ones, of a long word the last eight. The
  // bit of letters' case is set in them; behind the word are zeros.
  struct Key {
    std::uint64_t head, tail;
    std::size_t length;
  };
  struct Entry {
    std::uint64_t head, tail;
    std::uint32_t text;  // where it begins in texts_
    std::uint16_t length;
    KnownWord known;
  };

  static constexpr std::size_t kShort = sizeof(Block);

  explicit WordLists(std::u8string_view only);  // without the words of the language
  void prepare(std::size_t bytes);
  void addLanguage(std::size_t moreBytes);
  WordHere readAny(const char8_t* p, const char8_t* limit) const;
  static Key keyOf(Block block, std::size_t length);  // of a short word
  static Key keyOf(const char8_t* begin, std::size_t length, const char8_t* limit);
  static std::uint64_t hashOf(const Key& key);
  static std::uint8_t tagOf(std::uint64_t hash) { return static_cast<std::uint8_t>(hash | 1); }
  // `isMiddle(entry)`: whether a long word is that of the entry, which begins and ends like it.
  template <typename IsMiddle>
  KnownWord find(const Key& key, IsMiddle isMiddle) const;
  void add(std::u8string_view word, const char8_t* limit, KnownWord known);
  template <typename KnownAs>
  void addEach(std::u8string_view list, KnownAs knownAs);
  void addSlot(std::size_t entry);
  void addWide(std::u8string_view word, KnownWord known);
  KnownWord findWide(std::u8string_view word) const;
  bool contains(std::u8string_view word) const;
  KnownWord findAny(const Key& key, const char8_t* word) const;
  bool middleIs(const Entry& entry, const char8_t* word) const;

  std::vector<Entry> entries_;
  // Open addressing, the size is a power of two. Of most words only the tag is looked at: they are
  // names, and a table of bytes stays in the cache.
  std::vector<std::uint8_t> tags_;    // other bits of the hash, never 0; 0: empty
  std::vector<std::uint16_t> slots_;  // entries, by their indices
  std::u8string texts_;
  unsigned shift_ = 0;           // of a hash to its slot
  NameTable wideNames_;          // the words that are not ASCII, in texts_
  std::vector<KnownWord> wide_;  // by their numbers there
};

inline WordLists::Key WordLists::keyOf(Block block, std::size_t length) {
  const BlockHalves halves = halvesOf(firstBytes(block | 0x20, length));
  return {halves.first, halves.last, length};
}

inline std::uint64_t WordLists::hashOf(const Key& key) {
  const std::uint64_t mixed =
      (key.head ^ std::rotl(key.tail, 29) ^ key.length) * 0x9E3779B97F4A7C15U;
  return mixed ^ mixed >> 32;
}

template <typename IsMiddle>
KnownWord WordLists::find(const Key& key, IsMiddle isMiddle) const {
  const std::uint64_t hash = hashOf(key);
  const std::uint8_t tag = tagOf(hash);
  for (std::size_t at = hash >> shift_;; at = (at + 1) & (tags_.size() - 1)) {
    if (tags_[at] == 0) return {};
    if (tags_[at] != tag) continue;
    const Entry& entry = entries_[slots_[at]];
    if (entry.head == key.head && entry.tail == key.tail && entry.length == key.length &&
        isMiddle(entry))
      return entry.known;
  }
}

inline WordLists::WordHere WordLists::read(const char8_t* p, const char8_t* limit) const {
  if (limit - p < static_cast<std::ptrdiff_t>(kShort)) return readAny(p, limit);
  const Block block = loadBlock(p);
  const std::size_t length = wordBytesIn(block);
  if (length == kShort || p[length] >= 0x80) return readAny(p, limit);
  return {p + length, find(keyOf(block, length), [](const Entry&) { return true; })};
}

}  // namespace tintline::vb
