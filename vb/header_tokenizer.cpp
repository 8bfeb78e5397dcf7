// The file header: VERSION, the objects of a form with their properties. See line_tokenizer.h.
//
// Tested by tests/unit/any_text_property_test.cpp and the cases in tests/golden/language.
#include "vb/line_tokenizer.h"
#include "vb/literals.h"

namespace tintline::vb {

// Whether the text at `p` begins with a header.
bool LineTokenizer::atHeader(Bytes p) const {
  while (p < end_ && (classOf(*p) == ByteClass::Blank || isLineEnd(*p))) ++p;
  return wordBehind(p) == Word::Version;
}

// The header's lines end behind its outermost End, or in front of a line that is none of them.
LineTokenizer::Bytes LineTokenizer::header(Bytes p) {
  int depth = 0;
  for (bool begun = false, more = true; more && p < end_;) {
    const Bytes start = skipBlanks(p, end_);
    const Word first = wordBehind(start);
    if (start == end_) break;
    const bool blank = isLineEnd(*start);
    const bool known = first == Word::Version || first == Word::Object || first == Word::Begin;
    if (first == Word::Attribute || first == Word::Option || (depth == 0 && !known && !blank))
      break;
    p = headerLine(p, depth);
    begun = begun || depth > 0;
    more = !begun || depth > 0;
  }
  context_ = Context::LineStart;
  return p;
}

// The tokens of a line, its end included; without blanks at the text's end.
LineTokenizer::Bytes LineTokenizer::headerLine(Bytes p, int& depth) {
  bool first = true;
  while (skipBlanks(p, end_) < end_) {
    p = takeBlanks(p);
    if (isLineEnd(*p)) return lineEnd(p);
    const Bytes end = skipWord(p, end_);
    const Word word = first && end > p ? headerWord(p, end, depth) : Word::None;
    first = false;
    if (word == Word::None) {
      p = headerToken(p);
      continue;
    }
    emit(TokenKind::Keyword, p, word);
    depth += word == Word::Begin || word == Word::BeginProperty;
    depth -= word == Word::End || word == Word::EndProperty;
    p = end;
  }
  return p;
}

// Which word of a header begins a line, if any.
Word LineTokenizer::headerWord(Bytes p, Bytes end, int depth) const {
  const Word word = words_.find(NameKey({p, end}, end_)).word;
  const Bytes next = skipBlanks(end, end_);
  const bool property = next < end_ && (*next == u8'=' || *next == u8'.');
  switch (word) {
    case Word::Version:
    case Word::Object:
      return depth == 0 && (word == Word::Object || !property) ? word : Word::None;
    case Word::End:
    case Word::EndProperty:
      return property || depth == 0 ? Word::None : word;
    case Word::Begin:
    case Word::BeginProperty:
      return property ? Word::None : word;
    default:
      return Word::None;
  }
}

LineTokenizer::Bytes LineTokenizer::headerToken(Bytes p) {
  const Bytes begin = p;
  switch (classOf(*p)) {
    case ByteClass::Quote:
      return string(p);
    case ByteClass::Apostrophe:
      noteBreak();
      emit(TokenKind::Comment, p);
      return findAnyOf<u8'\r', u8'\n'>(p, end_);
    case ByteClass::Digit:
    case ByteClass::Ampersand:
      p = *p == u8'&' ? radixEnd(p, end_) : decimalEnd(p, end_);
      if (p == nullptr) return single(begin, TokenKind::Operator);
      // Behind a file's name stands a hexadecimal place in it, which may begin with digits.
      p = skipWord(p, end_);
      emit(TokenKind::Number, begin);
      return p;
    case ByteClass::Comparison:
    case ByteClass::Operator:
      return single(p, TokenKind::Operator);
    case ByteClass::Letter:
    case ByteClass::Underscore:
      emit(TokenKind::HeaderWord, p);
      return skipWord(p, end_);
    case ByteClass::Error:
      if (*p != u8'{') return single(p, TokenKind::Punctuation);
      emit(TokenKind::HeaderWord, p);
      p = findAnyOf<u8'}', u8'\r', u8'\n'>(p, end_);
      return p < end_ && *p == u8'}' ? p + 1 : p;
    case ByteClass::Wide:
      emit(TokenKind::HeaderWord, p);
      return wideLetter(p, end_) != 0 ? skipWord(p, end_) : p + characterLength(p, end_);
    case ByteClass::Colon:
      noteBreak();
      [[fallthrough]];
    default:
      return single(p, TokenKind::Punctuation);
  }
}

}  // namespace tintline::vb
