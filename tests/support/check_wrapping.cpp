// Wraps a source and judges the result by its tokens.
#include "tests/support/check_wrapping.h"

#include <algorithm>

#include "base/text.h"
#include "reformat/wrapping.h"
#include "tests/support/convert.h"
#include "vb/tokenizer.h"

namespace tintline::test {
namespace {

using Lines = std::vector<std::string>;
using vb::TokenKind;

// The code of each statement, and the words of the comments, each with the number of statements
// that ended before. A token has a blank in front where one separates it; between an operand and a
// member a line end is none.
struct Meaning {
  Lines statements;
  std::vector<std::pair<std::size_t, std::string>> comments;
  std::size_t continuations = 0;  // the largest number in a statement

  bool operator==(const Meaning& other) const {
    return statements == other.statements && comments == other.comments;
  }
};

std::u8string textOf(const Lines& lines) {
  std::u8string text;
  for (const std::string& line : lines) {
    for (const char c : line)
      text += c < 0 ? u8'q' : c == '\r' || c == '\n' ? u8'?' : static_cast<char8_t>(c);
    text += u8'\n';
  }
  return text;
}

void addComment(std::string text, Meaning& meaning) {
  text.erase(0, text[0] == '\'' ? std::min(text.find_first_not_of('\''), text.size()) : 3);
  text = Replace(Replace(text, " _\n", "\n"), "\t_\n", "\n");
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
  for (const std::string_view word : Split(text, ' '))
    if (!word.empty()) meaning.comments.emplace_back(meaning.statements.size(), word);
}

// Whether a member can be taken of what the text ends with, a token of that kind.
bool endsOperand(TokenKind kind, const std::string& text) {
  if (kind == TokenKind::Operator || kind == TokenKind::OperatorWord) return false;
  if (kind == TokenKind::Keyword && (text.ends_with("Then") || text.ends_with("Else")))
    return false;
  if (kind == TokenKind::Punctuation) return text.ends_with(')');
  const char last = text.empty() ? ' ' : text.back();
  return (last >= '0' && last <= '9') || toLower(last) != last || (last >= 'a' && last <= 'z') ||
         std::string_view("_)]%&!#@$").find(last) != std::string_view::npos;
}

Meaning meaningOf(const Lines& lines) {
  static const vb::WordLists words({}, {});
  const std::u8string source = textOf(lines);
  const vb::Tokens tokens = vb::tokenize(source, words);
  Meaning meaning;
  std::string statement;
  std::size_t continuations = 0;
  TokenKind last = TokenKind::End;
  bool separated = false, continued = false;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const TokenKind kind = tokens[i].kind;
    const std::u8string_view bytes = kind == TokenKind::End ? u8"" : vb::textOf(source, tokens, i);
    const std::string text(bytes.begin(), bytes.end());
    if (kind == TokenKind::Comment) {
      addComment(text, meaning);
    } else if (kind == TokenKind::LineEnd || kind == TokenKind::End) {
      if (!statement.empty()) meaning.statements.push_back(std::exchange(statement, {}));
      meaning.continuations = std::max(meaning.continuations, std::exchange(continuations, 0));
    } else if (kind != TokenKind::Blank && kind != TokenKind::Continuation) {
      separated = separated || tokens[i].gap > 0;
      const bool member = (text == "." || text == "!") && endsOperand(last, statement);
      if (!statement.empty())
        statement += member && continued ? '\n' : separated || continued ? ' ' : '\0';
      statement += std::to_string(static_cast<int>(last = kind)) + text;
    }
    continued = kind == TokenKind::Continuation;
    continuations += continued;
    separated = kind == TokenKind::Blank;
  }
  return meaning;
}

std::string fault(const Lines& lines, const Lines& wrapped) {
  const Meaning before = meaningOf(lines), after = meaningOf(wrapped);
  for (std::size_t i = 0; i < std::max(before.statements.size(), after.statements.size()); ++i) {
    const auto at = [i](const Meaning& meaning) {
      return i < meaning.statements.size() ? meaning.statements[i] : "none";
    };
    if (at(before) != at(after)) return "'" + at(before) + "' became '" + at(after) + "'";
  }
  if (before.comments != after.comments) return "other comments";
  if (after.continuations > std::max<std::size_t>(before.continuations, kMaxContinuations))
    return "too many continuations";
  const auto endsInBlank = [](const std::string& line) { return line.ends_with(' '); };
  if (std::all_of(lines.begin(), lines.end(), endsInBlank) &&
      !std::all_of(wrapped.begin(), wrapped.end(), endsInBlank))
    return "a line lost its blank";
  return "";
}

}  // namespace

std::string wrappingFault(const Lines& lines, int width, int unit) {
  const Lines wrapped = strings(*wrapLines(lineList(lines), width, unit));
  std::string found = fault(lines, wrapped);
  if (found.empty() && strings(*wrapLines(lineList(wrapped), width, unit)) != wrapped)
    found = "wrapping again changes something";
  if (found.empty()) return "";
  found += " at width " + std::to_string(width) + ", unit " + std::to_string(unit);
  for (const std::string& line : lines) found += "\n|" + line + "|";
  found += "\nbecame";
  for (const std::string& line : wrapped) found += "\n|" + line + "|";
  return found;
}

}  // namespace tintline::test
