// Random and exhaustive source lines. Only the raw numbers of the generator are used, because the
// standard distributions give different numbers with different libraries.
// Tested by tests/unit/engine/engine_property_test.cpp
#include "tests/support/random_lines.h"

#include <cstddef>

#include "tests/support/literal_text.h"

namespace tintline::literal {
namespace {

using namespace std::string_literals;

// A number from 0 to count - 1; the slight preference for small ones does no harm here.
std::size_t below(std::mt19937& random, std::size_t count) {
  return static_cast<std::size_t>(random()) % count;
}

bool oneIn(std::mt19937& random, std::size_t count) { return below(random, count) == 0; }

const std::string& pick(std::mt19937& random, const std::vector<std::string>& texts) {
  return texts[below(random, texts.size())];
}

const std::vector<std::string>& names() {
  static const std::vector<std::string> list = Split(
      "Foo|Bar|Laden|Main|x|a|s|span|class|name|Marks|HREF|hr|br|Sub|Code|foo|FooBar|"
      "F.o|Pr\xFC"
      "fe|\xC4ndern|lt|Dim|</a>|'|\"",
      "|");
  return list;
}

const std::vector<std::string>& pieces() {
  static const std::vector<std::string> list = Split(
      "\"|\"|\"|(|)|(|)|()|,|,|'|'|<|>|<|>|:=|:=|:|=| =| = |Sub|Function|Property|"
      "End Sub|End Function|End |end sub|Exit Sub|Private |Public |Declare |Lib |Sub | |"
      " | | |  |\t|Rem| REM| Rem |rem|Remove|_| _|_ |If|If |Then|Dim|Dim |As| As |True|"
      "Left$|Left$(|x|y1|vb_x|&|&lt;|.|class='Sub'>|class='EndSub'|class='sub'>|"
      "<span class='rem'>|<span class='Rem'>|<span name|</span>|_ </span>|"
      "<span class=\"Code\"> </span>|Modul:|modul:|'-------|$|\0|\x03|"s
      "Sub\x03"
      "Function|\xE4|\xC4|\xFC|\xDC|\xDF|\xFF|\x9F|\xB5|\xA0|\r|\n|\x1A",
      "|");
  return list;
}

std::string randomHead(std::mt19937& random) {
  const std::vector<std::string> openers = Split(
      "Sub |Private Sub |Public Function |  Function |Property Get |Friend Sub |"
      "Declare Sub |Private Declare Function ",
      "|");
  const std::vector<std::string> ends =
      Split("()|(a, b)|( _|(ByVal a As Long, _|() As Long|| Lib \"k\" ()|() ' c|() ' c _", "|");
  return pick(random, openers) + pick(random, names()) + pick(random, ends);
}

std::string randomStatement(std::mt19937& random) {
  const std::vector<std::string> openers =
      Split("|  |Call |x = |If |    ' |Dim x, |Rem |\"|MsgBox \"|Else|Type ", "|");
  const std::vector<std::string> ends =
      Split("| = 1|(1, y)| ' c| _| ' c _|\" & x| Rem c|(a:=1)| Then| 'Foo", "|");
  return pick(random, openers) + pick(random, names()) + pick(random, ends);
}

// Words of a statement, one behind the other.
std::string randomCode(std::mt19937& random) {
  static const std::vector<std::string> words = Split(
      "x|Kunde|strName|total_|_|(a, b)|(|)|=|+|&|And|Then|Else|:|:=|,|.Name|.Zelle(1)|"
      "!Feld|rs!Feld|a.b|5#|#1,|#n|x&|#1/2/2000#|#1/2/2000 10:30:00 PM#|# Jan 1, 2000 #|"
      "#|[Mein Name]|['Blatt 1'!A1]|[|\"a b c\"|\"it's \"\"so\"\" _\"|\"\"|\"offen |If|"
      "Debug.Print|Foo:|10|ByVal a As Long,|Rem|x.Rem|Rem.x|'",
      "|");
  static const std::vector<std::string> gaps = Split(" | | | | ||  |\t| \t ", "|");
  std::string code;
  for (std::size_t i = 0, count = 1 + below(random, 12); i < count; ++i)
    code += pick(random, words) + pick(random, gaps);
  return code;
}

std::string randomComment(std::mt19937& random) {
  static const std::vector<std::string> openers = Split("'|' |'   |'''  |Rem |REM\t|: Rem ", "|");
  static const std::vector<std::string> words =
      Split("ein|Wort|foo_|_|it's|\"|----------------------------|x = 1|Rem|  |\t", "|");
  std::string comment = pick(random, openers);
  for (std::size_t i = 0, count = below(random, 16); i < count; ++i)
    comment += pick(random, words) + (oneIn(random, 9) ? "" : " ");
  return comment;
}

// A statement with its comment, now and then in several lines.
void addStatement(std::mt19937& random, std::vector<std::string>& lines) {
  static const std::vector<std::string> openers =
      Split("||    |\t|        |10 |Marke: |  Marke : |10: |If a Then |Declare Sub ", "|");
  std::string line = pick(random, openers);
  if (!oneIn(random, 5)) line += randomCode(random);
  while (oneIn(random, 3)) {
    lines.push_back(line + " _");
    line = Space(static_cast<int>(below(random, 9))) + randomCode(random);
  }
  if (oneIn(random, 2)) line += randomComment(random);
  while (oneIn(random, 8)) {
    lines.push_back(line + " _");
    line = "  " + randomComment(random);
  }
  lines.push_back(line);
}

void addFixedLines(std::mt19937& random, std::vector<std::string>& lines) {
  static const std::vector<std::vector<std::string>> blocks = {
      {"VERSION 5.00", "Object = \"{831FDD16-0C5C-11D2-A9FC-0000F8754DA1}#2.0#0\"; \"x.ocx\"",
       "Begin VB.Form frmKunde", "   Caption = \"ein langer Titel\" 'und was er soll",
       "   BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851}", "   EndProperty", "End"},
      {"VERSION 1.0 CLASS", "BEGIN", "  MultiUse = -1  'True, und so bleibt es auch", "END"},
      {"Version 5, x", "Begin"},
      {"Attribute VB_Name = \"ein Name mit vielen Worten\""},
      {"Attribute Foo.VB_Description = \"ein Name\" ' Kommentar"},
      {"#If VBA7 And Win64 Then ' ein Kommentar, der lang ist"},
      {"#Const Schalter = _", "  1 + 2 + 3 + 4 + 5 + 6 + 7 + 8 + 9 + 10"}};
  for (const std::string& line : blocks[below(random, blocks.size())]) lines.push_back(line);
}

void addModuleHeader(std::mt19937& random, std::vector<std::string>& lines) {
  const std::string name = pick(random, names());
  const std::string rule = "'-------" + std::string(name.size(), '-');
  lines.push_back(rule);
  lines.push_back("' Modul:" + name);
  lines.push_back(rule);
}

void forEachShortText(int maxPieces, const std::vector<std::string>& alphabet,
                      const std::function<void(const std::string&)>& callback) {
  std::vector<std::string> texts = {""};
  callback("");
  for (int length = 1; length <= maxPieces; ++length) {
    std::vector<std::string> longer;
    for (const std::string& text : texts) {
      for (const std::string& piece : alphabet) {
        callback(text + piece);
        if (length < maxPieces) longer.push_back(text + piece);
      }
    }
    texts = longer;
  }
}

}  // namespace

std::string randomLine(std::mt19937& random) {
  // One line in thirty is so long that it passes the boundary of the list box by itself.
  const std::size_t count = oneIn(random, 30) ? 20 + below(random, 40) : below(random, 14);
  std::string line;
  for (std::size_t i = 0; i < count; ++i) {
    line += oneIn(random, 8) ? pick(random, names()) : pick(random, pieces());
  }
  return line;
}

std::vector<std::string> randomModule(std::mt19937& random, int maxLines) {
  const std::size_t limit = maxLines < 0 ? 0 : static_cast<std::size_t>(maxLines);
  const std::size_t count = below(random, limit + 1);
  const bool asReadFromFile = oneIn(random, 2);
  std::vector<std::string> lines;
  while (lines.size() < count) {
    switch (below(random, 8)) {
      case 0:
        addModuleHeader(random, lines);
        break;
      case 1:
        lines.push_back(randomHead(random));
        break;
      case 2:
        lines.push_back(pick(random, {"End Sub", "End Function", "  End Property", "End If", "Next",
                                      "Wend", "End Type", "END WITH", "", " "}));
        break;
      case 3:
      case 4:
        lines.push_back(randomStatement(random));
        break;
      default:
        lines.push_back(randomLine(random));
    }
  }
  lines.resize(count);
  if (asReadFromFile) {
    for (std::string& line : lines) line += " ";
  }
  return lines;
}

std::vector<std::string> randomStatements(std::mt19937& random, int maxLines) {
  std::vector<std::string> lines;
  const std::size_t count = 1 + below(random, static_cast<std::size_t>(maxLines));
  while (lines.size() < count) {
    if (oneIn(random, 8))
      addFixedLines(random, lines);
    else
      addStatement(random, lines);
  }
  lines.resize(count);
  const bool asReadFromFile = oneIn(random, 2);
  for (std::string& line : lines) line = RTrim(line) + (asReadFromFile ? " " : "");
  return lines;
}

std::vector<std::string> randomNames(std::mt19937& random) {
  std::vector<std::string> entries;
  const std::size_t count = below(random, 7);
  for (std::size_t i = 0; i < count; ++i) {
    entries.push_back(oneIn(random, 10) ? " " : " " + pick(random, names()));
    if (oneIn(random, 10)) entries.push_back(entries.back());
  }
  return entries;
}

void forEachShortLine(int maxPieces, const std::function<void(const std::string&)>& callback) {
  forEachShortText(maxPieces, {"\"", "(", ")", ",", "'", "<", ">", ":=", "Sub", " ", "x"},
                   callback);
}

void forEachShortHead(int maxPieces, const std::function<void(const std::string&)>& callback) {
  const std::vector<std::string> alphabet = Split(
      "Private|Public|Declare|Sub|Function|Lib|Property|Pri|vate |Pub|lic |Dec|lare |Su|"
      "b |tion |sUB | |X",
      "|");
  forEachShortText(maxPieces, alphabet, [&](const std::string& head) { callback(head + "()"); });
}

}  // namespace tintline::literal
