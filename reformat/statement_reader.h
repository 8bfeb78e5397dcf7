// Reads the statements of a source, to see where their lines can be broken and where comments
// begin.
//
// Tested by tests/unit/reformat/wrapping_test.cpp and wrapping_property_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_list.h"
#include "reformat/line_text.h"
#include "vb/token.h"

namespace tintline {

inline constexpr std::size_t kNoPlace = std::string_view::npos;

// Blanks between two words of a line, where it can be broken.
struct Gap {
  std::size_t begin;  // position in the line
  std::size_t end;
};

struct CodeLine {
  std::vector<Gap> gaps;    // from left to right
  std::size_t end = 0;      // behind the last character of the code, 0 when there is none
  std::size_t comment = 0;  // where the comment begins; kNoPlace when there is none
  bool moves = false;       // the comment can stand in front of the statement instead
};

struct Statement {
  enum class Kind : std::uint8_t {
    Fixed,  // no code: file header, Attribute, conditional compilation, nothing
    Comment,
    Code
  };
  Kind kind;
  std::size_t begin;  // its first line
  std::size_t end;    // behind its last line
};

class StatementReader {
 public:
  // The lines must live as long as the reader.
  StatementReader(const LineList& lines, LineText kind);

  // Goes on to the next statement, the first one at first; false when there is none.
  bool next();

  const Statement& statement() const { return statement_; }

  // Reads line `index` of the statement, which is code, into `code`.
  void read(std::size_t index, CodeLine& code) const;

 private:
  Statement::Kind kind();
  bool isFixed();
  std::size_t firstBreak() const;
  bool isPlaceForBreak(std::size_t token) const;
  bool canMove(std::size_t comment, std::size_t line) const;
  std::size_t significantBefore(std::size_t token) const;
  std::u8string_view textOf(std::size_t token) const { return vb::textOf(text_, tokens_, token); }

  const LineList& lines_;
  std::u8string text_;               // as the tokenizer reads it; a character a byte of 8-bit text
  std::vector<std::size_t> begins_;  // where each line begins in it, and its end
  vb::Tokens tokens_;
  std::size_t first_ = 0, last_ = 0;  // tokens of the statement, and its line end
  std::size_t depth_ = 0;             // blocks of a file header that are open
  Statement statement_{Statement::Kind::Fixed, 0, 0};
};

}  // namespace tintline
