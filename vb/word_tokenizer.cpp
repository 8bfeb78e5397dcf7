// Words that may mean something, by where they stand. See line_tokenizer.h.
//
// Tested by tests/unit/any_text_property_test.cpp and the cases in tests/golden/language.
#include "vb/line_tokenizer.h"
#include "vb/literals.h"

namespace tintline::vb {

// The end of blanks and continuations at `p`.
LineTokenizer::Bytes LineTokenizer::skipGap(Bytes p) const {
  for (;;) {
    const Bytes q = skipBlanks(p, end_);
    const Bytes line = q > p && q < end_ && *q == u8'_' ? continuationEnd(q, end_) : nullptr;
    if (line == nullptr) return q;
    p = line;
  }
}

// The first byte of the next token; a line end when there is none.
char8_t LineTokenizer::byteBehind(Bytes p) const {
  p = skipGap(p);
  return p < end_ ? *p : u8'\n';
}

// The word of the language that the next token is, None when it is none.
Word LineTokenizer::wordBehind(Bytes p) const {
  p = skipGap(p);
  return p < end_ && classOf(*p) == ByteClass::Letter
             ? words_.find(NameKey({p, skipWord(p, end_)}, end_)).word
             : Word::None;
}

LineTokenizer::Bytes LineTokenizer::knownWord(Bytes p, Bytes end, KnownWord known) {
  switch (context_) {
    case Context::Member:
    case Context::ProcedureHead:
    case Context::TypeHead:
    case Context::TypeMember:
      return plainName(p, end);
    case Context::DebugMember:
      if (known.word != Word::Print && known.word != Word::Assert) return plainName(p, end);
      return keyword(p, end, known.word);
    default:
      break;
  }
  if (block_ != Word::None && atStart() && isBlockMember(end, known)) return plainName(p, end);
  switch (known.wordClass) {
    case WordClass::Keyword:
      return keyword(p, end, known.word);
    case WordClass::Type:
      single(p, TokenKind::TypeWord);
      return end + suffixLength(end, end_, false);
    case WordClass::Constant:
      single(p, TokenKind::ConstantWord);
      return end + suffixLength(end, end_, false);
    case WordClass::Operator:
      return operatorWord(p, end, known.word);
    case WordClass::ReservedFunction:
      return function(p, end, known);
    case WordClass::Runtime:
      return runtimeName(p, end, TokenKind::Builtin, known.word);
    case WordClass::Listed:
      return runtimeName(p, end, TokenKind::ListedWord, known.word);
    case WordClass::ByPlace:
      return wordByPlace(p, end, known.word);
    case WordClass::None:
      break;
  }
  return plainName(p, end);
}

// Whether the first word of a statement inside Type or Enum is a member's name. It is none when
// it closes the block, begins a comment, or stands before a word as only other statements do.
bool LineTokenizer::isBlockMember(Bytes end, KnownWord known) {
  if (known.word == Word::Rem) return false;
  const char8_t next = byteBehind(end);
  const bool wordFollows = classOf(next) == ByteClass::Letter || next == u8'_' || next >= 0x80;
  if (!wordFollows || known.wordClass != WordClass::Keyword) return known.word != Word::Property;
  const Word follower = wordBehind(end);
  if (block_ == Word::Type && follower == Word::As) return true;
  block_ = Word::None;
  return false;
}

LineTokenizer::Bytes LineTokenizer::keyword(Bytes p, Bytes end, Word word) {
  if (word == Word::Rem) {
    if (atStart()) return comment(p, end);
    return plainName(p, end);
  }
  if (word == Word::Input && !atStart() && context_ != Context::OpenFor &&
      statement_.head != Word::Line && (byteBehind(end) == u8'(' || byteBehind(end) == u8'$'))
    return runtimeName(p, end, TokenKind::Builtin, Word::None);
  if (word == Word::Then || word == Word::Else) noteBreak();
  emit(TokenKind::Keyword, p, word);
  context_ = behindKeyword(word);
  return end + suffixLength(end, end_, false);
}

// What a keyword leaves; sets what it says about its statement.
Context LineTokenizer::behindKeyword(Word word) {
  const Context before = context_;
  const bool start = atStart(), headPlace = atHeadPlace();
  if (headPlace) statement_.head = word;
  switch (word) {
    case Word::As:
      return behindAs();
    case Word::New:
    case Word::Implements:
      return Context::Type;
    case Word::Then:
    case Word::Else:
      statement_ = {};
      return Context::Branch;
    case Word::End:
    case Word::Exit:
      return start ? Context::Closing : Context::Plain;
    case Word::On:
      return start ? Context::On : Context::Plain;
    case Word::GoTo:
    case Word::GoSub:
      statement_.jumpSeen = statement_.head == Word::On;
      return Context::Jump;
    case Word::Resume:
      return Context::Jump;
    case Word::Option:
      return start ? Context::Option : Context::Plain;
    case Word::For:
      return statement_.head == Word::Open ? Context::OpenFor : Context::Plain;
    case Word::Lock:
      return statement_.head == Word::Open ? Context::OpenAccess : Context::Plain;
    case Word::To:
      statement_.toSeen = statement_.toSeen || statement_.open == 0;
      return Context::Plain;
    case Word::Debug:
      return Context::DebugObject;
    case Word::Get:
    case Word::Let:
    case Word::Set:
      return before == Context::PropertyHead ? Context::ProcedureHead : Context::Plain;
    case Word::Private:
      if (before == Context::Option) return Context::OptionPrivate;
      [[fallthrough]];
    default:
      return headPlace ? behindHeadWord(word) : Context::Plain;
  }
}

// What a word leaves that may begin a declaration and stands where one begins.
Context LineTokenizer::behindHeadWord(Word word) {
  switch (word) {
    case Word::Public:
    case Word::Private:
    case Word::Friend:
    case Word::Global:
    case Word::Static:
      return Context::Modifier;
    case Word::Declare:
      return Context::DeclareHead;
    case Word::Sub:
    case Word::Function:
    case Word::Event:
      if (context_ == Context::DeclareHead) statement_.head = Word::Declare;
      return Context::ProcedureHead;
    case Word::Type:
    case Word::Enum:
      declared_ = word;
      return Context::TypeHead;
    default:
      return Context::Plain;
  }
}

// As of a declaration, of Open, or of "Name a As b", which makes that Name a keyword.
Context LineTokenizer::behindAs() {
  if (statement_.nameWord != 0) {
    Token& name = tokens_[statement_.nameWord - 1];
    if (context_ != Context::LabelName) {
      name.kind = TokenKind::Keyword;
      name.word = Word::Name;
      return Context::Plain;
    }
  }
  return statement_.head == Word::Open ? Context::Plain : Context::Type;
}

LineTokenizer::Bytes LineTokenizer::operatorWord(Bytes p, Bytes end, Word word) {
  emit(TokenKind::OperatorWord, p, word);
  const bool typeFollows = word == Word::Is && statement_.typeOfSeen;
  statement_.typeOfSeen = word == Word::TypeOf || (statement_.typeOfSeen && word != Word::Is);
  context_ = typeFollows ? Context::Type : Context::Plain;
  return end + suffixLength(end, end_, false);
}

// A function that is reserved. Date and String are types where one follows.
LineTokenizer::Bytes LineTokenizer::function(Bytes p, Bytes end, KnownWord known) {
  const bool type =
      context_ == Context::Type && (known.word == Word::Date || known.word == Word::String);
  const bool ofOpen = known.word == Word::Len && statement_.head == Word::Open &&
                      statement_.open == 0 && byteBehind(end) == u8'=';
  emit(type     ? TokenKind::TypeWord
       : ofOpen ? TokenKind::Keyword
                : TokenKind::Builtin,
       p, known.word);
  context_ = Context::Plain;
  return end + suffixLength(end, end_, !ofOpen);
}

// A name that has a meaning where it is not the module's own.
LineTokenizer::Bytes LineTokenizer::runtimeName(Bytes p, Bytes end, TokenKind kind, Word word) {
  const Context before = context_;
  const Bytes behind = plainName(p, end);
  const bool namesType = before == Context::Type && word == Word::LibraryFunction;
  if (before != Context::Jump && !namesType) {
    next_[-1].kind = kind;
    next_[-1].word = word;
  }
  return behind;
}

LineTokenizer::Bytes LineTokenizer::wordByPlace(Bytes p, Bytes end, Word word) {
  if (word == Word::Object && context_ == Context::Type) {
    emit(TokenKind::TypeWord, p, word);
    context_ = Context::Plain;
    return end;
  }
  if (word == Word::Attribute && context_ == Context::LineStart) {
    const char8_t next = byteBehind(end);
    if (classOf(next) == ByteClass::Letter || next == u8'_' || next == u8'[' || next >= 0x80) {
      directive_ = true;
      emit(TokenKind::Directive, p, word);
      context_ = Context::Plain;
      return end;
    }
  }
  if (suffixLength(end, end_, false) == 0 && isKeywordHere(end, word)) {
    const Context behind = behindWordByPlace(word);
    emit(TokenKind::Keyword, p, word);
    context_ = behind;
    return end;
  }
  const char8_t next = byteBehind(end);
  const bool function = word == Word::Error || (word == Word::Seek && next == u8'(') ||
                        (word == Word::Line && atStart() && (next == u8'(' || next == u8'-'));
  if (function && context_ != Context::Type)
    return runtimeName(p, end, TokenKind::Builtin, Word::None);
  if (word == Word::Name && atStart()) statement_.nameWord = count() + 1;
  return plainName(p, end);
}

// Whether a word that is reserved by its place stands in it. `end` is where it ends.
bool LineTokenizer::isKeywordHere(Bytes end, Word word) const {
  switch (word) {
    case Word::Property:
      if (context_ == Context::Closing) return true;
      if (!atStart() && context_ != Context::Modifier) return false;
      return wordBehind(end) == Word::Get || wordBehind(end) == Word::Let ||
             wordBehind(end) == Word::Set;
    case Word::PtrSafe:
      return context_ == Context::DeclareHead;
    case Word::Lib:
    case Word::Alias:
    case Word::CDecl:
      return statement_.head == Word::Declare && statement_.open == 0;
    case Word::Base:
    case Word::Compare:
    case Word::Explicit:
      return context_ == Context::Option;
    case Word::Text:
    case Word::Database:
      return context_ == Context::OptionCompare;
    case Word::Binary:
      return context_ == Context::OptionCompare || context_ == Context::OpenFor;
    case Word::Append:
    case Word::Output:
    case Word::Random:
      return context_ == Context::OpenFor;
    case Word::Module:
      return context_ == Context::OptionPrivate;
    case Word::Local:
      return context_ == Context::On && wordBehind(end) == Word::Error;
    case Word::Access:
      return statement_.head == Word::Open && statement_.open == 0 &&
             (wordBehind(end) == Word::Read || wordBehind(end) == Word::Write);
    case Word::Read:
      return context_ == Context::OpenAccess;
    case Word::Step:
      return statement_.head == Word::For && statement_.toSeen && statement_.open == 0;
    default:
      return context_ == Context::On ? word == Word::Error
                                     : atStart() && isStatementHere(end, word);
  }
}

// Whether such a word begins its statement, by what follows it.
bool LineTokenizer::isStatementHere(Bytes end, Word word) const {
  const char8_t next = byteBehind(end);
  const bool closed = isLineEnd(next) || next == u8'\'' || next == u8':';
  switch (word) {
    case Word::Error:
    case Word::Seek:
      return !closed && next != u8'=' && next != u8'.' && next != u8'!' && next != u8',';
    case Word::Line:
      return wordBehind(end) == Word::Input;
    case Word::Reset:
      return closed && (next != u8':' || context_ > Context::LineNumber);
    case Word::Width:
      return next == u8'#';
    default:
      return false;
  }
}

Context LineTokenizer::behindWordByPlace(Word word) {
  if (atStart()) statement_.head = word;
  switch (word) {
    case Word::Property:
      return context_ == Context::Closing ? Context::Plain : Context::PropertyHead;
    case Word::PtrSafe:
      return Context::DeclareHead;
    case Word::Compare:
      return Context::OptionCompare;
    case Word::Local:
      return Context::On;
    case Word::Error:
      statement_.errorSeen = context_ == Context::On;
      return Context::Plain;
    case Word::Access:
    case Word::Read:
      return Context::OpenAccess;
    default:
      return Context::Plain;
  }
}

}  // namespace tintline::vb
