// A plain reader of Visual Basic lines: header, statements, tokens, comments.
// Tested by tests/unit/support/vb_meaning_test.cpp
#include "tests/support/vb_meaning.h"

#include <algorithm>
#include <set>

#include "tests/support/literal_text.h"

namespace tintline::literal {
namespace {

const std::string kSeparators = " \t";
const std::size_t kNowhere = std::string::npos;

std::string stripped(const std::string& text) {
  const std::size_t first = text.find_first_not_of(kSeparators);
  if (first == kNowhere) return "";
  return text.substr(first, text.find_last_not_of(kSeparators) - first + 1);
}

std::vector<std::string> wordsOf(const std::string& text) {
  std::vector<std::string> words;
  std::size_t from = 0;
  while ((from = text.find_first_not_of(kSeparators, from)) != kNowhere) {
    const std::size_t end = std::min(text.find_first_of(kSeparators, from), text.size());
    words.push_back(text.substr(from, end - from));
    from = end;
  }
  return words;
}

bool isContinued(const std::string& line) {
  const std::vector<std::string> words = wordsOf(line);
  return !words.empty() && words.back() == "_";
}

std::string withoutMark(const std::string& line) {
  return isContinued(line) ? line.substr(0, line.rfind('_')) : line;
}

bool isNameCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
         c < 0;
}

std::string leadingName(const std::string& text) {
  std::size_t end = 0;
  while (end < text.size() && isNameCharacter(text[end])) ++end;
  return text.substr(0, end);
}

bool isNumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == kNowhere;
}

// A date without its "#": numbers, months and AM or PM, with signs between but not around them.
bool isDate(const std::string& between) {
  static const std::set<std::string> known = {
      "A",        "P",       "AM",    "PM",       "JAN",    "JANUARY", "FEB",
      "FEBRUARY", "MAR",     "MARCH", "APR",      "APRIL",  "MAY",     "JUN",
      "JUNE",     "JUL",     "JULY",  "AUG",      "AUGUST", "SEP",     "SEPTEMBER",
      "OCT",      "OCTOBER", "NOV",   "NOVEMBER", "DEC",    "DECEMBER"};
  const std::string text = UCase(stripped(between));
  const std::string digits = "0123456789", letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const std::string signs = "/-,: \t";
  if (text.empty() || signs.find(text.front()) != kNowhere || signs.find(text.back()) != kNowhere)
    return false;
  if (text.find_first_not_of(digits + letters + signs) != kNowhere) return false;
  std::string words = text;
  for (char& c : words)
    if (letters.find(c) == kNowhere) c = ' ';
  const std::vector<std::string> found = wordsOf(words);
  return std::all_of(found.begin(), found.end(),
                     [](const std::string& word) { return known.count(word) > 0; });
}

enum class Kind { Code, Comment, Fixed };

struct Token {
  std::string text;
  enum { None, Blank, Continuation } gap = None;
  std::size_t line = 0;  // in the statement
  std::size_t begin = 0;
};

struct Statement {
  Kind kind = Kind::Fixed;
  std::vector<std::string> lines;
  std::vector<Token> tokens;
  std::size_t labelTokens = 0;  // so many of them are the label
  bool hasComment = false;
  std::size_t commentLine = 0, commentBegin = 0;
  std::vector<std::string> comment;  // words
};

// Whether "Rem" behind these tokens is a statement of its own; behind Then or Else it is not.
bool remIsFree(const Statement& statement) {
  const std::vector<Token>& tokens = statement.tokens;
  if (tokens.back().text != ":") return tokens.size() == 1 && statement.labelTokens == 1;
  if (tokens.size() < 2) return false;
  const Token& before = tokens[tokens.size() - 2];
  return UCase(before.text) != "THEN" && UCase(before.text) != "ELSE";
}

void readComment(Statement& statement, std::size_t line, std::size_t begin) {
  statement.hasComment = true;
  statement.commentLine = line;
  statement.commentBegin = begin;
  std::string text = withoutMark(statement.lines[line]).substr(begin);
  text = text[0] == '\'' ? text.substr(std::min(text.find_first_not_of('\''), text.size()))
                         : text.substr(3);
  statement.comment = wordsOf(text);
  for (std::size_t i = line + 1; i < statement.lines.size(); ++i)
    for (const std::string& word : wordsOf(withoutMark(statement.lines[i])))
      statement.comment.push_back(word);
}

