// See word.h. Tested by tests/unit/any_text_property_test.cpp.
#include "vb/word.h"

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

// Calls `take` with the key of each entry of a list; any of the bytes ends one.
template <char8_t... Ends, typename Take>
void forEachEntry(std::u8string_view list, Take take) {
  const char8_t* const listEnd = list.data() + list.size();
  for (const char8_t *begin = list.data(), *end; begin < listEnd; begin = end + 1) {
    end = findAnyOf<Ends...>(begin, listEnd);
    std::u8string_view entry(begin, end);
    while (entry.ends_with(u8' ') || entry.ends_with(u8'\t')) entry.remove_suffix(1);
    while (entry.starts_with(u8' ') || entry.starts_with(u8'\t')) entry.remove_prefix(1);
    if (entry.ends_with(u8'$')) entry.remove_suffix(1);
    if (!entry.empty() && entry.size() <= kLongest) take(NameKey(entry, listEnd));
  }
}

// The built-in lists are ASCII.
std::u8string_view builtInList(int number) {
  const std::string_view list = programResource(number);
  return {reinterpret_cast<const char8_t*>(list.data()), list.size()};
}

}  // namespace

WordLists::WordLists() {
  addLanguage();
  addEach(builtInList(102), [](const NameKey&) { return KnownWord{Word::LibraryObject, Listed}; });
}

WordLists::WordLists(std::u8string_view first, std::u8string_view second) {
  addLanguage();
  const WordLists builtInFirst(builtInList(101)), builtInSecond(builtInList(102));
  addEach(first, [&](const NameKey& word) {
    const bool builtIn = builtInFirst.find(word).wordClass != None;
    return builtIn ? KnownWord{} : KnownWord{Word::None, Runtime};
  });
  addEach(second, [&](const NameKey& word) {
    const bool builtIn = builtInSecond.find(word).wordClass != None;
    return KnownWord{builtIn ? Word::LibraryObject : Word::None, Listed};
  });
}

WordLists::WordLists(std::u8string_view only) {
  reserve();
  addEach(only, [](const NameKey&) { return KnownWord{Word::None, Listed}; });
}

void WordLists::reserve() {
  constexpr std::size_t kUsual = 2700;  // words of the language and the built-in second list
  words_.reserve(kUsual);
  known_.reserve(kUsual);
  texts_.reserve(16 * kUsual);
}

void WordLists::addLanguage() {
  reserve();
  for (const LanguageWord& word : kWords) add(NameKey(word.text), {word.word, word.wordClass});
  for (const auto& [words, known] : kGroups)
    forEachEntry<u8' '>(words, [&, known = known](const NameKey& word) { add(word, known); });
}

// Adds the entries of a list as what knownAs(entry) says, unless that is nothing.
template <typename KnownAs>
void WordLists::addEach(std::u8string_view list, KnownAs knownAs) {
  forEachEntry<u8'\r', u8'\n', u8'\0'>(list, [&](const NameKey& word) {
    if (const KnownWord known = knownAs(word); known.wordClass != None) add(word, known);
  });
}

// A word that is there already stays as it is.
void WordLists::add(const NameKey& word, KnownWord known) {
  if (words_.add(texts_, word, texts_.size()) < known_.size()) return;
  texts_ += word.name();
  known_.push_back(known);
  const std::uint32_t hash = word.hash();
  filter_[hash / kBucket] |= static_cast<std::uint8_t>(1U << (hash & 7));
}

}  // namespace tintline::vb
