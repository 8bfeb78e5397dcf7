// See line_highlighter.h. Tested by tests/unit/engine/engine_property_test.cpp and tests/golden.
#include "engine/line_highlighter.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

#include "base/text.h"

namespace tintline {
namespace {

// What the characters of a word are, as a set: the steps that a word does not
// need are then skipped.
enum CharacterClass : unsigned {
  kLetter = 1,  // passes fkt_NurBuchstaben
  kPlain = 2,   // written as it is
  kCode3 = 4,   // the same, but separates the entries of the procedure keyword list
  kComma = 8,   // splits words, as the next three do
  kOpening = 16,
  kClosing = 32,
  kColon = 64,
  kEscaped = 128  // "<", ">" and the double quote
};
constexpr unsigned kParenthesis = kOpening | kClosing;
constexpr unsigned kMarked = kParenthesis | kEscaped;  // not written as they are
constexpr unsigned kSplitting = kComma | kParenthesis | kColon;

constexpr std::array<unsigned char, 256> makeClasses() {
  std::array<unsigned char, 256> classes{};
  for (unsigned code = 0; code < 256; ++code) {
    const bool letter = (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z');
    classes[code] = letter || code == '$' ? kLetter : kPlain;
  }
  classes[3] = kCode3;
  classes[','] = kComma;
  classes['('] = kOpening;
  classes[')'] = kClosing;
  classes[':'] = kColon;
  classes['<'] = classes['>'] = classes['"'] = kEscaped;
  return classes;
}
constexpr std::array<unsigned char, 256> kClasses = makeClasses();

unsigned classOf(char c) { return kClasses[static_cast<unsigned char>(c)]; }

unsigned classesOf(std::string_view text) {
  unsigned classes = 0;
  for (const char c : text) classes |= classOf(c);
  return classes;
}

// No character of a word grows to more than this: a quote in its span has 28
// characters, a keyword of one letter as many, ":=" 29 for its two.
constexpr std::size_t kMaxGrowth = 32;

// No span adds more than this to what it wraps; a head's adds 33 and its name.
constexpr std::size_t kMaxSpan = 40;

constexpr std::string_view kProcedureKeywords = "\3Sub\3Function\3Property\3";

template <std::size_t N>
bool isWord(std::string_view word, const char (&literal)[N]) {
  return word.size() == N - 1 && std::memcmp(word.data(), literal, N - 1) == 0;
}

// The same test for a word of letters and for one that holds code 3 itself.
bool isProcedureKeyword(std::string_view letters) {
  return isWord(letters, "Sub") || isWord(letters, "Function") || isWord(letters, "Property");
}
bool isProcedureKeyword(std::string_view word, unsigned classes) {
  return (classes & ~(kLetter | kCode3)) == 0 &&
         kProcedureKeywords.find("\3" + std::string(word) + "\3") != std::string_view::npos;
}

// Whether the text holds an even number of double quotes, so that what follows
// it stands outside string literals.
bool evenQuotes(std::string_view text) {
  bool even = true;
  for (std::size_t at = 0; (at = text.find('"', at)) != std::string_view::npos; ++at) even = !even;
  return even;
}

constexpr CaselessText kRem(" REM");

std::size_t findLastRem(std::string_view line) {
  std::size_t last = std::string_view::npos;
  for (std::size_t hit = kRem.findIn(line); hit != std::string_view::npos;
       hit = kRem.findIn(line, hit + 1))
    last = hit;
  return last;
}

// Words that are no part of a head's name: as the keyword is not, wherever they
// stand, and with the blank behind them.
constexpr std::string_view kAnywhere[] = {"Private", "Declare"};
constexpr std::string_view kWithBlank[] = {"Function ", "Sub ", "Public ", "Lib "};

// Takes those words out one after the other, then all blanks.
std::string eraseNoNames(std::string_view head, std::string_view keyword) {
  std::string name(head);
  eraseAll(name, keyword);
  for (const std::string_view part : kAnywhere) eraseAll(name, part);
  for (const std::string_view part : kWithBlank) eraseAll(name, part);
  eraseAll(name, " ");
  return name;
}

// Whether one of those words is within the word, which ends with its blank if it has one.
bool holdsNoName(std::string_view word, std::string_view keyword) {
  const auto holds = [word](std::string_view part) {
    return word.find(part) != std::string_view::npos;
  };
  const auto endsWith = [word](std::string_view part) { return word.ends_with(part); };
  return holds(keyword) || std::any_of(std::begin(kAnywhere), std::end(kAnywhere), holds) ||
         std::any_of(std::begin(kWithBlank), std::end(kWithBlank), endsWith);
}

// Whether it is one of those words.
bool isNoName(std::string_view word, std::string_view keyword) {
  const std::string_view bare = RTrim(word);
  return bare == keyword ||
         std::find(std::begin(kAnywhere), std::end(kAnywhere), bare) != std::end(kAnywhere) ||
         std::find(std::begin(kWithBlank), std::end(kWithBlank), word) != std::end(kWithBlank);
}

// Where a text stands next in a word that is searched from left to right. Every stretch of the
// word is searched once, however many pieces the word has.
class NextMark {
 public:
  // `possible` says whether the word can hold the mark at all.
  NextMark(std::string_view mark, std::string_view word, bool possible)
      : mark_(mark), at_(possible ? std::min(word.find(mark), word.size()) : word.size()) {}

  // Position of the first mark at or behind `from`, which never moves back; the end of the word
  // when there is none.
  std::size_t in(std::string_view word, std::size_t from) {
    if (at_ < from) at_ = std::min(word.find(mark_, from), word.size());
    return at_;
  }

 private:
  std::string_view mark_;
  std::size_t at_;
};

// The pieces of a word, one after the other: piece [begin_, end_) of the word, the rest behind
// it.
class WordPieces {
 public:
  // `classes` are those of the word's characters.
  WordPieces(std::string_view word, unsigned classes)
      : word_(word),
        assignment_(":=", word, (classes & kColon) != 0),
        pair_("()", word, (classes & kOpening) != 0 && (classes & kClosing) != 0),
        comma_(",", word, (classes & kComma) != 0 && pair_.in(word, 0) != word.size()) {}

  std::string_view piece() const { return word_.substr(begin_, end_ - begin_); }

  // What the characters of the piece are.
  unsigned classes() const { return classes_; }

  // Whether a blank follows the piece; never while there is a rest.
  bool WortEnde() const { return WortEnde_; }

  // True when the rest begins with ":=", which is then dropped.
  bool dropNamedArgument() {
    const bool named = begin_ < word_.size() && assignment_.in(word_, begin_) == begin_;
    if (named) begin_ += 2;
    return named;
  }

  // A piece ends in front of a comma, parenthesis or ":="; a parenthesis is one by itself. A comma
  // or ":=" that it begins with hides those behind, "()" the parentheses up to the next comma.
  void split() {
    const std::size_t limit = nextBehind(assignment_);
    const std::size_t pair = pair_.in(word_, begin_);
    const std::size_t comma = pair < word_.size() ? nextBehind(comma_) : 0;
    if (pair + 2 <= comma) {
      end_ = std::min(comma, limit);
      classes_ = classesOf(piece());
    } else {
      splitAtMark(limit);
    }
    // The blank behind a word that ends in "(" is lost: kept on purpose.
    WortEnde_ = end_ == word_.size() && classes_ != kOpening;
  }

  // Goes on to the rest; false when there is none.
  bool next() {
    begin_ = end_;
    return begin_ < word_.size();
  }

 private:
  // Where the mark stands next; the end of the word when the rest begins with it.
  std::size_t nextBehind(NextMark& mark) {
    const std::size_t at = mark.in(word_, begin_);
    return at == begin_ ? word_.size() : at;
  }

  void splitAtMark(std::size_t limit) {
    end_ = begin_;
    classes_ = 0;
    if (end_ == limit) return;
    classes_ = classOf(word_[end_++]);
    if ((classes_ & kParenthesis) != 0) return;
    const unsigned ending = kParenthesis | (kComma & ~classes_);
    for (; end_ < limit; ++end_) {
      const unsigned next = classOf(word_[end_]);
      if ((next & ending) != 0) return;
      classes_ |= next;
    }
  }

  std::string_view word_;
  unsigned classes_ = 0;
  std::size_t begin_ = 0, end_ = 0;
  bool WortEnde_ = false;
  NextMark assignment_, pair_, comma_;
};

}  // namespace

std::string_view Highlighter::fkt_ZeileKonvertieren(std::string_view line, const char* limit) {
  html_.clear();
  line = map_.read(line, limit);
  std::string_view trimmed = line;
  trimmed.remove_prefix(map_.firstWord());
  if (KommentarFortsetzung_ || trimmed.starts_with('\'') || startsWithIgnoreCase(trimmed, "REM")) {
    writeComment(line);
    FortsetzungPruefen(line);
    return html_.view();
  }
  const SplitLine split = splitTrailingComment(line);
  writeCode(split.code);
  if (!split.comment.empty()) writeComment(split.comment);
  return html_.view();
}

// The split is made at the last apostrophe or " REM", whichever occurrence was judged.
Highlighter::SplitLine Highlighter::splitTrailingComment(std::string_view line) {
  std::size_t at;
  if (map_.holdsApostrophe() && modVBACode::fkt_KommentarZeichen(line)) {
    at = line.rfind('\'');
  } else if (map_.mayHoldRem() && modVBACode::fkt_KommentarRem(line)) {
    at = findLastRem(line);
  } else {
    return {line, {}};
  }
  FortsetzungPruefen(line);
  return {line.substr(0, at), line.substr(at)};
}

void Highlighter::FortsetzungPruefen(std::string_view text) {
  KommentarFortsetzung_ = RTrim(text).ends_with('_');
}

// Splits the code at every single blank. A procedure keyword among the words
// makes the whole code a head; the words written before it are dropped.
void Highlighter::writeCode(std::string_view code) {
  if (code.empty()) return;
  const std::size_t first = map_.firstWord();
  if (first < code.size() && code[first] == 'E' && modVBACode::fkt_ProzedurEnde(code)) {
    html_.ensure(code.size() + kMaxSpan);
    html_.put("<span class='EndSub'>");
    html_.put(code);
    html_.put("</span>");
    return;
  }
  // Words that are written as they stand are copied with their blanks, many at once.
  map_.cut(code.size());
  std::size_t copied = 0;
  const auto copyUntil = [&](std::size_t end, std::size_t more) {
    html_.ensure(end - copied + more);
    html_.putReadable({code.data() + copied, end - copied});
  };
  for (LineMap::Words words(map_); words.next();) {
    const std::string_view word(code.data() + words.begin(), words.end() - words.begin());
    if (words.isLetters()) {
      if (isProcedureKeyword(word)) return writeHead(code, word);
      const WordClass wordClass = keywords_.lookupReadable(word);
      if (wordClass == WordClass::None) continue;
      copyUntil(words.begin(), kMaxSpan + word.size());
      writeKeyword(word, wordClass);
      copied = words.end();
    } else if (words.holdsSpecial()) {
      const unsigned classes = classesOf(word);
      if (isProcedureKeyword(word, classes)) return writeHead(code, word);
      copyUntil(words.begin(), word.size() * kMaxGrowth);
      copied = words.end() + (writeWord(word, classes) ? 0 : 1);
    }
  }
  if (copied > code.size()) return;  // no blank follows the last word
  copyUntil(code.size(), 1);
  html_.put(' ');
}

// Returns whether a blank is to follow the word, which is not all letters.
bool Highlighter::writeWord(std::string_view word, unsigned classes) {
  if ((classes & kSplitting) != 0) return writePieces(word, classes);
  writeMarked(word);
  return true;
}

bool Highlighter::writePieces(std::string_view word, unsigned classes) {
  WordPieces pieces(word, classes);
  do {
    if (pieces.dropNamedArgument()) html_.put("<span class='Parms'>:=</span>");
    pieces.split();
    writePiece(pieces.piece(), pieces.classes());
  } while (pieces.next());
  return pieces.WortEnde();
}

void Highlighter::writePiece(std::string_view piece, unsigned classes) {
  if ((classes & kMarked) != 0) return writeMarked(piece);
  const WordClass wordClass =
      classes == kLetter ? keywords_.lookupReadable(piece) : WordClass::None;
  if (wordClass == WordClass::None) return html_.putReadable(piece);
  writeKeyword(piece, wordClass);
}

void Highlighter::writeKeyword(std::string_view word, WordClass wordClass) {
  if (wordClass == WordClass::Code)
    html_.put("<span class='Code'>");
  else
    html_.put("<span class='Parms'>");
  html_.putReadable(word);
  html_.put("</span>");
}

// Only the first "<" and the first ">" of a piece are escaped: kept on purpose.
void Highlighter::writeMarked(std::string_view piece) {
  bool escapeLess = true, escapeGreater = true;
  for (const char c : piece) {
    if (c == '"' || c == '(' || c == ')') {
      html_.put("<span class='Marks'>");
      html_.put(c);
      html_.put("</span>");
    } else if (c == '<' && std::exchange(escapeLess, false)) {
      html_.put("&lt;");
    } else if (c == '>' && std::exchange(escapeGreater, false)) {
      html_.put("&gt;");
    } else {
      html_.put(c);
    }
  }
}

// The head's code is written as it stands, without highlighting or escapes.
void Highlighter::writeHead(std::string_view code, std::string_view keyword) {
  writeName(code, keyword);
  html_.put("' class='Sub'>");
  html_.put(code);
  html_.put("</span>");
}

// The name under which calls and the index reach a procedure head: the code in
// front of the first parenthesis or quote, without the words that are no part of
// the name. These stand alone nearly always: then one pass gives what taking them
// out one after the other does.
void Highlighter::writeName(std::string_view code, std::string_view keyword) {
  std::string_view head = code.substr(0, code.find('('));
  head = head.substr(0, head.find('"'));
  html_.clear();
  html_.ensure(head.size() + code.size() + kMaxSpan);
  html_.put("<span name='");
  for (std::string_view rest = head; !rest.empty();) {
    const std::string_view word = takeWord(rest);
    if (isNoName(word, keyword)) continue;
    if (holdsNoName(word, keyword)) {
      // What is around it joins, and that may be one of the words then.
      html_.clear();
      html_.put("<span name='");
      return html_.put(eraseNoNames(head, keyword));
    }
    html_.put(RTrim(word));
  }
}

void Highlighter::writeComment(std::string_view comment) {
  html_.ensure(comment.size() + kMaxSpan);
  html_.put("<span class='Rem'>");
  html_.put(comment);
  html_.put("</span>");
}

namespace modVBACode {

bool fkt_KommentarZeichen(std::string_view line) {
  const std::size_t apostrophe = line.rfind('\'');
  return apostrophe != std::string_view::npos && evenQuotes(line.substr(0, apostrophe));
}

bool fkt_KommentarRem(std::string_view line) {
  bool outside = true;
  std::size_t judged = 0;
  for (std::size_t hit; (hit = kRem.findIn(line, judged)) != std::string_view::npos;
       judged = hit + 1) {
    outside = outside == evenQuotes(line.substr(judged, hit - judged));
    if (outside) return true;
  }
  return false;
}

bool fkt_ProzedurEnde(std::string_view line) {
  const std::string_view trimmed = LTrim(line);
  return trimmed.starts_with("End Property") || trimmed.starts_with("End Sub") ||
         trimmed.starts_with("End Function");
}

}  // namespace modVBACode

}  // namespace tintline
