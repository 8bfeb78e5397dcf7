// What Visual Basic source lines mean, for tests of code that moves words between lines: two
// sources with the same meaning have the same statements, word for word, and the same comments in
// front of, in or behind them. Slow, and deliberately shares nothing with the program.
// Tested by tests/unit/support/vb_meaning_test.cpp
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tintline::literal {

struct Meaning {
  // The tokens of each statement, one with a blank in front where one separates it; a line that
  // is no code (file header, Attribute, conditional compilation) as it stands.
  std::vector<std::vector<std::string>> statements;
  // The words of the comments, each with the number of statements that ended before.
  std::vector<std::pair<std::size_t, std::string>> comments;
  // The largest number of continuations in a statement.
  std::size_t continuations = 0;

  bool operator==(const Meaning& other) const {
    return statements == other.statements && comments == other.comments;
  }
};

Meaning meaningOf(const std::vector<std::string>& lines);

// Whether line `index`, longer than `width`, can be made shorter without changing the meaning:
// - by " _" at a blank in its code where the first part with " _" is not longer than the width,
//   when its statement has less than 24 continuations;
// - by the move of its comment in front of its statement, when code stands in front of it in the
//   line (more than the colon that a "Rem" needs), and neither of them ends in "_", with which it
//   would seem to go on in the next line;
// - by a further comment line for the rest of a comment line, unless its first part ended in "_",
//   its second begins with an apostrophe, or indentation and opener alone fill the width.
// Found by trying each of them. Not between a label and its statement, where nothing would change.
bool canBeBroken(const std::vector<std::string>& lines, std::size_t index, std::size_t width);

}  // namespace tintline::literal
