// See code_line.h.
// Tested by tests/unit/reformat/wrapping_test.cpp and wrapping_property_test.cpp.
#include "reformat/code_line.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace tintline {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// What can stand directly behind a name or a number and belongs to it.
constexpr std::string_view kTypeSuffixes = "%&!#@$^";

bool isNameCharacter(char c) {
  return isLetter(c) || isDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

std::size_t skipName(std::string_view text, std::size_t from) {
  while (from < text.size() && isNameCharacter(text[from])) ++from;
  return from;
}

// Whether the word can stand in a date: a month, or one half of the day.
bool isDateWord(std::string_view word) {
  constexpr std::array<std::string_view, 12> kMonths = {
      "January", "February", "March",     "April",   "May",      "June",
      "July",    "August",   "September", "October", "November", "December"};
  for (const std::string_view half : {"AM", "PM", "A", "P"})
    if (equalsIgnoreCase(word, half)) return true;
  return std::any_of(kMonths.begin(), kMonths.end(), [word](std::string_view month) {
    return equalsIgnoreCase(word, month) || equalsIgnoreCase(word, month.substr(0, 3));
  });
}

// Whether what stands between two "#" can be a date. Generous: what is taken for a
// date is only not broken, while "#1, #" of two file numbers must be none.
bool isDate(std::string_view text) {
  const std::size_t begin = skipSeparators(text, 0);
  text = text.substr(begin, lengthWithoutSeparators(text) - begin);
  const auto isPart = [](char c) { return isDigit(c) || isLetter(c); };
  if (text.empty() || !isPart(text.front()) || !isPart(text.back())) return false;
  for (std::size_t at = 0; at < text.size();) {
    std::size_t wordEnd = at;
    while (wordEnd < text.size() && isLetter(text[wordEnd])) ++wordEnd;
    if (wordEnd > at && !isDateWord(text.substr(at, wordEnd - at))) return false;
    if (wordEnd == at && !isDigit(text[at]) && !separates(text[at]) &&
        std::string_view("/-,:").find(text[at]) == kNone)
      return false;
    at = std::max(wordEnd, at + 1);
  }
  return true;
}

// Behind the label that the line begins with, and the separators behind that; 0 when
// it begins with none. A number needs no colon; a name may follow it.
std::size_t labelEnd(std::string_view line) {
  const auto behindColon = [line](std::size_t at) {
    const std::size_t colon = skipSeparators(line, at);
    const bool found = colon < line.size() && line[colon] == ':' && line.substr(colon, 2) != ":=";
    return found ? skipSeparators(line, colon + 1) : kNone;
  };
  std::size_t end = 0, at = skipSeparators(line, 0);
  const std::size_t number = at;
  while (at < line.size() && isDigit(line[at])) ++at;
  if (at > number && (at == line.size() || separates(line[at]) || line[at] == ':')) {
    end = skipSeparators(line, at);
    if (behindColon(at) != kNone) end = behindColon(at);
    at = end;
  }
  const std::size_t name = skipName(line, at);
  return name > at && behindColon(name) != kNone ? behindColon(name) : end;
}

// One walk over the code of a line.
class Reader {
 public:
  Reader(std::string_view line, bool first, CodeLine& code)
      : line_(line.substr(0, continuationMark(line))),
        continued_(line_.size() < line.size()),
        labelEnd_(first ? labelEnd(line_) : 0),
        lastBracket_(line_.rfind(']')),
        code_(code) {}

  void read() {
    for (std::size_t at = skipSeparators(line_, 0); at < line_.size();) {
      if (line_[at] == '\'' || beginsRem(at)) return takeComment(at);
      addGap(at);
      code_.end = takeToken(at);
      at = skipSeparators(line_, code_.end);
    }
  }

 private:
  bool beginsRem(std::size_t at) const {
    const bool isMember = at > 0 && (line_[at - 1] == '.' || line_[at - 1] == '!');
    return !isMember && equalsIgnoreCase(line_.substr(at, skipName(line_, at) - at), "Rem");
  }

  void takeComment(std::size_t at) {
    code_.comment = at;
    // What ends in "_" would go on in the next line, or look as if it did.
    const std::string_view whole = line_.substr(0, lengthWithoutSeparators(line_));
    code_.moves = code_.end > 0 && (line_[at] == '\'' || remMoves_) && !continued_ &&
                  !whole.ends_with('_') && line_[code_.end - 1] != '_';
  }

  // What is in front of `at` and the token there can stand on two lines.
  void addGap(std::size_t at) {
    const std::string_view between = line_.substr(code_.end, at - code_.end);
    if (code_.end == 0 || at <= labelEnd_ || between.find(' ') == kNone) return;
    // On the next line ".Name" would belong to the operand that ends this one.
    if (operand_ && (line_[at] == '.' || line_[at] == '!')) return;
    code_.gaps.push_back({code_.end, at});
  }

  // Takes the token that begins at `at`; returns where it ends.
  std::size_t takeToken(std::size_t at) {
    const std::string_view before = token_;
    token_ = line_.substr(at, tokenEnd(at) - at);
    operand_ = token_ == ")" || (token_.front() != '"' && token_.size() > 1) ||
               isNameCharacter(token_.front());
    // Behind Then and Else "Rem" is the one statement there is: it has to stay.
    remMoves_ = token_ == ":" ? !before.empty() && !equalsIgnoreCase(before, "Then") &&
                                    !equalsIgnoreCase(before, "Else")
                              : at < labelEnd_ && isDigit(token_.front());
    return at + token_.size();
  }

  std::size_t tokenEnd(std::size_t at) const {
    if (line_[at] == '"') return std::min(line_.find('"', at + 1), line_.size() - 1) + 1;
    if (line_[at] == '[' && lastBracket_ != kNone && at < lastBracket_)
      return line_.find(']', at) + 1;
    if (line_[at] == '#') {
      const std::size_t close = line_.find('#', at + 1);
      const bool date = close != kNone && isDate(line_.substr(at + 1, close - at - 1));
      return date ? close + 1 : at + 1;
    }
    if (!isNameCharacter(line_[at])) return at + 1;
    const std::size_t end = skipName(line_, at);
    const bool typed = end < line_.size() && kTypeSuffixes.find(line_[end]) != kNone;
    return typed ? end + 1 : end;
  }

  std::string_view line_;
  bool continued_;
  std::size_t labelEnd_;
  std::size_t lastBracket_;
  CodeLine& code_;
  std::string_view token_;  // the last one
  bool operand_ = false;    // it ends something that a member can be taken of
  bool remMoves_ = false;   // a "Rem" behind it is a statement of its own
};

}  // namespace

std::size_t skipSeparators(std::string_view text, std::size_t from) {
  while (from < text.size() && separates(text[from])) ++from;
  return from;
}

std::size_t lengthWithoutSeparators(std::string_view text) {
  std::size_t length = text.size();
  while (length > 0 && separates(text[length - 1])) --length;
  return length;
}

std::size_t continuationMark(std::string_view line) {
  const std::size_t length = lengthWithoutSeparators(line);
  if (length == 0 || line[length - 1] != '_') return kNone;
  return length == 1 || separates(line[length - 2]) ? length - 1 : kNone;
}

std::string_view firstWord(std::string_view text) {
  const std::size_t begin = skipSeparators(text, 0);
  return text.substr(begin, skipName(text, begin) - begin);
}

void readCodeLine(std::string_view line, bool first, CodeLine& code) {
  code.gaps.clear();
  code.end = 0;
  code.comment = kNone;
  code.moves = false;
  Reader(line, first, code).read();
}

}  // namespace tintline