std::string tokenAt(const std::string& text, std::size_t at) {
  const char c = text[at];
  const auto through = [&](char closing) {
    const std::size_t end = text.find(closing, at + 1);
    return end == kNowhere ? std::string() : text.substr(at, end - at + 1);
  };
  if (c == '"') return through('"').empty() ? text.substr(at) : through('"');
  if (c == '[' && !through(']').empty()) return through(']');
  if (c == '#') {
    const std::string date = through('#');
    if (!date.empty() && isDate(date.substr(1, date.size() - 2))) return date;
  }
  std::string name = leadingName(text.substr(at));
  if (name.empty()) return std::string(1, c);
  if (at + name.size() < text.size() &&
      std::string("%&!#@^$").find(text[at + name.size()]) != kNowhere)
    name += text[at + name.size()];
  return name;
}

// A line number, a name with a colon, or both, in the first line.
std::size_t labelTokens(const std::vector<Token>& tokens) {
  const auto is = [&](std::size_t i, const char* text) {
    return i < tokens.size() && tokens[i].line == 0 && tokens[i].text == text;
  };
  const auto isLabelColon = [&](std::size_t i) {
    return is(i, ":") && !(is(i + 1, "=") && tokens[i + 1].gap == Token::None);
  };
  std::size_t count = 0;
  if (!tokens.empty() && tokens[0].line == 0 && isNumber(tokens[0].text))
    count = isLabelColon(1) ? 2 : 1;
  const bool name = count < tokens.size() && tokens[count].line == 0 &&
                    leadingName(tokens[count].text) == tokens[count].text;
  return name && isLabelColon(count + 1) ? count + 2 : count;
}

void readCode(Statement& statement) {
  for (std::size_t line = 0; line < statement.lines.size(); ++line) {
    const std::string text = withoutMark(statement.lines[line]);
    auto gap = line > 0 ? Token::Continuation : Token::None;
    for (std::size_t at = 0; at < text.size();) {
      if (kSeparators.find(text[at]) != kNowhere) {
        if (gap == Token::None) gap = Token::Blank;
        ++at;
        continue;
      }
      const bool member = at > 0 && (text[at - 1] == '.' || text[at - 1] == '!');
      const bool rem = !member && UCase(leadingName(text.substr(at))) == "REM";
      if (rem && !remIsFree(statement)) statement.tokens.push_back({"Rem", gap, line, at});
      if (rem || text[at] == '\'') return readComment(statement, line, at);
      statement.tokens.push_back({tokenAt(text, at), gap, line, at});
      statement.labelTokens = labelTokens(statement.tokens);
      at += statement.tokens.back().text.size();
      gap = Token::None;
    }
  }
}

// Whether the token is a colon that would make a label of the tokens before, in their line.
bool isColonOfLabel(std::vector<Token> tokens, std::size_t index) {
  for (Token& token : tokens) token.line = 0;
  return index > 0 && tokens[index].text == ":" && labelTokens(tokens) == index + 1;
}

// The tokens as text; where a continuation stands decides what some of them mean.
std::vector<std::string> meant(const Statement& statement) {
  std::vector<std::string> result;
  for (std::size_t i = 0; i < statement.tokens.size(); ++i) {
    const Token& token = statement.tokens[i];
    std::string text = token.gap == Token::None || i == 0 ? token.text : " " + token.text;
    if (i > 0 && token.gap == Token::Continuation) {
      const std::string& before = statement.tokens[i - 1].text;
      const bool operand = isNameCharacter(before[0]) || before == ")" ||
                           (before.size() > 1 && (before[0] == '[' || before[0] == '#'));
      if (operand && (token.text == "." || token.text == "!")) text = token.text;
      if (i == statement.labelTokens || isColonOfLabel(statement.tokens, i)) text = "\n" + text;
    }
    result.push_back(text);
  }
  return result;
}

