// Turns one line of source into one line of HTML in which comments, reserved
// words, named-argument marks, quotes, parentheses and procedure heads are
// wrapped in spans.
//
// It works on blank-separated words and pieces of words, not on tokens, and
// takes several decisions by plain substring tests. Its output is a fixed
// format: the simplifications are meant.
//
// Tested by tests/unit/engine/engine_property_test.cpp and tests/golden.
#pragma once

#include <string_view>

#include "engine/keyword_table.h"
#include "engine/line_map.h"
#include "engine/text_buffer.h"

namespace tintline {

class Highlighter {
 public:
  // The table must live as long as the highlighter.
  explicit Highlighter(const KeywordTable& keywords) : keywords_(keywords) {}

  // The HTML of one source line, without line break; it lives until the next
  // call. Lines must be given in order: a comment that ends in "_" makes the next
  // line a comment. The bytes in front of `limit`, at or behind the end of the line, can be
  // read: where that are some more, it saves a copy.
  std::string_view fkt_ZeileKonvertieren(std::string_view line, const char* limit);
  std::string_view fkt_ZeileKonvertieren(std::string_view line) {
    return fkt_ZeileKonvertieren(line, line.data() + line.size());
  }

  // Whether the line converted last holds an apostrophe. Where it holds none, all
  // apostrophes of its HTML stand in the highlighter's own spans.
  bool lineHoldsApostrophe() const { return map_.holdsApostrophe(); }

 private:
  struct SplitLine {
    std::string_view code;
    std::string_view comment;  // from its apostrophe or " REM" on; empty without one
  };

  SplitLine splitTrailingComment(std::string_view line);
  void FortsetzungPruefen(std::string_view text);
  void writeCode(std::string_view code);
  bool writeWord(std::string_view word, unsigned classes);
  bool writePieces(std::string_view word, unsigned classes);
  void writePiece(std::string_view piece, unsigned classes);
  void writeKeyword(std::string_view word, WordClass wordClass);
  void writeMarked(std::string_view piece);
  void writeHead(std::string_view code, std::string_view keyword);
  void writeName(std::string_view code, std::string_view keyword);
  void writeComment(std::string_view comment);

  const KeywordTable& keywords_;
  LineMap map_;  // of the line that is converted
  TextBuffer html_;
  bool KommentarFortsetzung_ = false;  // the next line continues a comment
};

namespace modVBACode {

// True when the last apostrophe of the line starts a comment: an even number of
// double quotes stands in front of it.
bool fkt_KommentarZeichen(std::string_view line);

// True when some " REM" (in any case) stands outside string literals.
bool fkt_KommentarRem(std::string_view line);

// True when the trimmed line begins with "End Property", "End Sub" or "End Function".
bool fkt_ProzedurEnde(std::string_view line);

}  // namespace modVBACode

}  // namespace tintline
