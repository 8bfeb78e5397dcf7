// Conversion driver, selection run and indentation passes, transcribed rule for rule.
// Tested by tests/unit/engine/engine_property_test.cpp
#include "tests/support/literal_driver.h"

#include <cstddef>

#include "tests/support/literal_text.h"

namespace tintline::literal {
namespace {

const std::size_t kDirectLength = 90;

bool containsText(const std::string& text, const std::string& what) {
  return InStrText(text, what) > 0;
}

bool beginsWithComment(const std::string& H) { return InStrText(H, "<span class='REM'>") == 1; }

bool endsInUnderscore(const std::string& line) { return Right(Trim(line), 1) == "_"; }

bool continues(const std::string& H) {
  const std::string text = Trim(H);
  return Right(text, 1) == "_" || Right(text, 9) == "_ </span>";
}

std::string blankFill(int k) { return Space(5 - static_cast<int>(std::to_string(k).size())); }

std::string numberPrefix(int k) {
  return "<span class='Marks'>" + std::to_string(k) + ":" + blankFill(k) + "</span>";
}

std::string progress(const std::string& label, std::size_t number, std::size_t count) {
  return label + " " + std::to_string(number) + " " + std::to_string(count);
}

// The first occurrence of the name, in whatever case, has an even number of quotes in front of it.
bool standsOutsideString(const std::string& text, const std::string& name) {
  return QuoteCount(Left(text, InStrText(text, name) - 1)) % 2 == 0;
}

std::string callLink(const std::string& name) {
  return "<a HREF='#" + name + "' class='Marks'>" + name + "</a>";
}

bool firstCallTest(const std::string& H, const std::string& name) {
  return containsText(H, name) && !containsText(H, name + " =") &&
         !containsText(H, "<span class='REM'>");
}

// The second test looks at the part in front of a trailing comment, with one blank behind it.
bool secondCallTest(const std::string& T, const std::string& name) {
  if (!containsText(T, name)) return false;
  if (!standsOutsideString(T, name)) return false;
  if (containsText(T, name + " =")) return false;
  return containsText(T, ">" + name) || containsText(T, name + "<span class='Marks'>") ||
         containsText(T, name + " ");
}

std::string linkCalls(const std::string& H, const std::string& name) {
  if (firstCallTest(H, name)) {
    if (!standsOutsideString(H, name)) return H;
    return Replace(H, name, callLink(name) + " ");
  }
  if (beginsWithComment(H)) return H;
  std::string C = H;
  std::string comment;
  const std::size_t commentStart = InStrText(H, "<span class='REM'>");
  if (commentStart > 0) {
    C = Left(H, commentStart - 1);
    comment = Mid(H, commentStart);
  }
  if (!secondCallTest(C + " ", name)) return H;
  return Replace(C, name, callLink(name)) + comment;
}

// One run over all lines; the members are the state that the run keeps from line to line.
class Run {
 public:
  Run(const std::vector<std::string>& lines, const std::vector<std::string>& names,
      const Options& how, const Colours& palette, Highlighter& byLine)
      : List1(lines), ProzNamen(names), options(how), colours(palette), highlighter(byLine) {}

  Result convert(int abortAtLine);

 private:
  void convertHead();
  void convertOther();
  void linkAllCalls();
  void openFrame();
  std::string otherText() const;
  void addToList2(const std::string& E, bool alwaysWrapper);
  std::string styled(const std::string& E) const;
  void event(const std::string& text) { result.events.push_back(text); }