Kind kindOf(const std::string& line) {
  const std::vector<std::string> words = wordsOf(line);
  if (words.empty()) return Kind::Code;
  if (words[0][0] == '\'' || UCase(leadingName(words[0])) == "REM") return Kind::Comment;
  if (words[0][0] == '#' || (words[0] == "_" && words.size() == 1)) return Kind::Fixed;
  if (words.size() < 2 || UCase(words[0]) != "ATTRIBUTE") return Kind::Code;
  const std::string name = UCase(words[1]);
  const std::string owner = leadingName(name);
  const bool ofOwner = !owner.empty() && name.substr(owner.size(), 4) == ".VB_";
  return name.substr(0, 3) == "VB_" || ofOwner ? Kind::Fixed : Kind::Code;
}

// Which lines are the header of a form or class file.
std::vector<bool> headerLines(const std::vector<std::string>& lines) {
  std::vector<bool> header(lines.size(), false);
  const auto words = [&](std::size_t i) {
    std::vector<std::string> result = wordsOf(i < lines.size() ? lines[i] : "");
    for (std::string& word : result) word = UCase(word);
    result.resize(std::max<std::size_t>(result.size(), 2));
    return result;
  };
  const auto isVersion = [&](std::size_t i) {
    return words(i)[0] == "VERSION" && isNumber(words(i)[1].substr(0, 1));
  };
  const auto begins = [&](std::size_t i) {
    const std::string name = leadingName(words(i)[0]);
    return name == "BEGIN" || name == "BEGINPROPERTY";
  };
  const auto ends = [&](std::size_t i) {
    const std::string name = leadingName(words(i)[0]);
    return name == "END" || name == "ENDPROPERTY";
  };
  const auto isObject = [&](std::size_t i) {
    return words(i)[0] == "OBJECT" ? words(i)[1].substr(0, 1) == "="
                                   : words(i)[0].substr(0, 7) == "OBJECT=";
  };
  const auto isAttribute = [&](std::size_t i) {
    return words(i)[0] == "ATTRIBUTE" && kindOf(lines[i]) == Kind::Fixed;
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!isVersion(i)) {
      // A statement: the search goes on behind it.
      while (i < lines.size() && isContinued(lines[i])) ++i;
      continue;
    }
    header[i++] = true;
    while (i < lines.size() && (words(i)[0].empty() || isVersion(i) || isObject(i)))
      header[i++] = true;
    if (i < lines.size() && begins(i)) {
      std::size_t depth = 0;
      do {
        if (isAttribute(i)) break;
        if (begins(i)) ++depth;
        if (ends(i)) --depth;
        header[i++] = true;
      } while (depth > 0 && i < lines.size());
    }
    --i;
  }
  return header;
}

std::vector<Statement> statementsOf(const std::vector<std::string>& lines) {
  const std::vector<bool> header = headerLines(lines);
  std::vector<Statement> statements;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    Statement statement;
    statement.lines = {lines[i]};
    if (!header[i]) {
      statement.kind = kindOf(lines[i]);
      while (isContinued(lines[i]) && i + 1 < lines.size()) statement.lines.push_back(lines[++i]);
      if (statement.kind == Kind::Code) readCode(statement);
      if (statement.kind == Kind::Comment)
        readComment(statement, 0, lines[i + 1 - statement.lines.size()].find_first_not_of(" \t"));
    }
    statements.push_back(statement);
  }
  return statements;
}

std::size_t continuationsOf(const Statement& statement) {
  return static_cast<std::size_t>(
      std::count_if(statement.lines.begin(), statement.lines.end(), isContinued));
}

// The lines with one of them replaced by two.
std::vector<std::string> split(std::vector<std::string> lines, std::size_t index,
                               const std::string& first, const std::string& second) {
  lines[index] = second;
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(index), first);
  return lines;
}

