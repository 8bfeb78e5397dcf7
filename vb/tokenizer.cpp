// See tokenizer.h. Tested by tests/unit/any_text_property_test.cpp and tests/golden/language.
#include "vb/tokenizer.h"

#include <array>

#include "vb/line_tokenizer.h"
#include "vb/literals.h"

namespace tintline::vb {
namespace {

// What a name is that means nothing in itself, and what it leaves, by what it stands behind.
struct NameRule {
  TokenKind kind = TokenKind::Name;
  Context behind = Context::Plain;
};
constexpr auto kNameRules = [] {
  std::array<NameRule, static_cast<std::size_t>(Context::Count)> rules{};
  const auto at = [&rules](Context context) -> NameRule& {
    return rules[static_cast<std::size_t>(context)];
  };
  at(Context::LineStart).behind = Context::LabelName;
  at(Context::LineNumber).behind = Context::LabelName;
  at(Context::ProcedureHead).kind = TokenKind::ProcedureName;
  at(Context::TypeHead).kind = TokenKind::TypeName;
  at(Context::Type) = {TokenKind::TypeName, Context::TypePath};
  at(Context::TypeMember) = {TokenKind::TypeName, Context::TypePath};
  at(Context::Jump).kind = TokenKind::Label;
  return rules;
}();

}  // namespace

Tokens tokenize(std::u8string_view text, const WordLists& words) {
  NameTable names;
  Breaks breaks;
  return tokenize(text, words, names, breaks);
}

Tokens tokenize(std::u8string_view text, const WordLists& words, NameTable& names, Breaks& breaks) {
  Tokens tokens;
  tokens.reserve(text.size() / 4 + 16);  // more than sources have; what is not used costs nothing
  LineTokenizer(text, words, names, tokens, breaks).run();
  return tokens;
}

LineTokenizer::LineTokenizer(std::u8string_view text, const WordLists& words, NameTable& names,
                             Tokens& tokens, Breaks& breaks)
    : begin_(text.data()),
      end_(text.data() + text.size()),
      words_(words),
      names_(names),
      tokens_(tokens),
      breaks_(breaks),
      next_(tokens.data()),
      room_(next_),
      nextBreak_(breaks.data()),
      noBracketBefore_(text.data()) {}

void LineTokenizer::emitWideGap(Bytes p) {
  gap_ = 0;
  emit(TokenKind::Blank, p);
}

// Nearly all words have less than sixteen characters and are ASCII.
[[gnu::always_inline]] inline LineTokenizer::Bytes LineTokenizer::word(Bytes p) {
  if (end_ - p < static_cast<std::ptrdiff_t>(sizeof(Block))) return anyWord(p);
  const Block block = loadBlock(p);
  const std::size_t length = wordBytesIn(block);
  if (length == sizeof(Block) || p[length] >= 0x80) return anyWord(p);
  return word(NameKey::ofShort({p, length}, block));
}

LineTokenizer::Bytes LineTokenizer::anyWord(Bytes p) {
  return word(NameKey({p, skipWord(p, end_)}, end_));
}

[[gnu::always_inline]] inline LineTokenizer::Bytes LineTokenizer::word(const NameKey& key) {
  const Bytes p = key.name().data(), end = p + key.name().size();
  const KnownWord known = words_.find(key);
  if (directive_) {
    const bool ofLanguage = known.wordClass != WordClass::Listed;
    emit(TokenKind::Directive, p, ofLanguage ? known.word : Word::None);
    context_ = Context::Plain;
    return end;
  }
  if (known.wordClass != WordClass::None) return knownWord(p, end, known);
  const auto begin = static_cast<std::size_t>(p - begin_);
  return plainName(p, end, numberedName(names_.add({begin_, end_}, key, begin)));
}

// (In `run`, as the word above: half of the bytes are words.)
[[gnu::always_inline]] inline LineTokenizer::Bytes LineTokenizer::token(Bytes p) {
  switch (classOf(*p)) {
    case ByteClass::Letter:
      return word(p);
    case ByteClass::Underscore:
      return underscore(p);
    case ByteClass::Wide:
      return wide(p);
    case ByteClass::Digit:
      return number(p);
    case ByteClass::LineEnd:
      return lineEnd(p);
    case ByteClass::Quote:
      return string(p);
    case ByteClass::Apostrophe:
      return comment(p, p + 1);
    case ByteClass::Hash:
      return hash(p);
    case ByteClass::Ampersand:
      return ampersand(p);
    case ByteClass::Dot:
      return dot(p);
    case ByteClass::Bang:
      p = single(p, TokenKind::Punctuation);
      context_ = Context::Member;
      return p;
    case ByteClass::Colon:
      return colon(p);
    case ByteClass::Comparison:
      return comparison(p);
    case ByteClass::Operator:
      return single(p, TokenKind::Operator);
    case ByteClass::Open:
      ++statement_.open;
      return single(p, TokenKind::Punctuation);
    case ByteClass::Close:
      if (statement_.open > 0) --statement_.open;
      return single(p, TokenKind::Punctuation);
    case ByteClass::Comma:
      p = single(p, TokenKind::Punctuation);
      if (statement_.jumpSeen && statement_.open == 0) context_ = Context::Jump;
      return p;
    case ByteClass::Semicolon:
      return single(p, TokenKind::Punctuation);
    case ByteClass::Bracket:
      return bracket(p);
    case ByteClass::Blank:  // takeBlanks has left none
    case ByteClass::Error:
      break;
  }
  return single(p, TokenKind::Error);
}

void LineTokenizer::run() {
  Bytes p = atHeader(begin_) ? header(begin_) : begin_;
  while ((p = takeBlanks(p)) < end_) p = token(p);
  noteBreak();
  emit(TokenKind::End, end_);
  tokens_.resize(count());
  breaks_.resize(static_cast<std::size_t>(nextBreak_ - breaks_.data()));
}

LineTokenizer::Bytes LineTokenizer::single(Bytes p, TokenKind kind) {
  emit(kind, p);
  context_ = Context::Plain;
  return p + 1;
}

LineTokenizer::Bytes LineTokenizer::lineEnd(Bytes p) {
  noteBreak();
  emit(TokenKind::LineEnd, p);
  context_ = Context::LineStart;
  directive_ = false;
  statement_ = {};
  return skipLineEnd(p, end_);
}

LineTokenizer::Bytes LineTokenizer::underscore(Bytes p) {
  const bool blankBefore = gap_ > 0 || (count() > 0 && next_[-1].kind == TokenKind::Blank);
  const Bytes behind = blankBefore ? continuationEnd(p, end_) : nullptr;
  if (behind == nullptr) return word(p);
  noteBreak();
  emit(TokenKind::Continuation, p);  // which leaves the context as it is
  return behind;
}

LineTokenizer::Bytes LineTokenizer::plainName(Bytes p, Bytes end, Word number) {
  const NameRule rule = kNameRules[static_cast<std::size_t>(context_)];
  emit(rule.kind, p, number);
  if (context_ == Context::TypeHead) block_ = declared_;
  context_ =
      block_ != Word::None && rule.behind == Context::LabelName ? Context::Plain : rule.behind;
  return end + suffixLength(end, end_, true);
}

LineTokenizer::Bytes LineTokenizer::wide(Bytes p) {
  if (wideLetter(p, end_) != 0) return word(p);
  single(p, TokenKind::Error);
  return p + characterLength(p, end_);
}

LineTokenizer::Bytes LineTokenizer::number(Bytes p) {
  const Bytes end = decimalEnd(p, end_);
  const bool whole = skipDigits(p, end) == end;
  const bool zero = end - p == 1 && *p == u8'0';
  const bool noLabel = statement_.errorSeen || statement_.head == Word::Resume;
  const bool label = whole && (context_ == Context::LineStart || context_ == Context::Branch ||
                               (context_ == Context::Jump && !(zero && noLabel)));
  emit(label ? TokenKind::Label : TokenKind::Number, p);
  context_ = label && context_ == Context::LineStart ? Context::LineNumber : Context::Plain;
  return end;
}

LineTokenizer::Bytes LineTokenizer::string(Bytes p) {
  emit(TokenKind::String, p);
  context_ = Context::Plain;
  for (Bytes q = p + 1;; q += 2) {
    q = findAnyOf<u8'"', u8'\r', u8'\n'>(q, end_);
    if (q == end_) return q;
    if (isLineEnd(*q)) {
      const Bytes continuation = continuationStart(p + 1, q);
      return continuation != nullptr ? continuation : q;
    }
    if (end_ - q < 2 || q[1] != u8'"') return q + 1;
  }
}

// The comment at `p` whose text begins at `text`.
LineTokenizer::Bytes LineTokenizer::comment(Bytes p, Bytes text) {
  noteBreak();
  emit(TokenKind::Comment, p);
  for (;;) {
    const Bytes q = findAnyOf<u8'\r', u8'\n'>(text, end_);
    if (q == end_ || continuationStart(text, q) == nullptr) return q;
    next_[-1].word = Word::Continued;
    text = skipLineEnd(q, end_);
  }
}

LineTokenizer::Bytes LineTokenizer::hash(Bytes p) {
  if (context_ == Context::LineStart) {
    const Bytes name = skipBlanks(p + 1, end_);
    switch (wordBehind(p + 1)) {
      case Word::End:
        if (wordBehind(skipWord(name, end_)) != Word::If) break;
        [[fallthrough]];
      case Word::If:
      case Word::ElseIf:
      case Word::Else:
      case Word::EndIf:
      case Word::Const:
        directive_ = true;
        return single(p, TokenKind::Directive);
      default:
        break;
    }
  }
  if (const Bytes date = dateEnd(p, end_)) {
    single(p, TokenKind::Date);
    return date;
  }
  return single(p, TokenKind::Punctuation);
}

LineTokenizer::Bytes LineTokenizer::ampersand(Bytes p) {
  const Bytes number = radixEnd(p, end_);
  if (number == nullptr) return single(p, TokenKind::Operator);
  single(p, TokenKind::Number);
  return number;
}

LineTokenizer::Bytes LineTokenizer::dot(Bytes p) {
  if (end_ - p > 1 && isDigit(p[1])) return number(p);
  const Context before = context_;
  Token* const type = before == Context::TypePath ? lastSignificant() : nullptr;
  if (type != nullptr && type->kind == TokenKind::TypeName) type->kind = TokenKind::Name;
  single(p, directive_ ? TokenKind::Directive : TokenKind::Punctuation);
  context_ = before == Context::TypePath      ? Context::TypeMember
             : before == Context::DebugObject ? Context::DebugMember
                                              : Context::Member;
  return p + 1;
}

LineTokenizer::Bytes LineTokenizer::colon(Bytes p) {
  Token* const before = lastSignificant();
  if (end_ - p > 1 && p[1] == u8'=' && before != nullptr && before->kind >= TokenKind::Keyword &&
      before->kind <= TokenKind::Name) {
    before->kind = TokenKind::NamedArgument;
    before->word = Word::None;
    single(p, TokenKind::NamedArgument);
    return p + 2;
  }
  if (context_ == Context::LabelName && before != nullptr) {
    before->kind = TokenKind::Label;
    before->word = Word::None;
  }
  noteBreak();
  emit(TokenKind::Punctuation, p);
  statement_ = {};
  context_ = Context::Statement;
  return p + 1;
}

LineTokenizer::Bytes LineTokenizer::comparison(Bytes p) {
  const char8_t next = end_ - p > 1 ? p[1] : u8'\0';
  const bool two = *p != next && classOf(next) == ByteClass::Comparison;
  single(p, directive_ && *p == u8'=' && !two ? TokenKind::Directive : TokenKind::Operator);
  return p + (two ? 2 : 1);
}

LineTokenizer::Bytes LineTokenizer::bracket(Bytes p) {
  if (p >= noBracketBefore_) {
    const Bytes q = findAnyOf<u8']', u8'\r', u8'\n'>(p + 1, end_);
    if (q < end_ && *q == u8']' && q > p + 1) {
      plainName(p, q + 1);
      return q + 1;
    }
    if (q == end_ || *q != u8']') noBracketBefore_ = q;
  }
  return single(p, TokenKind::Error);
}

// The token in front, continuations left out; null when there is none.
Token* LineTokenizer::lastSignificant() {
  for (Token* token = next_; token != tokens_.data();)
    if ((--token)->kind != TokenKind::Continuation && token->kind != TokenKind::Blank) return token;
  return nullptr;
}

// The list grows in steps that stay in the cache while they are filled.
void LineTokenizer::makeRoom() {
  constexpr std::size_t kStep = 2048;
  const std::size_t used = count();
  tokens_.resize(used + kStep);
  next_ = tokens_.data() + used;
  room_ = next_ + kStep;
  const auto breaks = nextBreak_ - breaks_.data();
  breaks_.resize(static_cast<std::size_t>(breaks) + kStep);
  nextBreak_ = breaks_.data() + breaks;
}

}  // namespace tintline::vb
