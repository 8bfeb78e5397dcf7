// Plain transcription of the rules that turn a list of source lines into the HTML line list and the
// HTML body, of the selection run and of the two indentation passes. It is the measure for the fast
// driver: slow, by value, rule for rule, to be checked by reading.
// Tested by tests/unit/engine/engine_property_test.cpp
#pragma once

#include <string>
#include <vector>

#include "tests/support/literal_highlighter.h"

namespace tintline::literal {

// Five categories (procedures, reserved words, parameters, comments, strings) by six text fields:
// 1 text colour, 2 background colour, 5 transparency flag.
struct Colours {
  std::string fields[5][6];
};

// The numeric value of a transparency flag is 0: empty, no number, or a number equal to 0.
bool FlagIsZero(const std::string& flag);

// The line with every class attribute turned into a style attribute.
std::string fkt_ReplaceStyle(std::string line, const Colours& colours);

struct Options {
  bool lineNumbers = false;
  bool inlineStyle = false;
  bool blnPaste = false;
};

// What a run leaves behind.
struct Result {
  std::vector<std::string> List2;
  std::vector<bool> wrapped;  // for each item of List2: added through the list wrapper
  std::string html;           // empty after an abort
  bool aborted = false;
  bool bSubUmbruch = false;
  bool bREM = false;
  // What can be observed, in order: "lese i n", "yield", "abort?", "add direct", "add wrapper",
  // "bearbeite i n", with the numbers that the captions carry.
  std::vector<std::string> events;
};

// Converts all lines. ProzNamen holds " name" entries, the first name first. The abort request is
// found set at the 0-based line abortAtLine; -1 for never.
Result Verarbeiten(const std::vector<std::string>& List1, const std::vector<std::string>& ProzNamen,
                   const Options& options, const Colours& colours, Highlighter& highlighter,
                   int abortAtLine = -1);

struct SelectionResult {
  std::vector<std::string> List2;
  std::vector<bool> wrapped;
  std::string html;
  std::string table;
  std::vector<std::string> events;  // "add direct", "add wrapper", "bearbeite i n"
};

// Converts the lines whose flag in `selected` (same length as List1) is set.
SelectionResult AuswahlKonvertieren(const std::vector<std::string>& List1,
                                    const std::vector<bool>& selected, const Options& options,
                                    const Colours& colours, Highlighter& highlighter);

// Re-indent the lines in place with the unit made one blank wider or narrower (not below 0).
void Formatieren(std::vector<std::string>& List1, int& unit);
void Formatieren2(std::vector<std::string>& List1, int& unit);

}  // namespace tintline::literal
