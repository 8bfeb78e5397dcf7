// Which lines of a module are shown, and in which lines its tokens stand.
//
// Tested by tests/golden/exact.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "listing/options.h"
#include "listing/source_lines.h"
#include "vb/module.h"
#include "vb/token_cursor.h"

namespace tintline::listing {

class LineChoice {
 public:
  LineChoice(const vb::Module& module, const Options& options);

  // The next line.
  bool shows(const SourceLines& lines) const { return shows(lines.line(), lines.token()); }
  // A line from 1, by its first token too.
  bool shows(std::uint32_t line, std::uint32_t token) const {
    return token >= headerEnd_ && (ranges_.empty() || isChosen(line));
  }

 private:
  bool isChosen(std::uint32_t line) const;

  std::vector<LineRange> ranges_;  // by first line
  std::uint32_t headerEnd_;        // token: lines in front of it are dropped
};

// Calls `write(lines)`, which visits the line, for each line that is shown.
template <class Write>
void forShownLines(const vb::Module& module, const Options& options, Write write) {
  const LineChoice choice(module, options);
  SourceLines lines(module);
  while (!lines.atEnd())
    if (choice.shows(lines))
      write(lines);
    else
      lines.skipLine();
}

// A line's number as text, as wide as the last one's, with two blanks behind it.
std::string lineNumber(const vb::Module& module, std::uint32_t line);

// How many lines end in a token: at most one, but for comments and continuations.
inline std::uint32_t lineEndsIn(const vb::Module& module, std::uint32_t token) {
  const vb::Token& at = module.tokens[token];
  if (at.kind == vb::TokenKind::LineEnd || at.kind == vb::TokenKind::Continuation) return 1;
  return at.word == vb::Word::Continued ? vb::lineEndsIn(module.textOf(token)) : 0;
}

// The line of each declaration's name, from 1.
std::vector<std::uint32_t> linesOfNames(const vb::Module& module);

}  // namespace tintline::listing