bool codeCanBeBroken(const Statement& statement, std::size_t line, std::size_t width) {
  if (continuationsOf(statement) >= 24) return false;
  std::size_t first = kNowhere, last = 0;  // where the tokens of the line begin
  for (const Token& token : statement.tokens) {
    if (token.line != line) continue;
    if (statement.hasComment && line == statement.commentLine &&
        token.begin >= statement.commentBegin)
      break;  // "Rem"
    first = std::min(first, token.begin);
    last = token.begin;
  }
  const std::string& text = statement.lines[line];
  const Meaning meaning = meaningOf(statement.lines);
  for (std::size_t at = 0; at < last; ++at) {
    if (text[at] != ' ' || at < first) continue;
    const std::string left = text.substr(0, text.find_last_not_of(kSeparators, at) + 1) + " _";
    if (left.size() > width) return false;
    const std::vector<std::string> broken =
        split(statement.lines, line, left, "  " + text.substr(at + 1));
    if (meaningOf(broken) == meaning) return true;
  }
  return false;
}

bool commentCanMove(const Statement& statement, std::size_t line) {
  if (!statement.hasComment || statement.commentLine != line) return false;
  const auto inFront = std::count_if(statement.tokens.begin(), statement.tokens.end(),
                                     [line](const Token& token) { return token.line == line; });
  const bool rem = statement.lines[line][statement.commentBegin] != '\'';
  if (inFront < (rem && statement.tokens.back().text == ":" ? 2 : 1)) return false;
  const std::string code = stripped(statement.lines[line].substr(0, statement.commentBegin));
  if (Right(stripped(statement.lines[line]), 1) == "_" || Right(code, 1) == "_") return false;
  std::vector<std::string> moved = statement.lines;
  moved[line] = statement.lines[line].substr(0, statement.commentBegin);
  moved.insert(moved.begin(), statement.lines[line].substr(statement.commentBegin));
  return meaningOf(moved) == meaningOf(statement.lines);
}

bool commentCanBeBroken(const Statement& statement, std::size_t line, std::size_t width) {
  const std::string& head = statement.lines[0];
  const std::size_t begin = statement.commentBegin;
  const std::size_t openerEnd =
      head[begin] == '\'' ? std::min(head.find_first_not_of('\'', begin), head.size()) : begin + 3;
  if (openerEnd + 1 >= width) return false;
  const std::string text = withoutMark(statement.lines[line]);
  const std::size_t from = text.find_first_not_of(kSeparators, line == 0 ? openerEnd : 0);
  const std::size_t last = text.find_last_not_of(kSeparators);
  if (from == kNowhere) return false;
  const Meaning meaning = meaningOf(statement.lines);
  for (std::size_t at = from; at < last; ++at) {
    if (text[at] != ' ') continue;
    const std::string left = text.substr(0, text.find_last_not_of(kSeparators, at) + 1);
    if (left.back() == '_') continue;
    const std::string opener = head.substr(0, openerEnd) + (head[begin] == '\'' ? "" : " ");
    const std::string right = opener + stripped(statement.lines[line].substr(at + 1));
    if (meaningOf(split(statement.lines, line, left, right)) == meaning) return true;
  }
  return false;
}

}  // namespace

Meaning meaningOf(const std::vector<std::string>& lines) {
  Meaning meaning;
  for (const Statement& statement : statementsOf(lines)) {
    for (const std::string& word : statement.comment)
      meaning.comments.emplace_back(meaning.statements.size(), word);
    if (statement.kind == Kind::Code) meaning.statements.push_back(meant(statement));
    if (statement.kind == Kind::Fixed) meaning.statements.push_back(statement.lines);
    if (statement.kind == Kind::Code)
      meaning.continuations = std::max(meaning.continuations, continuationsOf(statement));
  }
  return meaning;
}

bool canBeBroken(const std::vector<std::string>& lines, std::size_t index, std::size_t width) {
  std::size_t line = index;  // in its statement
  for (const Statement& statement : statementsOf(lines)) {
    if (line >= statement.lines.size()) {
      line -= statement.lines.size();
      continue;
    }
    if (statement.kind == Kind::Fixed) return false;
    if (statement.kind == Kind::Comment) return commentCanBeBroken(statement, line, width);
    return codeCanBeBroken(statement, line, width) || commentCanMove(statement, line);
  }
  return false;
}

}  // namespace tintline::literal
