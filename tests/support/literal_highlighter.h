// Plain transcription of the rules that turn one source line into one HTML line. It is the measure
// for the fast highlighter: slow, by value, rule for rule, to be checked by reading.
// Tested by tests/unit/engine/engine_property_test.cpp
#pragma once

#include <string>
#include <vector>

namespace tintline::literal {

// Two word lists, each as one text: NUL entry NUL ... entry NUL, or empty.
struct KeywordLists {
  std::string Keywords1;
  std::string Keywords2;
};

// The entries as the text of one list.
std::string KeywordText(const std::vector<std::string>& entries);

// True when the text holds nothing but letters A to Z, a to z and "$".
bool fkt_NurBuchstaben(const std::string& text);

// True when the last apostrophe of the line stands outside string literals.
bool fkt_KommentarZeichen(const std::string& line);

// True when any " REM", in whatever case, stands outside string literals.
bool fkt_KommentarRem(const std::string& line);

// True when the line begins with "End Property", "End Sub" or "End Function", blanks aside.
bool fkt_ProzedurEnde(const std::string& line);

class Highlighter {
 public:
  explicit Highlighter(KeywordLists lists);

  // The HTML of one source line, without a line end.
  std::string fkt_ZeileKonvertieren(const std::string& line);

  // The next line continues a comment.
  bool KommentarFortsetzung = false;
  // A trailing comment waits to be appended.
  bool KommentarOffen = false;

 private:
  // A word on its way through the piece loop.
  struct Word {
    std::string piece;
    std::string rest;
    bool isKeyword1 = false;
    bool isKeyword2 = false;
    bool namedArgument = false;
    bool trim = false;
  };

  void FortsetzungPruefen(const std::string& text);
  std::string highlightCode(const std::string& code);
  std::string highlightWord(const std::string& text);
  void splitAtComma(Word& word);
  void splitAtOpeningParenthesis(Word& word);
  void splitAtClosingParenthesis(Word& word);
  void splitAtNamedArgument(Word& word);
  void lookUp(Word& word) const;
  std::string output(const Word& word) const;

  KeywordLists lists_;
  bool WortEnde = false;
};

}  // namespace tintline::literal
