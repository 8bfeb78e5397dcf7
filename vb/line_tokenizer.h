// The tokenizer's inside: what it knows while it goes over a text. Others include tokenizer.h.
//
// What a word means depends on what stands in front of it. The tokenizer keeps that as one
// `Context`, which each token sets anew, and a little about the statement; no other state, no
// recursion, no token is looked at again but the one in front.
//
// Tested by tests/unit/any_text_property_test.cpp and the cases in tests/golden/language.
#pragma once

#include <bit>
#include <cstdint>

#include "vb/name_table.h"
#include "vb/scan.h"
#include "vb/token.h"

namespace tintline::vb {

// What the next token stands behind.
enum class Context : std::uint8_t {
  LineStart,  // these four begin a statement
  LineNumber,
  Statement,  // behind ":" or a label
  Branch,     // behind Then or Else
  Plain,      // anything that does not matter
  LabelName,  // a name that a ":" makes a label
  Member,     // "." or "!"
  DebugObject,
  DebugMember,    // "Debug."
  Modifier,       // Public, Static ... at the start of a statement
  DeclareHead,    // Declare, PtrSafe
  PropertyHead,   // Property of a head
  ProcedureHead,  // a name of a procedure follows
  TypeHead,       // a name of a Type or Enum follows
  Type,           // As, New, Implements: the name of a type follows
  TypePath,       // ... which has just come
  TypeMember,     // ... and a "." behind it
  Jump,           // GoTo, GoSub, Resume: a label follows
  Closing,        // End, Exit
  On,
  Option,
  OptionCompare,
  OptionPrivate,
  OpenFor,
  OpenAccess,
  Count
};

class LineTokenizer {
 public:
  LineTokenizer(std::u8string_view text, const WordLists& words, NameTable& names, Tokens& tokens,
                Breaks& breaks);
  void run();

 private:
  using Bytes = const char8_t*;  // a place in the text
  static constexpr std::ptrdiff_t kWidestGap = 255;

  struct Statement {
    Word head = Word::None;      // its first word, where that matters
    bool toSeen = false;         // For i = 1 To ...
    bool typeOfSeen = false;     // TypeOf x ...
    bool jumpSeen = false;       // On x GoTo ...
    bool errorSeen = false;      // On Error ...
    std::uint32_t open = 0;      // "(" that are not closed
    std::uint32_t nameWord = 0;  // token of the word Name that begins it, + 1
  };

  // tokenizer.cpp: tokens by their bytes. Each takes where its token begins and gives its end.
  Bytes token(Bytes p);
  Bytes lineEnd(Bytes p);
  Bytes underscore(Bytes p);
  Bytes word(Bytes p);
  Bytes anyWord(Bytes p);
  Bytes word(const NameKey& key);
  Bytes plainName(Bytes p, Bytes end, Word number = Word::None);
  Bytes number(Bytes p);
  Bytes string(Bytes p);
  Bytes comment(Bytes p, Bytes text);
  Bytes hash(Bytes p);
  Bytes ampersand(Bytes p);
  Bytes dot(Bytes p);
  Bytes colon(Bytes p);
  Bytes comparison(Bytes p);
  Bytes bracket(Bytes p);
  Bytes wide(Bytes p);
  Bytes single(Bytes p, TokenKind kind);

  // word_tokenizer.cpp: words that may mean something.
  Bytes knownWord(Bytes p, Bytes end, KnownWord known);
  bool isBlockMember(Bytes end, KnownWord known);
  Bytes keyword(Bytes p, Bytes end, Word word);
  Context behindKeyword(Word word);
  Context behindHeadWord(Word word);
  Context behindAs();
  Bytes operatorWord(Bytes p, Bytes end, Word word);
  Bytes function(Bytes p, Bytes end, KnownWord known);
  Bytes runtimeName(Bytes p, Bytes end, TokenKind kind, Word word);
  Bytes wordByPlace(Bytes p, Bytes end, Word word);
  bool isKeywordHere(Bytes end, Word word) const;
  bool isStatementHere(Bytes end, Word word) const;
  Context behindWordByPlace(Word word);
  Bytes attribute(Bytes p, Bytes end);
  Bytes skipGap(Bytes p) const;
  char8_t byteBehind(Bytes p) const;
  Word wordBehind(Bytes p) const;

  // header_tokenizer.cpp: the file header.
  bool atHeader(Bytes p) const;
  Bytes header(Bytes p);
  Bytes headerLine(Bytes p, int& depth);
  Bytes headerToken(Bytes p);
  Word headerWord(Bytes p, Bytes end, int depth) const;

  bool atStart() const { return context_ <= Context::Branch; }
  bool atHeadPlace() const {
    return context_ <= Context::Branch || context_ == Context::Modifier ||
           context_ == Context::DeclareHead;
  }
  void emitWideGap(Bytes p);
  Token* lastSignificant();
  void makeRoom();
  std::uint32_t count() const { return static_cast<std::uint32_t>(next_ - tokens_.data()); }
  void noteBreak() { *nextBreak_++ = count(); }  // the token that is emitted next

  // At most one token behind each takeBlanks. Its bytes end where the next one, less its gap,
  // begins.
  void emit(TokenKind kind, Bytes p, Word word = Word::None) {
    const auto begin = static_cast<std::uint32_t>(p - begin_);
    *next_++ = std::bit_cast<Token>(  // in one store
        begin | static_cast<std::uint64_t>(word) << 32 | static_cast<std::uint64_t>(kind) << 48 |
        static_cast<std::uint64_t>(gap_) << 56);
  }
  // Makes room for the token at the end of the blanks at `p` (here, so that nothing is called where
  // one is emitted), and sets its gap_.
  [[gnu::always_inline]] Bytes takeBlanks(Bytes p) {
    constexpr std::ptrdiff_t kMost = 2;  // tokens: a wide gap and what stands behind it
    if (room_ - next_ < kMost) makeRoom();
    const Bytes behind = skipBlanks(p, end_);
    if (behind - p > kWidestGap)
      emitWideGap(p);
    else
      gap_ = static_cast<std::uint8_t>(behind - p);
    return behind;
  }

  const Bytes begin_, end_;
  const WordLists& words_;
  NameTable& names_;
  Tokens& tokens_;
  Breaks& breaks_;
  Token* next_;  // where the next one goes
  Token* room_;  // the end of the room for them
  std::uint32_t* nextBreak_;
  std::uint8_t gap_ = 0;
  Context context_ = Context::LineStart;
  bool directive_ = false;   // a line of "#If" or Attribute
  Word block_ = Word::None;  // Type or Enum whose members are read
  Word declared_ = Word::None;
  Statement statement_;
  Bytes noBracketBefore_;  // no "]" on the line up to here
};

}  // namespace tintline::vb
