// Steps through the tokens of a module, over blanks and continuations, and counts the lines.
//
// Tested by the cases in tests/golden/language/declarations
// and tests/unit/any_text_property_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "vb/token.h"

namespace tintline::vb {

// A kind that names can have: whoever reads them says where they are names.
constexpr bool isNameKind(TokenKind kind) {
  switch (kind) {
    case TokenKind::Name:
    case TokenKind::Builtin:
    case TokenKind::ListedWord:
    case TokenKind::ProcedureName:
    case TokenKind::TypeName:
      return true;
    default:
      return false;
  }
}

constexpr bool isGap(TokenKind kind) {
  return kind == TokenKind::Blank || kind == TokenKind::Continuation;
}

// How often a token's text, or any other, ends a line.
inline std::uint32_t lineEndsIn(std::u8string_view text) {
  const auto holds = [text](char c) { return std::memchr(text.data(), c, text.size()) != nullptr; };
  if (text.empty() || !(holds('\n') || holds('\r'))) return 0;  // as nearly always
  std::uint32_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] == u8'\n' || (text[i] == u8'\r' && !text.substr(i + 1).starts_with(u8'\n')))
      ++count;
  return count;
}

class TokenCursor {
 public:
  // `breaks` are those of the tokens.
  TokenCursor(const std::u8string& text, const Tokens& tokens, const Breaks& breaks)
      : text_(text), tokens_(tokens), breaks_(breaks) {
    skipGaps();
  }

  std::uint32_t at() const { return at_; }
  std::uint32_t line() const { return line_; }          // from 1
  std::uint32_t lastLine() const { return lastLine_; }  // of the token in front
  std::uint32_t behindLast() const { return behindLast_; }
  TokenKind kind() const { return tokens_[at_].kind; }
  Word word() const { return tokens_[at_].word; }
  std::u8string_view textHere() const {  // nothing at the end
    return atEnd() ? std::u8string_view() : textOf(text_, tokens_, at_);
  }

  // Whether an operator or punctuation begins with that character.
  bool is(char8_t character) const {
    return (kind() == TokenKind::Punctuation || kind() == TokenKind::Operator ||
            kind() == TokenKind::Directive) &&
           text_[tokens_[at_].begin] == character;
  }
  bool isName() const { return isNameKind(kind()); }
  bool atEnd() const { return kind() == TokenKind::End; }
  bool atLineEnd() const { return kind() == TokenKind::LineEnd || atEnd(); }

  // At a line's end, a comment, a ":" between statements, or Then or Else, which a statement may
  // follow as well.
  bool atStatementEnd() const {
    switch (kind()) {
      case TokenKind::LineEnd:
      case TokenKind::Comment:
      case TokenKind::End:
        return true;
      case TokenKind::Punctuation:
        return is(u8':');
      default:
        return word() == Word::Then || word() == Word::Else;
    }
  }

  void advance() {
    if (atEnd()) return;
    lastLine_ = line_;
    behindLast_ = at_ + 1;
    countLine();
    ++at_;
    skipGaps();
  }

  // To the end of the statement: most tokens of a module are passed here.
  void skipStatement() {
    if (atBreak()) return;
    while (tokens_[at_ = breaks_[break_]].kind == TokenKind::Continuation) {
      ++line_;
      ++break_;
    }
    behindLast_ = at_;
    lastLine_ = line_;
    for (; isGap(tokens_[behindLast_ - 1].kind); --behindLast_)
      if (tokens_[behindLast_ - 1].kind == TokenKind::Continuation) --lastLine_;
  }

  // From the end of a statement to the next one. Returns whether that stands behind Then or Else.
  bool toNextStatement() {
    bool inBranch = false;
    while (!atEnd() && atBreak()) {
      inBranch = kind() == TokenKind::Keyword;
      advance();
    }
    return inBranch;
  }

  void advanceInLine() {
    if (!atLineEnd()) advance();
  }

  // From "(" to behind its ")".
  void skipParentheses() {
    std::uint32_t depth = 0;
    do {
      if (is(u8'(')) ++depth;
      if (is(u8')')) --depth;
      advance();
    } while (depth != 0 && !atStatementEnd());
  }

  // To the "," or ")" behind an item of a list.
  void skipItem() {
    for (std::uint32_t depth = 0; !atStatementEnd(); advance()) {
      if (is(u8'(')) ++depth;
      if (depth == 0 && (is(u8',') || is(u8')'))) return;
      if (is(u8')')) --depth;
    }
  }

  // To the end of the line.
  void skipLine() {
    while (!atLineEnd()) advance();
  }

 private:
  // As all gaps are passed, what a statement or line ends with.
  bool atBreak() {
    while (breaks_[break_] < at_) ++break_;
    return breaks_[break_] == at_;
  }

  void skipGaps() {
    for (; isGap(kind()); ++at_) countLine();
  }

  void countLine() {
    if (kind() == TokenKind::LineEnd || kind() == TokenKind::Continuation)
      ++line_;
    else if (word() == Word::Continued)
      countLinesOfComment();
  }
  [[gnu::noinline]] void countLinesOfComment() { line_ += lineEndsIn(textHere()); }

  const std::u8string& text_;  // with a NUL, where the token End stands
  const Tokens& tokens_;
  const Breaks& breaks_;
  std::size_t break_ = 0;  // all in front of it are passed
  std::uint32_t at_ = 0;
  std::uint32_t line_ = 1;
  std::uint32_t lastLine_ = 1;
  std::uint32_t behindLast_ = 0;
};

}  // namespace tintline::vb
