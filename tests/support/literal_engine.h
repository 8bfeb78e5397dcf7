// Plain transcription of the rules that turn source lines into HTML: the highlighter, the run over
// all lines and the selection run. It is the measure for the fast
// engine: slow, by value, rule for rule, to be checked by reading.
// Tested by tests/unit/engine/engine_property_test.cpp
#pragma once

#include <string>
#include <vector>

namespace tintline::literal {

// Two word lists, each as one text: NUL entry NUL ... entry NUL, or empty.
struct KeywordLists {
  std::string Keywords1, Keywords2;
};
std::string KeywordText(const std::vector<std::string>& entries);

class Highlighter {
 public:
  explicit Highlighter(KeywordLists lists) : lists_(std::move(lists)) {}

  // The HTML of one source line, without a line end.
  std::string fkt_ZeileKonvertieren(const std::string& line);

 private:
  // A word on its way through the piece loop.
  struct Word {
    std::string piece, rest;
    bool isKeyword1, isKeyword2, namedArgument, trim;
  };

  std::string highlightCode(const std::string& code);
  std::string highlightWord(const std::string& text);
  void splitAtComma(Word& word);
  void splitAtParenthesis(Word& word, char parenthesis);
  void splitAtNamedArgument(Word& word);
  void lookUp(Word& word) const;
  std::string output(const Word& word) const;

  KeywordLists lists_;
  bool KommentarFortsetzung = false;  // the next line continues a comment
  bool WortEnde = false;
};

// Five categories (procedures, reserved words, parameters, comments, strings) by six text fields:
// 1 text colour, 2 background colour, 5 transparency flag.
struct Colours {
  std::string fields[5][6];
};

struct Options {
  bool lineNumbers = false, inlineStyle = false, blnPaste = false;
};

// What a run leaves behind.
struct Result {
  std::vector<std::string> List2;
  std::vector<bool> wrapped;  // for each item of List2: added through the list wrapper
  std::string html;           // empty after an abort
  std::string table;          // of a selection
  bool aborted = false;
};

// Converts all lines. ProzNamen holds " name" entries, the first name first. The abort request is
// found set at the 0-based line abortAtLine; -1 for never.
Result Verarbeiten(const std::vector<std::string>& List1, const std::vector<std::string>& ProzNamen,
                   const Options& options, const Colours& colours, Highlighter& highlighter,
                   int abortAtLine = -1);

// Converts the lines whose flag in `selected` (same length as List1) is set.
Result AuswahlKonvertieren(const std::vector<std::string>& List1, const std::vector<bool>& selected,
                           const Options& options, const Colours& colours,
                           Highlighter& highlighter);

}  // namespace tintline::literal
