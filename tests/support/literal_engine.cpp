// The rules of the conversion, transcribed one by one. Nothing here is clever, on purpose.
// Tested by tests/unit/engine/engine_property_test.cpp
#include "tests/support/literal_engine.h"

#include "tests/support/literal_text.h"

namespace tintline::literal {
namespace {

using Lines = std::vector<string>;

bool endsInUnderscore(const string& line) { return Right(Trim(line), 1) == "_"; }

string span(const string& cssClass, const string& text) {
  return "<span class='" + cssClass + "'>" + text + "</span>";
}

// ------------------------------------------------------------------------------ highlighter

bool isProcedureKeyword(const string& word) {
  return InStr(
             "\x03Sub\x03"
             "Function\x03Property\x03",
             "\x03" + word + "\x03") > 0;
}

bool isWholeLineComment(const string& line) {
  return Left(Trim(line), 1) == "'" || Left(UCase(Trim(line)), 3) == "REM";
}

// Only the last apostrophe is judged.
bool fkt_KommentarZeichen(const string& line) {
  const std::size_t p = InStrRev(line, "'");
  return p > 0 && QuoteCount(Left(line, p - 1)) % 2 == 0;
}

bool fkt_KommentarRem(const string& line) {
  for (std::size_t p = InStr(UCase(line), " REM"); p > 0; p = InStr(p + 1, UCase(line), " REM"))
    if (QuoteCount(Left(line, p - 1)) % 2 == 0) return true;
  return false;
}

bool fkt_ProzedurEnde(const string& line) {
  const string text = Trim(line);
  return Left(text, 12) == "End Property" || Left(text, 7) == "End Sub" ||
         Left(text, 12) == "End Function";
}

bool fkt_NurBuchstaben(const string& text) {
  return text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz$") ==
         string::npos;
}

string anchorName(const string& code, const string& word) {
  string name = Replace(code, word, "");
  for (const char* gone : {"Private", "Declare", "Function ", "Sub ", "Public ", "Lib ", " "})
    name = Replace(name, gone, "");
  for (const char* end : {"(", "\""})
    if (InStr(name, end) > 0) name = Left(name, InStr(name, end) - 1);
  return name;
}

string replaceFirst(const string& text, const string& find, const string& with) {
  const std::size_t position = InStr(text, find);
  return position == 0 ? text : Left(text, position - 1) + with + Mid(text, position + 1);
}

}  // namespace

string KeywordText(const Lines& entries) {
  string text(1, '\0');
  for (const string& entry : entries) text += entry + '\0';
  return text;
}

string Highlighter::fkt_ZeileKonvertieren(const string& line) {
  if (KommentarFortsetzung || isWholeLineComment(line)) {
    KommentarFortsetzung = endsInUnderscore(line);
    return span("Rem", line);
  }
  std::size_t p = 0;
  if (fkt_KommentarZeichen(line))
    p = InStrRev(line, "'");
  else if (fkt_KommentarRem(line))
    p = InStrRevText(line, " REM");
  if (p == 0) return highlightCode(line);
  KommentarFortsetzung = endsInUnderscore(line);
  return highlightCode(Left(line, p - 1)) + span("Rem", Mid(line, p));
}

string Highlighter::highlightCode(const string& code) {
  string result;
  for (const string& word : Split(code, " ")) {
    if (fkt_ProzedurEnde(code)) return span("EndSub", code);
    if (isProcedureKeyword(word))
      return "<span name='" + anchorName(code, word) + "' class='Sub'>" + code + "</span>";
    result += highlightWord(word);
  }
  return result;
}

string Highlighter::highlightWord(const string& text) {
  string result;
  Word word{text, text, false, false, false, false};
  if (Trim(text).empty()) WortEnde = false;
  do {
    word.isKeyword1 = word.isKeyword2 = word.namedArgument = word.trim = false;
    splitAtComma(word);
    splitAtParenthesis(word, '(');
    splitAtParenthesis(word, ')');
    splitAtNamedArgument(word);
    lookUp(word);
    word.piece = replaceFirst(word.piece, "<", "&lt;");
    word.piece = replaceFirst(word.piece, ">", "&gt;");
    for (const char* mark : {"\"", "(", ")"})
      word.piece = Replace(word.piece, mark, span("Marks", mark));
    if (word.trim) word.piece = Trim(word.piece);
    result += output(word);
    word.piece = word.rest;
  } while (!word.piece.empty());
  return result;
}

void Highlighter::splitAtComma(Word& word) {
  const std::size_t comma = InStr(word.piece, ",");
  WortEnde = Trim(word.piece).size() <= 1 || comma < 2;
  word.rest = WortEnde ? "" : Mid(word.piece, comma);
  if (!WortEnde) word.piece = Left(word.piece, comma - 1);
  if (word.rest == ",") word.trim = true;
}

void Highlighter::splitAtParenthesis(Word& word, char parenthesis) {
  const std::size_t position = InStr(word.piece, string(1, parenthesis));
  if (InStr(word.piece, "()") > 0 || position == 0) return;
  const std::size_t length = position == 1 ? 1 : position - 1;
  word.rest = Mid(word.piece, length + 1) + word.rest;
  word.piece = Left(word.piece, length);
  word.trim = true;
  WortEnde = word.piece == ")" && word.rest.empty();
}

void Highlighter::splitAtNamedArgument(Word& word) {
  if (Left(word.piece, 2) == ":=") {
    word.piece = Mid(word.piece, 3);
    word.namedArgument = true;
  }
  const std::size_t position = InStr(word.piece, ":=");
  if (position < 2) return;
  word.rest = Mid(word.piece, position) + word.rest;
  word.piece = Left(word.piece, position - 1);
  WortEnde = false;
}

void Highlighter::lookUp(Word& word) const {
  const string looked = Trim(word.piece);
  if (!fkt_NurBuchstaben(looked) || looked.empty()) return;
  const string entry = '\0' + looked + '\0';
  word.isKeyword1 = InStr(lists_.Keywords1, entry) > 0;
  word.isKeyword2 = !word.isKeyword1 && InStr(lists_.Keywords2, entry) > 0;
}

string Highlighter::output(const Word& word) const {
  string result = word.namedArgument ? span("Parms", ":=") : "";
  result += word.isKeyword1   ? span("Code", word.piece)
            : word.isKeyword2 ? span("Parms", word.piece)
                              : word.piece;
  const bool loneBlank = word.piece == " " && !word.trim;
  return WortEnde && !loneBlank ? result + " " : result;
}

// ------------------------------------------------------------------------ runs over the lines

namespace {

bool containsText(const string& text, const string& what) { return InStrText(text, what) > 0; }

bool continues(const string& H) { return endsInUnderscore(H) || Right(Trim(H), 9) == "_ </span>"; }

string blankFill(int k) { return Space(5 - static_cast<int>(std::to_string(k).size())); }

string numberPrefix(int k) { return span("Marks", std::to_string(k) + ":" + blankFill(k)); }

// The first occurrence of the name, in whatever case, has an even number of quotes in front of it.
bool standsOutsideString(const string& text, const string& name) {
  return QuoteCount(Left(text, InStrText(text, name) - 1)) % 2 == 0;
}

// The part in front of a trailing comment is looked at with one blank behind it.
bool isCallInFrontOfComment(const string& T, const string& name) {
  return containsText(T, name) && standsOutsideString(T, name) && !containsText(T, name + " =") &&
         (containsText(T, ">" + name) || containsText(T, name + "<span class='Marks'>") ||
          containsText(T, name + " "));
}

string linkCalls(const string& H, const string& name) {
  const string link = "<a HREF='#" + name + "' class='Marks'>" + name + "</a>";
  const std::size_t comment = InStrText(H, "<span class='REM'>");
  if (containsText(H, name) && !containsText(H, name + " =") && comment == 0)
    return standsOutsideString(H, name) ? Replace(H, name, link + " ") : H;
  if (comment == 1) return H;
  const string C = comment > 0 ? Left(H, comment - 1) : H;
  if (!isCallInFrontOfComment(C + " ", name)) return H;
  return Replace(C, name, link) + Mid(H, C.size() + 1);
}

string linkAllCalls(string H, const Lines& ProzNamen) {
  Lines seen;
  for (const string& entry : ProzNamen) {
    const string name = Trim(entry);
    if (name.empty() || std::find(seen.begin(), seen.end(), name) != seen.end()) continue;
    seen.push_back(name);
    H = linkCalls(H, name);
  }
  return H;
}

// The numeric value of a transparency flag is 0: empty, no number, or a number equal to 0.
bool FlagIsZero(const string& flag) {
  string rest = Trim(flag);
  if (Left(rest, 1) == "+" || Left(rest, 1) == "-") rest = Mid(rest, 2);
  if (InStr(rest, ".") > 0) rest = replaceFirst(rest, ".", "");
  return rest.find_first_not_of("0123456789") != string::npos ||
         rest.find_first_of("123456789") == string::npos;
}

// The line with every class attribute turned into a style attribute.
string fkt_ReplaceStyle(string line, const Colours& colours) {
  const std::pair<const char*, int> classes[] = {{"Code", 1}, {"Parms", 2}, {"Marks", 4},
                                                 {"Rem", 3},  {"Sub", 0},   {"EndSub", 0}};
  for (const auto& [name, category] : classes) {
    const string* fields = colours.fields[category];
    const string back = FlagIsZero(fields[5]) ? fields[2] : "inherit";
    line = Replace(line, string("class='") + name + "'",
                   "style=\" color:" + fields[1] + "; background: " + back + ";" +
                       (category == 0 ? " font: italic bold;\"" : "\""));
  }
  return line;
}

void addToList2(Result& result, const string& E, bool alwaysWrapper) {
  const bool wrapper = alwaysWrapper || E.size() > 90;
  result.List2.push_back(E);
  result.wrapped.push_back(wrapper);
}

string head(const string& H, const string& line, int k, bool lineNumbers) {
  string E = Replace(Replace(H, "<span ", "<a HREF='#Index' "), "</span>", "</a>");
  if (lineNumbers) {
    const string opener = Left(Trim(H), InStrText(Trim(H), "class='Sub'>") - 1);
    E = Replace(opener, "<span name", "<a name") + " HREF='#Index' class='Marks'>" +
        std::to_string(k) + ":</a>" + span("Marks", blankFill(k)) + span("Sub", Trim(line));
  }
  return Replace(E, "<span class=\"Code\"> </span>", " ");
}

}  // namespace

Result Verarbeiten(const Lines& List1, const Lines& ProzNamen, const Options& options,
                   const Colours& colours, Highlighter& highlighter, int abortAtLine) {
  Result result;
  string builder;
  int counter = 0;
  bool bSubUmbruch = false, statementStart = true, frameOpen = false;
  const std::size_t N = List1.size();
  const auto styled = [&](const string& E) {
    return options.inlineStyle ? fkt_ReplaceStyle(E, colours) : E;
  };
  for (std::size_t i = 0; i < N; ++i) {
    const string& line = List1[i];
    string H = highlighter.fkt_ZeileKonvertieren(line);
    if (containsText(H, "class='EndSub'")) H = H + "<hr>";
    if (static_cast<int>(i) == abortAtLine) {
      result.aborted = true;
      return result;
    }
    const int k = counter + 1;
    if (containsText(Trim(H), "class='Sub'>")) {
      const string E = styled(head(H, line, k, options.lineNumbers));
      builder += E + "<br>";
      addToList2(result, E, false);
      bSubUmbruch = endsInUnderscore(line);
    } else {
      if (!bSubUmbruch && !options.blnPaste) H = linkAllCalls(H, ProzNamen);
      if (i + 1 < N && containsText(List1[i + 1], "Modul:") && containsText(H, "'-------")) {
        builder +=
            string(frameOpen ? "</div><br>" : "") + "<div style='border: thin solid #000080;'>";
        frameOpen = true;
      }
      string E = H;
      if (bSubUmbruch)
        E = (options.lineNumbers ? Space(5) + "<a class='Sub'>" : "<a HREF='#Index' class='Sub'>") +
            Trim(line) + "</a>";
      else if (options.lineNumbers)
        E = (statementStart ? numberPrefix(k) : Space(5)) + H;
      E = styled(E);
      builder += E + "<br>";
      addToList2(result, E, !statementStart);
      builder += endsInUnderscore(line) ? "<br>" : "\n";
      // Set within a head, clear within any other statement.
      if (!endsInUnderscore(line)) bSubUmbruch = false;
    }
    if (!endsInUnderscore(line)) counter = counter + 1;
    statementStart = !continues(H);
  }
  result.html = builder + (frameOpen ? "</div>" : "");
  return result;
}

Result AuswahlKonvertieren(const Lines& List1, const std::vector<bool>& selected,
                           const Options& options, const Colours& colours,
                           Highlighter& highlighter) {
  Result result;
  int counter = 0;
  bool previousContinues = false;
  for (std::size_t i = 0; i < List1.size(); ++i) {
    if (!selected[i]) continue;
    const string H = highlighter.fkt_ZeileKonvertieren(List1[i]);
    string E = H;
    if (options.lineNumbers) E = (previousContinues ? Space(5) : numberPrefix(counter + 1)) + H;
    if (options.inlineStyle) E = fkt_ReplaceStyle(E, colours);
    addToList2(result, E, false);
    result.html += E + "<br>";
    result.table += "<tr><td>" + E + "<br></td></tr>";
    previousContinues = continues(H);
    if (!endsInUnderscore(List1[i])) counter = counter + 1;
  }
  return result;
}

}  // namespace tintline::literal
