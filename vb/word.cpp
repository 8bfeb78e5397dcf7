// See word.h. Tested by tests/unit/any_text_property_test.cpp.
#include "vb/word.h"

#include <algorithm>

#include "base/resources.h"
#include "vb/scan.h"

namespace tintline::vb {
namespace {

constexpr std::size_t kLongest = 1000;  // letters of a listed word; longer entries are no words

struct LanguageWord {
  std::u8string_view text;
  Word word;
  WordClass wordClass;
};

using enum WordClass;

#define TINTLINE_WORD(name, wordClass) \
  { u8## #name, Word::name, wordClass }
constexpr LanguageWord kWords[] = {
    TINTLINE_WORD(Call, Keyword),
    TINTLINE_WORD(Case, Keyword),
    TINTLINE_WORD(Close, Keyword),
    TINTLINE_WORD(Const, Keyword),
    TINTLINE_WORD(Declare, Keyword),
    TINTLINE_WORD(Dim, Keyword),
    TINTLINE_WORD(Do, Keyword),
    TINTLINE_WORD(Else, Keyword),
    TINTLINE_WORD(ElseIf, Keyword),
    TINTLINE_WORD(End, Keyword),
    TINTLINE_WORD(EndIf, Keyword),
    TINTLINE_WORD(Enum, Keyword),
    TINTLINE_WORD(Erase, Keyword),
    TINTLINE_WORD(Event, Keyword),
    TINTLINE_WORD(Exit, Keyword),
    TINTLINE_WORD(For, Keyword),
    TINTLINE_WORD(Friend, Keyword),
    TINTLINE_WORD(Function, Keyword),
    TINTLINE_WORD(Get, Keyword),
    TINTLINE_WORD(Global, Keyword),
    TINTLINE_WORD(GoSub, Keyword),
    TINTLINE_WORD(GoTo, Keyword),
    TINTLINE_WORD(If, Keyword),
    TINTLINE_WORD(Implements, Keyword),
    TINTLINE_WORD(Input, Keyword),
    TINTLINE_WORD(Let, Keyword),
    TINTLINE_WORD(Lock, Keyword),
    TINTLINE_WORD(Loop, Keyword),
    TINTLINE_WORD(LSet, Keyword),
    TINTLINE_WORD(Next, Keyword),
    TINTLINE_WORD(On, Keyword),
    TINTLINE_WORD(Open, Keyword),
    TINTLINE_WORD(Option, Keyword),
    TINTLINE_WORD(Print, Keyword),
    TINTLINE_WORD(Private, Keyword),
    TINTLINE_WORD(Public, Keyword),
    TINTLINE_WORD(Put, Keyword),
    TINTLINE_WORD(RaiseEvent, Keyword),
    TINTLINE_WORD(ReDim, Keyword),
    TINTLINE_WORD(Rem, Keyword),
    TINTLINE_WORD(Resume, Keyword),
    TINTLINE_WORD(Return, Keyword),
    TINTLINE_WORD(RSet, Keyword),
    TINTLINE_WORD(Select, Keyword),
    TINTLINE_WORD(Set, Keyword),
    TINTLINE_WORD(Static, Keyword),
    TINTLINE_WORD(Stop, Keyword),
    TINTLINE_WORD(Sub, Keyword),
    TINTLINE_WORD(Type, Keyword),
    TINTLINE_WORD(Unlock, Keyword),
    TINTLINE_WORD(Wend, Keyword),
    TINTLINE_WORD(While, Keyword),
    TINTLINE_WORD(With, Keyword),
    TINTLINE_WORD(Write, Keyword),
    TINTLINE_WORD(Any, Keyword),
    TINTLINE_WORD(As, Keyword),
    TINTLINE_WORD(ByRef, Keyword),
    TINTLINE_WORD(ByVal, Keyword),
    TINTLINE_WORD(Each, Keyword),
    TINTLINE_WORD(In, Keyword),
    TINTLINE_WORD(New, Keyword),
    TINTLINE_WORD(Optional, Keyword),
    TINTLINE_WORD(ParamArray, Keyword),
    TINTLINE_WORD(Preserve, Keyword),
    TINTLINE_WORD(Shared, Keyword),
    TINTLINE_WORD(Spc, Keyword),
    TINTLINE_WORD(Tab, Keyword),
    TINTLINE_WORD(Then, Keyword),
    TINTLINE_WORD(To, Keyword),
    TINTLINE_WORD(Until, Keyword),
    TINTLINE_WORD(WithEvents, Keyword),
    TINTLINE_WORD(Debug, Keyword),
    TINTLINE_WORD(Me, Keyword),
    TINTLINE_WORD(Access, ByPlace),
    TINTLINE_WORD(Alias, ByPlace),
    TINTLINE_WORD(Append, ByPlace),
    TINTLINE_WORD(Assert, ByPlace),
    TINTLINE_WORD(Attribute, ByPlace),
    TINTLINE_WORD(Base, ByPlace),
    TINTLINE_WORD(Binary, ByPlace),
    TINTLINE_WORD(CDecl, ByPlace),
    TINTLINE_WORD(Compare, ByPlace),
    TINTLINE_WORD(Database, ByPlace),
    TINTLINE_WORD(Error, ByPlace),
    TINTLINE_WORD(Explicit, ByPlace),
    TINTLINE_WORD(Lib, ByPlace),
    TINTLINE_WORD(Line, ByPlace),
    TINTLINE_WORD(Local, ByPlace),
    TINTLINE_WORD(Module, ByPlace),
    TINTLINE_WORD(Name, ByPlace),
    TINTLINE_WORD(Object, ByPlace),
    TINTLINE_WORD(Output, ByPlace),
    TINTLINE_WORD(Property, ByPlace),
    TINTLINE_WORD(PtrSafe, ByPlace),
    TINTLINE_WORD(Random, ByPlace),
    TINTLINE_WORD(Read, ByPlace),
    TINTLINE_WORD(Reset, ByPlace),
    TINTLINE_WORD(Seek, ByPlace),
    TINTLINE_WORD(Step, ByPlace),
    TINTLINE_WORD(Text, ByPlace),
    TINTLINE_WORD(Width, ByPlace),
    TINTLINE_WORD(Begin, ByPlace),
    TINTLINE_WORD(BeginProperty, ByPlace),
    TINTLINE_WORD(EndProperty, ByPlace),
    TINTLINE_WORD(Version, ByPlace),
    TINTLINE_WORD(AddressOf, Operator),
    TINTLINE_WORD(And, Operator),
    TINTLINE_WORD(Eqv, Operator),
    TINTLINE_WORD(Imp, Operator),
    TINTLINE_WORD(Is, Operator),
    TINTLINE_WORD(Like, Operator),
    TINTLINE_WORD(Mod, Operator),
    TINTLINE_WORD(Not, Operator),
    TINTLINE_WORD(Or, Operator),
    TINTLINE_WORD(TypeOf, Operator),
    TINTLINE_WORD(Xor, Operator),
    TINTLINE_WORD(Date, ReservedFunction),
    TINTLINE_WORD(Len, ReservedFunction),
    TINTLINE_WORD(String, ReservedFunction),
};
#undef TINTLINE_WORD

// Words of one class that no reader tells apart.
struct WordGroup {
  std::u8string_view words;  // with a blank between them
  KnownWord known;
};

constexpr WordGroup kGroups[] = {
    {u8"DefBool DefByte DefCur DefDate DefDbl DefDec DefInt DefLng DefLngLng DefLngPtr DefObj "
     u8"DefSng DefStr DefVar",
     {Word::DefType, Keyword}},
    {u8"Boolean Byte Currency Double Integer Long LongLong LongPtr Single Variant",
     {Word::None, Type}},
    {u8"True False Nothing Empty Null", {Word::None, Constant}},
    {u8"Abs Array CBool CByte CCur CDate CDbl CDec CInt CLng CLngLng CLngPtr CSng CStr CVar CVErr "
     u8"Circle DoEvents Fix InputB Int LBound LenB PSet Scale Sgn UBound",
     {Word::ReservedFunction, ReservedFunction}},
    // Objects of the runtime library.
    {u8"App Clipboard Collection Err ErrObject Forms Printer Printers Screen",
     {Word::LibraryObject, Runtime}},
    // Its statements.
    {u8"AppActivate Beep ChDir ChDrive DeleteSetting FileCopy Kill Load MkDir Randomize RmDir "
     u8"SavePicture SaveSetting SendKeys SetAttr Unload",
     {Word::LibraryFunction, Runtime}},
    // Its functions: texts.
    {u8"Asc AscB AscW Chr ChrB ChrW Filter Format FormatCurrency FormatDateTime FormatNumber "
     u8"FormatPercent Hex InStr InStrB InStrRev Join LCase LTrim Left LeftB Mid MidB Oct RTrim "
     u8"Replace Right RightB Space Split Str StrComp StrConv StrReverse Trim UCase Val",
     {Word::LibraryFunction, Runtime}},
    // Numbers and money.
    {u8"Atn Cos DDB Exp FV IPmt IRR Log MIRR NPV NPer PPmt PV Partition Pmt RGB QBColor Rate Rnd "
     u8"Round SLN SYD Sin Sqr Tan",
     {Word::LibraryFunction, Runtime}},
    // Dates and times.
    {u8"CVDate DateAdd DateDiff DatePart DateSerial DateValue Day Hour Minute Month MonthName Now "
     u8"Second Time TimeSerial TimeValue Timer Weekday WeekdayName Year",
     {Word::LibraryFunction, Runtime}},
    // Files, settings and other programs.
    {u8"Command CreateObject CurDir Dir EOF Environ FileAttr FileDateTime FileLen FreeFile "
     u8"GetAllSettings GetAttr GetObject GetSetting IMEStatus InputBox LOF Loc MacID MacScript "
     u8"MsgBox Shell",
     {Word::LibraryFunction, Runtime}},
    // Values and objects.
    {u8"CallByName Choose Erl IIf IsArray IsDate IsEmpty IsError IsMissing IsNull IsNumeric "
     u8"IsObject LoadPicture LoadResData LoadResPicture LoadResString ObjPtr StrPtr Switch "
     u8"TypeName VarPtr VarType",
     {Word::LibraryFunction, Runtime}},
};

// Calls `take` with each entry of a list; any of the bytes ends one.
template <char8_t... Ends, typename Take>
void forEachEntry(std::u8string_view list, Take take) {
  const char8_t* const listEnd = list.data() + list.size();
  for (const char8_t *begin = list.data(), *end; begin < listEnd; begin = end + 1) {
    end = findAnyOf<Ends...>(begin, listEnd);
    std::u8string_view entry(begin, end);
    while (entry.ends_with(u8' ') || entry.ends_with(u8'\t')) entry.remove_suffix(1);
    while (entry.starts_with(u8' ') || entry.starts_with(u8'\t')) entry.remove_prefix(1);
    if (entry.ends_with(u8'$')) entry.remove_suffix(1);
    if (!entry.empty() && entry.size() <= kLongest) take(entry);
  }
}

// The built-in lists are ASCII.
std::u8string_view builtInList(int number) {
  const std::string_view list = programResource(number);
  return {reinterpret_cast<const char8_t*>(list.data()), list.size()};
}

bool isAscii(std::u8string_view text) {
  while (text.size() >= sizeof(Block)) {
    if (firstMarked(loadBlock(text.data()) >= 0x80) < sizeof(Block)) return false;
    text.remove_prefix(sizeof(Block));
  }
  return std::ranges::all_of(text, [](char8_t c) { return c < 0x80; });
}

constexpr std::size_t kMostEntries = 0xFFFE;

}  // namespace

WordLists::WordLists() {
  const std::u8string_view second = builtInList(102);
  addLanguage(second.size());
  addEach(second, [](std::u8string_view) { return KnownWord{Word::LibraryObject, Listed}; });
}

WordLists::WordLists(std::u8string_view first, std::u8string_view second) {
  addLanguage(first.size() + second.size());
  const WordLists builtInFirst(builtInList(101)), builtInSecond(builtInList(102));
  addEach(first, [&](std::u8string_view word) {
    return builtInFirst.contains(word) ? KnownWord{} : KnownWord{Word::None, Runtime};
  });
  addEach(second, [&](std::u8string_view word) {
    return KnownWord{builtInSecond.contains(word) ? Word::LibraryObject : Word::None, Listed};
  });
}

WordLists::WordLists(std::u8string_view only) {
  prepare(only.size());
  addEach(only, [](std::u8string_view) { return KnownWord{Word::None, Listed}; });
}

void WordLists::prepare(std::size_t bytes) {
  entries_.reserve(std::size(kWords) + 200 + bytes / 8);
  tags_.resize(8192);  // enough for the built-in lists
  slots_.resize(tags_.size());
  shift_ = 64 - 13;
}

void WordLists::addLanguage(std::size_t moreBytes) {
  prepare(moreBytes);
  for (const LanguageWord& word : kWords)
    add(word.text, word.text.data() + word.text.size(), {word.word, word.wordClass});
  for (const auto& [words, known] : kGroups)
    forEachEntry<u8' '>(words, [&, known = known, limit = words.data() + words.size()](
                                   std::u8string_view word) { add(word, limit, known); });
}

// Adds the entries of a list as what knownAs(entry) says, unless that is nothing.
template <typename KnownAs>
void WordLists::addEach(std::u8string_view list, KnownAs knownAs) {
  const bool ascii = isAscii(list);
  forEachEntry<u8'\r', u8'\n', u8'\0'>(list, [&](std::u8string_view word) {
    const KnownWord known = knownAs(word);
    if (known.wordClass == None) return;
    if (ascii || isAscii(word))
      add(word, list.data() + list.size(), known);
    else
      addWide(word, known);
  });
}

bool WordLists::contains(std::u8string_view word) const {
  const char8_t* const end = word.data() + word.size();
  return find(word.data(), end, end).wordClass != None;
}

// Adds an ASCII word that is not there yet; up to `limit` its text can be read.
void WordLists::add(std::u8string_view word, const char8_t* limit, KnownWord known) {
  if (entries_.size() == kMostEntries) return;
  const Key key = keyOf(word.data(), word.size(), limit);
  if (findAny(key, word.data()).wordClass != None) return;
  entries_.push_back({key.head, key.tail, static_cast<std::uint32_t>(texts_.size()),
                      static_cast<std::uint16_t>(word.size()), known});
  if (word.size() > 16) texts_.append(word);
  if (entries_.size() * 2 > tags_.size()) {  // at least every second slot is empty
    tags_.assign(tags_.size() * 2, 0);
    slots_.resize(tags_.size());
    --shift_;
    for (std::size_t i = 0; i < entries_.size(); ++i) addSlot(i);
  } else {
    addSlot(entries_.size() - 1);
  }
}

void WordLists::addWide(std::u8string_view word, KnownWord known) {
  if (contains(word)) return;
  const std::size_t offset = texts_.size();
  texts_ += word;
  wideNames_.add(texts_, NameKey(word), offset);
  wide_.push_back(known);
}

WordLists::Key WordLists::keyOf(const char8_t* begin, std::size_t length, const char8_t* limit) {
  Block block{};
  if (limit - begin >= static_cast<std::ptrdiff_t>(kShort))
    block = loadBlock(begin);
  else
    std::memcpy(&block, begin, std::min(length, kShort));
  Key key = keyOf(block, std::min(length, kShort));
  if (length <= kShort) return key;
  std::memcpy(&key.tail, begin + length - sizeof key.tail, sizeof key.tail);
  key.tail |= 0x2020202020202020;
  key.length = length;
  return key;
}

KnownWord WordLists::find(const char8_t* begin, const char8_t* end, const char8_t* limit) const {
  const KnownWord known =
      findAny(keyOf(begin, static_cast<std::size_t>(end - begin), limit), begin);
  return known.wordClass != WordClass::None || wide_.empty() ? known : findWide({begin, end});
}

// The word with that key; the text of a long one is at `word`.
KnownWord WordLists::findAny(const Key& key, const char8_t* word) const {
  return find(key,
              [&](const Entry& entry) { return key.length <= kShort || middleIs(entry, word); });
}

// Also a word that is long, beyond ASCII or at the end of the text.
WordLists::WordHere WordLists::readAny(const char8_t* p, const char8_t* limit) const {
  const char8_t* const end = skipWord(p, limit);
  return {end, find(p, end, limit)};
}

KnownWord WordLists::findWide(std::u8string_view word) const {
  if (isAscii(word)) return {};
  const std::uint32_t number = wideNames_.find(texts_, NameKey(word));
  return number == NameTable::kUnknown ? KnownWord{} : wide_[number];
}

void WordLists::addSlot(std::size_t entry) {
  const Entry& added = entries_[entry];
  const std::uint64_t hash = hashOf({added.head, added.tail, added.length});
  const std::size_t mask = tags_.size() - 1;
  std::size_t at = hash >> shift_;
  while (tags_[at] != 0) at = (at + 1) & mask;
  tags_[at] = tagOf(hash);
  slots_[at] = static_cast<std::uint16_t>(entry);
}

bool WordLists::middleIs(const Entry& entry, const char8_t* word) const {
  const char8_t* const text = texts_.data() + entry.text;
  return std::equal(text + 8, text + entry.length - 8, word + 8,
                    [](unsigned a, unsigned b) { return (a | 0x20U) == (b | 0x20U); });
}

}  // namespace tintline::vb
