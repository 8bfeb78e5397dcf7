// Random and exhaustive source lines. Only the raw numbers of the generator are used, because the
// standard distributions give different numbers with different libraries.
// Tested by tests/unit/support/literal_test.cpp
#include "tests/support/random_lines.h"

#include <cstddef>

namespace tintline::literal {
namespace {

// A number from 0 to count - 1; the slight preference for small ones does no harm here.
std::size_t below(std::mt19937& random, std::size_t count) {
  return static_cast<std::size_t>(random()) % count;
}

bool oneIn(std::mt19937& random, std::size_t count) { return below(random, count) == 0; }

const std::string& pick(std::mt19937& random, const std::vector<std::string>& texts) {
  return texts[below(random, texts.size())];
}

const std::vector<std::string>& names() {
  static const std::vector<std::string> list = {"Foo",
                                                "Bar",
                                                "Laden",
                                                "Main",
                                                "x",
                                                "a",
                                                "s",
                                                "span",
                                                "class",
                                                "name",
                                                "Marks",
                                                "HREF",
                                                "hr",
                                                "br",
                                                "Sub",
                                                "Code",
                                                "foo",
                                                "FooBar",
                                                "F.o",
                                                "Pr\xFC"
                                                "fe",
                                                "\xC4ndern",
                                                "lt",
                                                "Dim",
                                                "</a>",
                                                "'",
                                                "\""};
  return list;
}

const std::vector<std::string>& pieces() {
  static const std::vector<std::string> list = {"\"",
                                                "\"",
                                                "\"",
                                                "(",
                                                ")",
                                                "(",
                                                ")",
                                                "()",
                                                ",",
                                                ",",
                                                "'",
                                                "'",
                                                "<",
                                                ">",
                                                "<",
                                                ">",
                                                ":=",
                                                ":=",
                                                ":",
                                                "=",
                                                " =",
                                                " = ",
                                                "Sub",
                                                "Function",
                                                "Property",
                                                "End Sub",
                                                "End Function",
                                                "End ",
                                                "end sub",
                                                "Exit Sub",
                                                "Private ",
                                                "Public ",
                                                "Declare ",
                                                "Lib ",
                                                "Sub ",
                                                " ",
                                                " ",
                                                " ",
                                                " ",
                                                "  ",
                                                "\t",
                                                "Rem",
                                                " REM",
                                                " Rem ",
                                                "rem",
                                                "Remove",
                                                "_",
                                                " _",
                                                "_ ",
                                                "If",
                                                "If ",
                                                "Then",
                                                "Dim",
                                                "Dim ",
                                                "As",
                                                " As ",
                                                "True",
                                                "Left$",
                                                "Left$(",
                                                "x",
                                                "y1",
                                                "vb_x",
                                                "&",
                                                "&lt;",
                                                ".",
                                                "class='Sub'>",
                                                "class='EndSub'",
                                                "class='sub'>",
                                                "<span class='rem'>",
                                                "<span class='Rem'>",
                                                "<span name",
                                                "</span>",
                                                "_ </span>",
                                                "<span class=\"Code\"> </span>",
                                                "Modul:",
                                                "modul:",
                                                "'-------",
                                                "$",
                                                std::string(1, '\0'),
                                                "\x03",
                                                "Sub\x03"
                                                "Function",
                                                "\xE4",
                                                "\xC4",
                                                "\xFC",
                                                "\xDC",
                                                "\xDF",
                                                "\xFF",
                                                "\x9F",
                                                "\xB5",
                                                "\xA0",
                                                "\r",
                                                "\n",
                                                "\x1A"};
  return list;
}

std::string randomHead(std::mt19937& random) {
  const std::vector<std::string> openers = {
      "Sub ",          "Private Sub ", "Public Function ", "  Function ",
      "Property Get ", "Friend Sub ",  "Declare Sub ",     "Private Declare Function "};
  const std::vector<std::string> ends = {
      "()",     "(a, b)",  "( _", "(ByVal a As Long, _", "() As Long", "", " Lib \"k\" ()",
      "() ' c", "() ' c _"};
  return pick(random, openers) + pick(random, names()) + pick(random, ends);
}

std::string randomStatement(std::mt19937& random) {
  const std::vector<std::string> openers = {
      "",        "  ",   "Call ", "x = ",      "If ",  "    ' ",
      "Dim x, ", "Rem ", "\"",    "MsgBox \"", "Else", "Type "};
  const std::vector<std::string> ends = {"",       " = 1",   "(1, y)", " ' c",  " _",   " ' c _",
                                         "\" & x", " Rem c", "(a:=1)", " Then", " 'Foo"};
  return pick(random, openers) + pick(random, names()) + pick(random, ends);
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
  const std::vector<std::string> alphabet = {
      "Private", "Public", "Declare", "Sub", "Function", "Lib",   "Property", "Pri", "vate ", "Pub",
      "lic ",    "Dec",    "lare ",   "Su",  "b ",       "tion ", "sUB ",     " ",   "X"};
  forEachShortText(maxPieces, alphabet, [&](const std::string& head) { callback(head + "()"); });
}

}  // namespace tintline::literal
