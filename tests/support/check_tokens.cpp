#include "tests/support/check_tokens.h"

#include <algorithm>

#include "vb/module.h"
#include "vb/token_cursor.h"
#include "vb/tokenizer.h"

namespace tintline::vb {
namespace {

bool isBlank(std::u8string_view text) {
  for (std::size_t at; !text.empty(); text.remove_prefix(at == 0 ? 1 : 3)) {
    at = text.starts_with(u8"\u3000") ? 1 : 0;
    if (at == 0 && text[0] != u8' ' && text[0] != u8'\t' && text[0] != 0x19) return false;
  }
  return true;
}

bool mayHaveWord(TokenKind kind) {
  return (kind >= TokenKind::Keyword && kind <= TokenKind::ListedWord) ||
         kind == TokenKind::Directive || kind == TokenKind::Comment;
}

const char* faultOfToken(std::u8string_view text, const Token& token) {
  const bool lines = text.find_first_of(u8"\r\n") != std::u8string_view::npos;
  const bool canBeName = isNameKind(token.kind) || token.kind == TokenKind::Label;
  if (isNumbered(token.word) ? !canBeName : token.word != Word::None && !mayHaveWord(token.kind))
    return "a word that means nothing";
  switch (token.kind) {
    case TokenKind::LineEnd:
      return text == u8"\r\n" || text == u8"\r" || text == u8"\n" ? nullptr : "no line end";
    case TokenKind::Blank:
      return isBlank(text) && text.size() > 255 ? nullptr : "no blanks, or few";
    case TokenKind::Continuation:
      return text[0] == u8'_' && lines ? nullptr : "no continuation";
    case TokenKind::Comment:
      return (token.word == Word::Continued) == lines ? nullptr : "lines of a comment";
    default:
      return lines ? "a line end inside a token" : isBlank(text.substr(0, 1)) ? "a blank" : nullptr;
  }
}

bool isBreak(std::u8string_view text, const Token& token) {
  switch (token.kind) {
    case TokenKind::LineEnd:
    case TokenKind::Continuation:
    case TokenKind::Comment:
    case TokenKind::End:
      return true;
    case TokenKind::Punctuation:
      return text[token.begin] == u8':';
    default:
      return token.kind == TokenKind::Keyword &&
             (token.word == Word::Then || token.word == Word::Else);
  }
}

}  // namespace

const char* faultOf(std::u8string_view text, const WordLists& words) {
  NameTable names;
  Breaks breaks;
  const Tokens tokens = tokenize(text, words, names, breaks);
  for (std::uint32_t i = 0; i < tokens.size(); ++i) {
    if (isBreak(text, tokens[i]) && !std::ranges::binary_search(breaks, i)) return "a lost break";
    if (isNumbered(tokens[i].word) && !equalFolded(plainName(textOf(text, tokens, i)),
                                                   names.nameOf(text, numberOf(tokens[i].word))))
      return "the number of another name";
  }
  if (tokens.back().kind != TokenKind::End || tokens.back().begin != text.size()) return "no end";
  for (std::size_t i = 0, at = 0; i < tokens.size(); ++i) {
    const Token& token = tokens[i];
    if (token.begin - token.gap != at || !isBlank(text.substr(at, token.gap))) return "a hole";
    if (i + 1 == tokens.size()) break;
    at = endOf(tokens, i);
    if (at <= token.begin || token.kind == TokenKind::End) return "an empty token";
    if (const char* const fault = faultOfToken(text.substr(token.begin, at - token.begin), token))
      return fault;
  }
  // A line in the middle, as if the text ended there.
  std::size_t line = tokens.size() / 2;
  while (line > 0 && tokens[line].kind != TokenKind::LineEnd) --line;
  const std::size_t lineEnd = tokens[line].kind == TokenKind::LineEnd ? endOf(tokens, line) : 0;
  const Tokens front = tokenize(text.substr(0, lineEnd), words);
  const auto same = [](const Token& a, const Token& b) {
    return a.begin == b.begin && a.kind == b.kind && a.word == b.word && a.gap == b.gap;
  };
  const bool equal =
      lineEnd == 0 || (front.size() == line + 2 &&
                       std::equal(front.begin(), front.end() - 1, tokens.begin(), same));
  return equal ? nullptr : "another line changes a token";
}

}  // namespace tintline::vb
