// See statement_reader.h.
// Tested by tests/unit/reformat/wrapping_test.cpp and wrapping_property_test.cpp.
#include "reformat/statement_reader.h"

#include <algorithm>

#include "vb/tokenizer.h"

namespace tintline {
namespace {

using vb::TokenKind;
using vb::Word;

// A byte of 8-bit text as the tokenizer shall see it: all beyond ASCII are letters, and the line
// ends that a line holds are signs.
char8_t asciiOf(char c) {
  if (static_cast<unsigned char>(c) >= 0x80) return u8'q';
  return c == '\r' || c == '\n' || c == '\x19' ? u8'?' : static_cast<char8_t>(c);
}

const vb::WordLists& words() {
  static const vb::WordLists list({}, {});  // a user's words are names like any
  return list;
}

// Whether a token can end what a member is taken of.
bool endsOperand(const vb::Token& token, std::u8string_view text) {
  switch (token.kind) {
    case TokenKind::Punctuation:
      return text == u8")";
    case TokenKind::Keyword:
      return token.word != Word::Then && token.word != Word::Else;
    case TokenKind::NamedArgument:
      return text != u8":=";
    case TokenKind::String:
    case TokenKind::Operator:
    case TokenKind::OperatorWord:
    case TokenKind::Continuation:
      return false;
    default:
      return true;
  }
}

}  // namespace

StatementReader::StatementReader(const LineList& lines, LineText kind) : lines_(lines) {
  begins_.reserve(lines.size() + 1);
  text_.reserve(lines.bytes() + lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    begins_.push_back(text_.size());
    const std::string_view line = lines[i];
    if (kind == LineText::Ansi) {
      std::transform(line.begin(), line.end(), std::back_inserter(text_), asciiOf);
      text_.push_back(u8'\n');
    } else {
      text_.append(reinterpret_cast<const char8_t*>(line.data()), line.size());
    }
  }
  begins_.push_back(text_.size());
  tokens_ = vb::tokenize(text_, words());
}

bool StatementReader::next() {
  statement_.begin = statement_.end;
  if (statement_.begin == lines_.size()) return false;
  if (statement_.begin > 0) first_ = last_ + 1;
  last_ = first_;
  while (tokens_[last_].kind != TokenKind::LineEnd && tokens_[last_].kind != TokenKind::End)
    ++last_;
  do ++statement_.end;
  while (statement_.end < lines_.size() && begins_[statement_.end] <= tokens_[last_].begin);
  statement_.kind = kind();
  return true;
}

Statement::Kind StatementReader::kind() {
  std::size_t token = first_;
  while (token < last_ && tokens_[token].kind == TokenKind::Blank) ++token;
  first_ = token;
  if (isFixed()) return Statement::Kind::Fixed;
  return tokens_[first_].kind == TokenKind::Comment ? Statement::Kind::Comment
                                                    : Statement::Kind::Code;
}

bool StatementReader::isFixed() {
  if (first_ == last_) return true;
  const vb::Token& token = tokens_[first_];
  if (token.kind == TokenKind::Directive) {
    depth_ = 0;  // a header ends in front of Attribute, whatever is missing of it
    return true;
  }
  if (token.kind == TokenKind::HeaderWord || token.kind == TokenKind::Continuation) return true;
  switch (token.word) {
    case Word::Begin:
    case Word::BeginProperty:
      ++depth_;
      return true;
    case Word::Version:
    case Word::Object:
      return true;
    case Word::End:
    case Word::EndProperty:
      return depth_ > 0 && depth_-- > 0;
    default:
      return depth_ > 0;
  }
}

void StatementReader::read(std::size_t index, CodeLine& code) const {
  code.gaps.clear();
  code.end = 0;
  code.comment = kNoPlace;
  code.moves = false;
  const std::size_t begin = begins_[index], end = begins_[index + 1];
  const auto from = std::lower_bound(
      tokens_.begin() + static_cast<std::ptrdiff_t>(first_),
      tokens_.begin() + static_cast<std::ptrdiff_t>(last_), begin,
      [](const vb::Token& token, std::size_t position) { return token.begin < position; });
  const std::size_t firstBreakable = firstBreak();
  for (auto i = static_cast<std::size_t>(from - tokens_.begin());
       i < last_ && tokens_[i].begin < end; ++i) {
    const vb::Token& token = tokens_[i];
    if (token.kind == TokenKind::Blank || token.kind == TokenKind::Continuation) continue;
    const std::size_t at = token.begin - begin;
    if (token.kind == TokenKind::Comment) {
      code.comment = at;
      code.moves = code.end > 0 && canMove(i, index);
      return;
    }
    if (code.end > 0 && code.end < at && i >= firstBreakable && isPlaceForBreak(i))
      code.gaps.push_back({code.end, at});
    code.end = vb::endOf(tokens_, i) - begin;
  }
}

// The first token in front of which a line can be broken: not that behind a label, which is a
// number, a name with its colon, or both.
std::size_t StatementReader::firstBreak() const {
  std::size_t token = first_;
  while (token < last_ &&
         (tokens_[token].kind == TokenKind::Label || (token > first_ && textOf(token) == u8":")))
    ++token;
  return token == first_ ? first_ : token + 1;
}

// On a further line ".Name" would belong to the operand that ends the one in front.
bool StatementReader::isPlaceForBreak(std::size_t token) const {
  const std::u8string_view text = textOf(token);
  if (text != u8"." && text != u8"!") return true;
  const std::size_t before = significantBefore(token);
  return before == kNoPlace || !endsOperand(tokens_[before], textOf(before));
}

// Whether the comment can stand in front of its statement. What ends in "_" would go on in the
// next line, or look as if it did; and a "Rem" that is the one statement behind Then or Else has
// to stay.
bool StatementReader::canMove(std::size_t comment, std::size_t line) const {
  const std::size_t before = significantBefore(comment);
  if (line + 1 != statement_.end || before == kNoPlace) return false;
  const std::u8string_view text = textOf(comment);
  const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size());
  if (contentOf(bytes, LineText::Utf8).ends_with('_') || textOf(before).ends_with(u8'_'))
    return false;
  if (text_[tokens_[comment].begin] == u8'\'') return true;
  if (textOf(before) != u8":") return tokens_[before].kind == TokenKind::Label;
  const std::size_t last = significantBefore(before);
  return last != kNoPlace && tokens_[last].word != Word::Then && tokens_[last].word != Word::Else;
}

// The token of the statement in front of this one that is no blank.
std::size_t StatementReader::significantBefore(std::size_t token) const {
  while (token-- > first_)
    if (tokens_[token].kind != TokenKind::Blank) return token;
  return kNoPlace;
}

}  // namespace tintline