  const std::vector<std::string> List1;
  const std::vector<std::string> ProzNamen;
  const Options options;
  const Colours colours;
  Highlighter& highlighter;
  Result result;
  std::string builder;
  std::size_t i = 0;
  int counter = 0;
  int k = 1;
  std::string H;
  bool bSubUmbruch = false;
  bool bREM = false;
  bool statementStart = true;
  bool frameOpen = false;
};

Result Run::convert(int abortAtLine) {
  const std::size_t N = List1.size();
  for (i = 0; i < N; ++i) {
    event(progress("lese", i, N));
    event("yield");
    H = highlighter.fkt_ZeileKonvertieren(List1[i]);
    if (containsText(H, "class='EndSub'")) H = H + "<hr>";
    event("abort?");
    if (static_cast<int>(i) == abortAtLine) {
      result.aborted = true;
      break;
    }
    event("yield");
    k = counter + 1;
    if (containsText(Trim(H), "class='Sub'>")) {
      convertHead();
    } else {
      convertOther();
    }
    statementStart = !continues(H);
    event("yield");
  }
  if (!result.aborted) {
    if (frameOpen) builder += "</div>";
    result.html = builder;
  }
  result.bSubUmbruch = bSubUmbruch;
  result.bREM = bREM;
  return result;
}

void Run::convertHead() {
  const std::string source = Trim(List1[i]);
  std::string E;
  if (options.lineNumbers) {
    const std::string trimmed = Trim(H);
    const std::string opener = Left(trimmed, InStrText(trimmed, "class='Sub'>") - 1);
    E = Replace(opener, "<span name", "<a name") + " HREF='#Index' class='Marks'>" +
        std::to_string(k) + ":</a><span class='Marks'>" + blankFill(k) +
        "</span><span class='Sub'>" + source + "</span>";
  } else {
    E = Replace(H, "<span ", "<a HREF='#Index' ");
    E = Replace(E, "</span>", "</a>");
  }
  E = Replace(E, "<span class=\"Code\"> </span>", " ");
  E = styled(E);
  builder += E;
  addToList2(E, false);
  builder += "<br>";
  if (endsInUnderscore(List1[i])) {
    bSubUmbruch = true;
  } else {
    bSubUmbruch = false;
    counter = counter + 1;
  }
}

void Run::convertOther() {
  if (!bSubUmbruch && !options.blnPaste && !ProzNamen.empty()) linkAllCalls();
  bREM = beginsWithComment(H);
  openFrame();
  const std::string E = styled(otherText());
  builder += E + "<br>";
  addToList2(E, !statementStart);
  event(progress("bearbeite", i + 1, List1.size()));
  if (endsInUnderscore(List1[i])) {
    builder += "<br>";  // bSubUmbruch stays: set within a head, clear within any other statement
  } else {
    builder += "\n";
    bSubUmbruch = false;
    counter = counter + 1;
  }
}

void Run::linkAllCalls() {
  std::vector<std::string> seen;
  for (const std::string& entry : ProzNamen) {
    const std::string name = Trim(entry);
    bool again = false;
    for (const std::string& earlier : seen) {
      if (earlier == name) again = true;
    }
    seen.push_back(name);
    if (name.empty() || again) continue;
    H = linkCalls(H, name);
  }
}

void Run::openFrame() {
  if (i + 1 >= List1.size()) return;
  if (!containsText(List1[i + 1], "Modul:") || !containsText(H, "'-------")) return;
  if (frameOpen) {
    builder += "</div><br><div style='border: thin solid #000080;'>";
  } else {
    builder += "<div style='border: thin solid #000080;'>";
    frameOpen = true;
  }
}

std::string Run::otherText() const {
  if (bSubUmbruch) {
    const std::string line = Trim(List1[i]);
    if (options.lineNumbers) return Space(5) + "<a class='Sub'>" + line + "</a>";
    return "<a HREF='#Index' class='Sub'>" + line + "</a>";
  }
  if (!options.lineNumbers) return H;
  if (!statementStart) return Space(5) + H;
  return numberPrefix(k) + H;
}

void Run::addToList2(const std::string& E, bool alwaysWrapper) {
  const bool wrapper = alwaysWrapper || E.size() > kDirectLength;
  result.List2.push_back(E);
  result.wrapped.push_back(wrapper);
  event(wrapper ? "add wrapper" : "add direct");
}

std::string Run::styled(const std::string& E) const {
  return options.inlineStyle ? fkt_ReplaceStyle(E, colours) : E;
}

std::string styleText(const Colours& colours, int category, bool procedure) {
  const std::string* fields = colours.fields[category];
  std::string text = "style=\" color:" + fields[1];
  if (FlagIsZero(fields[5])) {
    text += "; background: " + fields[2] + ";";
  } else {
    text += "; background: inherit;";
  }
  if (procedure) text += " font: italic bold;";
  return text + "\"";
}

}  // namespace

bool FlagIsZero(const std::string& flag) {
  std::string rest = Trim(flag);
  if (Left(rest, 1) == "+" || Left(rest, 1) == "-") rest = Mid(rest, 2);
  bool pointSeen = false;
  bool otherThanZero = false;
  for (char c : rest) {
    if (c == '.' && !pointSeen) {
      pointSeen = true;
    } else if (c < '0' || c > '9') {
      return true;
    } else if (c != '0') {
      otherThanZero = true;
    }
  }
  return !otherThanZero;
}

std::string fkt_ReplaceStyle(std::string line, const Colours& colours) {
  line = Replace(line, "class='Code'", styleText(colours, 1, false));
  line = Replace(line, "class='Parms'", styleText(colours, 2, false));
  line = Replace(line, "class='Marks'", styleText(colours, 4, false));
  line = Replace(line, "class='Rem'", styleText(colours, 3, false));
  line = Replace(line, "class='Sub'", styleText(colours, 0, true));
  line = Replace(line, "class='EndSub'", styleText(colours, 0, true));
  return line;
}

Result Verarbeiten(const std::vector<std::string>& List1, const std::vector<std::string>& ProzNamen,
                   const Options& options, const Colours& colours, Highlighter& highlighter,
                   int abortAtLine) {
  return Run(List1, ProzNamen, options, colours, highlighter).convert(abortAtLine);
}

SelectionResult AuswahlKonvertieren(const std::vector<std::string>& List1,
                                    const std::vector<bool>& selected, const Options& options,
                                    const Colours& colours, Highlighter& highlighter) {
  SelectionResult result;
  int counter = 0;
  bool previousContinues = false;
  for (std::size_t i = 0; i < List1.size(); ++i) {
    if (!selected[i]) continue;
    const std::string H = highlighter.fkt_ZeileKonvertieren(List1[i]);
    std::string E = H;
    if (options.lineNumbers && previousContinues) E = Space(5) + H;
    if (options.lineNumbers && !previousContinues) E = numberPrefix(counter + 1) + H;
    if (options.inlineStyle) E = fkt_ReplaceStyle(E, colours);
    const bool wrapper = E.size() > kDirectLength;
    result.List2.push_back(E);
    result.wrapped.push_back(wrapper);
    result.events.push_back(wrapper ? "add wrapper" : "add direct");
    result.html += E + "<br>";
    result.table += "<tr><td>" + E + "<br></td></tr>";
    previousContinues = continues(H);
    if (!endsInUnderscore(List1[i])) counter = counter + 1;
    result.events.push_back(progress("bearbeite", i, List1.size()));
  }
  return result;
}

namespace {

// Space(level x unit) and the text; a level below 0 becomes 0 for the caller too.
std::string fktEinrücken(int unit, int& level, const std::string& text) {
  if (level < 0) level = 0;
  return Space(level * unit) + text;
}

bool isTypeHead(const std::string& t) {
  return Left(UCase(t), 4) == "TYPE" || Left(UCase(t), 11) == "PUBLIC TYPE" ||
         Left(UCase(t), 11) == "PRIVATE TYPE";  // 11 characters against 12: never, on purpose
}

bool isTypeEnd(const std::string& t) { return Left(UCase(t), 8) == "END TYPE"; }

bool outdents(const std::string& t, bool formatieren) {
  const bool oneLineIf = Left(t, 2) == "If" && Right(RTrim(t), 4) != "Then";
  return oneLineIf || Left(t, 6) == "Elseif" || Left(t, 4) == "Else" || isTypeHead(t) ||
         (formatieren && isTypeEnd(t));
}

bool opens(const std::string& t) {
  return Left(t, 2) == "If" || Left(t, 3) == "For" || Left(t, 5) == "While" ||
         Left(t, 4) == "With" || Left(t, 4) == "Else" || isTypeHead(t);
}

bool closes(const std::string& t, bool formatieren) {
  return Left(t, 6) == "End If" || Left(t, 4) == "Next" || Left(t, 4) == "Wend" ||
         Left(t, 8) == "End With" || Left(t, 4) == "Else" || (!formatieren && isTypeEnd(t));
}

// One pass. `formatieren` tells the two commands apart.
void indentationPass(std::vector<std::string>& List1, int unit, bool formatieren) {
  int level = 0;
  for (std::string& item : List1) {
    const std::string t = LTrim(item);
    if (level != 0) {
      item = fktEinrücken(unit, level, t);
    } else {
      item = t;
    }
    if (outdents(t, formatieren)) {
      level = level - 1;
      item = fktEinrücken(unit, level, t);
      if (level < 1) level = 0;
    }
    if (opens(t)) {
      level = level + 1;
    } else if (closes(t, formatieren)) {
      level = level - 1;
      item = fktEinrücken(unit, level, t);
      if (level < 1) level = 0;
    }
  }
}

}  // namespace

void Formatieren(std::vector<std::string>& List1, int& unit) {
  if (List1.empty()) return;
  unit = unit + 1;
  indentationPass(List1, unit, true);
}

void Formatieren2(std::vector<std::string>& List1, int& unit) {
  if (List1.empty()) return;
  unit = unit - 1;
  if (unit <= 0) unit = 0;
  indentationPass(List1, unit, false);
}

}  // namespace tintline::literal
