// Reads one source line as the language does, to see where its code can be broken
// and where its comment begins. Blank and tab separate words; strings, dates between
// two "#" and names in brackets are one piece each and never reach over a line's end.
//
// Tested by tests/unit/reformat/wrapping_test.cpp and wrapping_property_test.cpp.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tintline {

// Blanks and tabs between two words, among them at least one blank: where a line can
// be broken. Positions in the line.
struct Gap {
  std::size_t begin;
  std::size_t end;
};

// Whether the character is a blank or a tab.
constexpr bool separates(char c) { return c == ' ' || c == '\t'; }

// Position of the first character at or behind `from` that does not separate words;
// the length of the text when there is none.
std::size_t skipSeparators(std::string_view text, std::size_t from);

// The length of the text without the separators at its end.
std::size_t lengthWithoutSeparators(std::string_view text);

// Position of the "_" that continues the line on the next one; npos when it is not
// continued.
std::size_t continuationMark(std::string_view line);

// The first word behind the separators that the text begins with: letters, digits and
// "_"; empty when something else stands there.
std::string_view firstWord(std::string_view text);

struct CodeLine {
  std::vector<Gap> gaps;    // where the code can be broken, from left to right
  std::size_t end = 0;      // behind the last character of the code
  std::size_t comment = 0;  // where the comment begins; npos when there is none
  bool moves = false;       // the comment can stand in front of the statement instead
};

// Reads a line of code into `code`. `first` says that it is the first line of its
// statement, where a label can stand.
void readCodeLine(std::string_view line, bool first, CodeLine& code);

}  // namespace tintline
