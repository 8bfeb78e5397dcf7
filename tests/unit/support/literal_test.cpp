// Checks the literal transcription itself against expectations worked out by hand, so that it can
// serve as the measure for the engine. Tests tests/support/literal_*.cpp and random_lines.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "tests/support/literal_driver.h"
#include "tests/support/literal_highlighter.h"
#include "tests/support/literal_text.h"
#include "tests/support/random_lines.h"

namespace tintline::literal {
namespace {

using Lines = std::vector<std::string>;

const std::string Q = "<span class='Marks'>\"</span>";
const std::string LP = "<span class='Marks'>(</span>";
const std::string RP = "<span class='Marks'>)</span>";
const std::string NA = "<span class='Parms'>:=</span>";

std::string code(const std::string& text) { return "<span class='Code'>" + text + "</span>"; }
std::string rem(const std::string& text) { return "<span class='Rem'>" + text + "</span>"; }
std::string head(const std::string& name, const std::string& text) {
  return "<span name='" + name + "' class='Sub'>" + text + "</span>";
}
std::string number(const std::string& digitsAndColon, const std::string& fill) {
  return "<span class='Marks'>" + digitsAndColon + fill + "</span>";
}
std::string link(const std::string& name) {
  return "<a HREF='#" + name + "' class='Marks'>" + name + "</a>";
}

Highlighter highlighter() {
  return Highlighter({KeywordText({"Call", "Dim", "G", "If", "Int2", "Left$", "MsgBox", "Not"}),
                      KeywordText({"True", "If", "SW_HIDE "})});
}

Colours defaultColours() {
  Colours colours;
  const char* const text[] = {"#000080", "#0000FF", "#008080", "#008000", "#FF0000"};
  for (int category = 0; category < 5; ++category) {
    colours.fields[category][1] = text[category];
    colours.fields[category][2] = category == 0 ? "#DFDFDF" : "#FFFFFF";
    colours.fields[category][5] = "0";
  }
  return colours;
}

Result convert(const Lines& lines, const Options& options, const Lines& names = {},
               int abortAtLine = -1) {
  Highlighter fresh = highlighter();
  return Verarbeiten(lines, names, options, defaultColours(), fresh, abortAtLine);
}

TEST(LiteralText, CapitalsFollowWindows1252) {
  EXPECT_EQ(UCase("a\xE4\xF6\xFC\xFF\x9A\x9C\x9E\xE0\xFE"),
            "A\xC4\xD6\xDC\x9F\x8A\x8C\x8E\xC0\xDE");
  const std::string withoutPartner = "\xDF\xB5\xF7\xD7\x83\xAA";
  EXPECT_EQ(UCase(withoutPartner), withoutPartner);
}

TEST(LiteralText, SearchesAndPartsCountFromOne) {
  EXPECT_EQ(InStr("abcb", "b"), 2u);
  EXPECT_EQ(InStr(3, "abcb", "b"), 4u);
  EXPECT_EQ(InStrRev("abcb", "b"), 4u);
  EXPECT_EQ(InStrText("xx rEm", " REM"), 3u);
  EXPECT_EQ(InStr("abc", "B"), 0u);
  EXPECT_EQ(Mid("abc", 4), "");
  EXPECT_EQ(Right("abc", 2), "bc");
  EXPECT_EQ(Trim(" \t x  "), "\t x");
  EXPECT_EQ(Replace("aaa", "aa", "b"), "ba");
  EXPECT_EQ(Split("", " ").size(), 0u);
  EXPECT_EQ(Split(" a ", " "), (Lines{"", "a", ""}));
}

struct LineCase {
  const char* name;
  std::string line;
  std::string html;
};

TEST(LiteralHighlighter, SingleLines) {
  const LineCase cases[] = {
      {"an empty line has no words", "", ""},
      {"one blank is two empty words", " ", "  "},
      {"the indentation of a comment stands in its span", "    ' note", rem("    ' note")},
      {"REM is a prefix test", "Remove x", rem("Remove x")},
      {"a tab is no blank", "\t' c", "\t " + rem("' c")},
      {"an apostrophe in a string is no comment", "s = \"It's\"", "s = " + Q + "It's" + Q + " "},
      {"the last apostrophe starts the comment", "x = \"It's\" ' <c>",
       "x = " + Q + "It's" + Q + "  " + rem("' <c>")},
      {"only the last apostrophe is judged", "a 'b \"It's\"", "a 'b " + Q + "It's" + Q + " "},
      {"Rem is found inside a longer word", "x = y Remove z", "x = y " + rem(" Remove z")},
      {"any REM outside a string counts", "x \"a REM b\" rem c",
       "x " + Q + "a REM b" + Q + " " + rem(" rem c")},
      {"the split is at the last REM all the same", "x REM \"b REM c\"",
       "x REM " + Q + "b " + rem(" REM c\"")},
      {"REM inside a string only is code", "x \"a REM b\"", "x " + Q + "a REM b" + Q + " "},

      {"Exit Sub is a head", "Exit Sub", head("Exit", "Exit Sub")},
      {"property head", "Public Property Get Name()",
       head("GetName", "Public Property Get Name()")},
      {"an unlisted word stays in the name", "Friend Function F()",
       head("FriendF", "Friend Function F()")},
      {"declaration", "Private Declare Function GetTickCount Lib \"kernel32\" () As Long",
       head("GetTickCount", "Private Declare Function GetTickCount Lib \"kernel32\" () As Long")},
      {"the name is cut at a quote", "Declare Sub Beep Lib \"k\"",
       head("Beep", "Declare Sub Beep Lib \"k\"")},
      {"every Sub leaves the name", "Private Sub SubMain()", head("Main", "Private Sub SubMain()")},
      {"small private stays in the name", "private Sub X()", head("privateX", "private Sub X()")},
      {"a head loses what was highlighted before, keeps its comment", "x Sub F() ' c",
       head("xF", "x Sub F() ") + rem("' c")},
      {"end sub in small letters is code", "end sub", "end sub "},
      {"procedure end", "  End Sub", "<span class='EndSub'>  End Sub</span>"},
      {"procedure end is a prefix test", "End Functional x",
       "<span class='EndSub'>End Functional x</span>"},

      {"(): not split, not looked up", "Dim()", "Dim" + LP + RP + " "},
      {"words in a string are looked up", "MsgBox \"Call if Not Dim\"",
       code("MsgBox") + " " + Q + "Call if " + code("Not") + " Dim" + Q + " "},
      {"lookups regard case; digits and trailing blanks never match", "dim Int2 SW_HIDE True",
       "dim Int2 SW_HIDE <span class='Parms'>True</span> "},
      {"the first list comes first", "If", code("If") + " "},
      {"a word with $ is looked up whole", "Left$(s)", code("Left$") + LP + "s" + RP + " "},
      {"both angle brackets", "a<>b", "a&lt;&gt;b "},
      {"only the first of each", "a<b<c", "a&lt;b<c "},
      {"parentheses and comma", "f(x, y)", "f" + LP + "x, y" + RP + " "},
      {"nested parentheses", "f((a),b)", "f" + LP + LP + "a" + RP + ",b" + RP + " "},
      {"a leading comma is not split", ",a,b", ",a,b "},
      {"a one-letter keyword in front of a comma", "G, 1", code("G") + ", 1 "},
      {"the blank behind ( is lost", "Foo( x )", "Foo" + LP + "x " + RP + " "},
      {"named argument", "Call Foo(Bar:=1)",
       code("Call") + " Foo" + LP + "Bar" + NA + "1" + RP + " "},
      {"two named-argument marks", ":=a:=b", NA + "a" + NA + "b "},
      {"a lone named-argument mark", "a := b", "a " + NA + " b "},
      {"a named keyword", "x:=True,If", "x" + NA + "<span class='Parms'>True</span>,If "},
  };
  for (const LineCase& c : cases) {
    EXPECT_EQ(highlighter().fkt_ZeileKonvertieren(c.line), c.html) << c.name;
  }
}

TEST(LiteralHighlighter, CommentsContinue) {
  const std::vector<Lines> runs = {
      // source lines, alternating with their HTML
      {"' a _", rem("' a _"), "Sub x()", rem("Sub x()"), "y", "y "},
      {"x ' c _ ", "x  " + rem("' c _ "), "Dim _", rem("Dim _"), "", rem(""), "y", "y "},
      {"x _", "x _ ", "y", "y "},
      {"Rem _", rem("Rem _"), "'_x", rem("'_x"), "y", "y "},
  };
  for (const Lines& run : runs) {
    Highlighter one = highlighter();
    for (std::size_t i = 0; i < run.size(); i += 2) {
      EXPECT_EQ(one.fkt_ZeileKonvertieren(run[i]), run[i + 1]) << run[0] << ", line " << i / 2;
    }
  }
}

TEST(LiteralDriver, ContinuedHead) {
  const Lines source = {"Sub Foo(a, _", "b, _", "c)", "x = 1", "End Sub"};
  Options options;
  Result plain = convert(source, options, {" Foo"});
  EXPECT_EQ(plain.List2,
            (Lines{"<a HREF='#Index' name='Foo' class='Sub'>Sub Foo(a, _</a>",
                   "<a HREF='#Index' class='Sub'>b, _</a>", "<a HREF='#Index' class='Sub'>c)</a>",
                   "x = 1 ", "<span class='EndSub'>End Sub</span><hr>"}));
  EXPECT_EQ(plain.wrapped, (std::vector<bool>{false, false, true, false, false}));

  options.lineNumbers = true;
  Result numbered = convert(source, options, {" Foo"});
  const Lines expected = {
      "<a name='Foo'  HREF='#Index' class='Marks'>1:</a><span class='Marks'>    </span>"
      "<span class='Sub'>Sub Foo(a, _</span>",
      "     <a class='Sub'>b, _</a>", "     <a class='Sub'>c)</a>", number("2:", "    ") + "x = 1 ",
      number("3:", "    ") + "<span class='EndSub'>End Sub</span><hr>"};
  EXPECT_EQ(numbered.List2, expected);
  EXPECT_EQ(numbered.wrapped, (std::vector<bool>{true, false, true, false, false}));
  EXPECT_EQ(numbered.html, expected[0] + "<br>" + expected[1] + "<br><br>" + expected[2] +
                               "<br>\n" + expected[3] + "<br>\n" + expected[4] + "<br>\n");
}

TEST(LiteralDriver, ContinuedStatementKeepsItsHighlighting) {
  Options options;
  options.lineNumbers = true;
  Result result = convert({"x = _", "Dim", "z ' c _ ", "d"}, options);
  EXPECT_EQ(result.List2,
            (Lines{number("1:", "    ") + "x = _ ", "     " + code("Dim") + " ",
                   number("2:", "    ") + "z  " + rem("' c _ "), "     " + rem("d")}));
  EXPECT_EQ(result.wrapped, (std::vector<bool>{false, true, false, true}));
  EXPECT_EQ(result.html, result.List2[0] + "<br><br>" + result.List2[1] + "<br>\n" +
                             result.List2[2] + "<br><br>" + result.List2[3] + "<br>\n");
}

TEST(LiteralDriver, CodeSpanInAHeadBecomesABlank) {
  Options options;
  options.lineNumbers = true;
  EXPECT_EQ(convert({"Sub F() <span class=\"Code\"> </span>"}, options).List2[0],
            "<a name='F'  HREF='#Index' class='Marks'>1:</a><span class='Marks'>    </span>"
            "<span class='Sub'>Sub F()  </span>");
}

TEST(LiteralDriver, CallLinks) {
  struct {
    const char* name;
    std::string line;
    Lines names;
    std::string html;
  } const cases[] = {
      {"a call", "Foo 1", {" Foo"}, link("Foo") + "  1 "},
      {"inside a word", "xFoo1", {" Foo"}, "x" + link("Foo") + " 1 "},
      {"an assignment", "Foo = 1", {" Foo"}, "Foo = 1 "},
      {"an assignment anywhere in the line", "Foo = Foo + 1", {" Foo"}, "Foo = Foo + 1 "},
      {"in a string", "x = \"Foo\"", {" Foo"}, "x = " + Q + "Foo" + Q + " "},
      {"behind a string", "\"x\" & Foo", {" Foo"}, Q + "x" + Q + " & " + link("Foo") + "  "},
      {"in a comment", "' Foo", {" Foo"}, rem("' Foo")},
      {"searched without, replaced with regard to case", "foo 1", {" Foo"}, "foo 1 "},
      {"in front of a comment", "Foo ' Foo", {" Foo"}, link("Foo") + "  " + rem("' Foo")},
      {"in front of a parenthesis and a comment",
       "Foo(1) 'c",
       {" Foo"},
       link("Foo") + LP + "1" + RP + "  " + rem("'c")},
      {"behind a span and in front of a comment",
       "(Foo1 'c",
       {" Foo"},
       LP + link("Foo") + "1  " + rem("'c")},
      {"inside a word in front of a comment", "xFoo1 ' c", {" Foo"}, "xFoo1  " + rem("' c")},
      {"an assignment in front of a comment", "Foo = 1 ' c", {" Foo"}, "Foo = 1  " + rem("' c")},
      {"a string in front of a comment",
       "\"Foo\" ' c",
       {" Foo"},
       Q + "Foo" + Q + "  " + rem("' c")},
      {"only in the comment", "x ' Foo", {" Foo"}, "x  " + rem("' Foo")},
      {"a name listed twice", "Foo 1", {" Foo", " Foo"}, link("Foo") + "  1 "},
      {"an empty name", "Foo 1", {" "}, "Foo 1 "},
      {"a name of the markup", "(x", {" class"}, "<span " + link("class") + " ='Marks'>(</span>x "},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(convert({c.line}, Options(), c.names).List2[0], c.html) << c.name;
  }
  Options pasted;
  pasted.blnPaste = true;
  EXPECT_EQ(convert({"Foo 1"}, pasted, {" Foo"}).List2[0], "Foo 1 ");
}

TEST(LiteralDriver, ModuleFrames) {
  const std::string frame = "<div style='border: thin solid #000080;'>";
  const std::string rule = rem("'---------") + "<br>\n";
  Result result = convert(
      {"'---------", "' Modul:AB", "'---------", "x", "'---------", "' Modul:CD", "'---------"},
      Options());
  EXPECT_EQ(result.html, frame + rule + rem("' Modul:AB") + "<br>\n" + rule + "x <br>\n" +
                             "</div><br>" + frame + rule + rem("' Modul:CD") + "<br>\n" + rule +
                             "</div>");
  EXPECT_EQ(result.List2[0], rem("'---------"));
}

TEST(LiteralDriver, NinetyCharactersGoDirectly) {
  Result result = convert({std::string(89, 'a'), std::string(90, 'a')}, Options());
  EXPECT_EQ(result.wrapped, (std::vector<bool>{false, true}));
}

TEST(LiteralDriver, ProgressAndAbort) {
  const Lines firstLine = {"lese 0 2",   "yield",         "abort?", "yield",
                           "add direct", "bearbeite 1 2", "yield"};
  Lines whole = firstLine;
  for (const char* e : {"lese 1 2", "yield", "abort?", "yield", "add direct", "yield"}) {
    whole.push_back(e);
  }
  EXPECT_EQ(convert({"a", "Sub b()"}, Options()).events, whole);

  Result stopped = convert({"a", "Sub b()"}, Options(), {}, 1);
  EXPECT_EQ(stopped.events, Lines(whole.begin(), whole.begin() + 10));
  EXPECT_EQ(stopped.List2, Lines{"a "});
  EXPECT_EQ(stopped.html, "");
  EXPECT_TRUE(stopped.aborted);

  EXPECT_TRUE(convert({}, Options()).events.empty());
}

TEST(LiteralDriver, InlineStyle) {
  Options options;
  options.inlineStyle = true;
  EXPECT_EQ(convert({"Sub F()", "Dim 'c"}, options).List2,
            (Lines{"<a HREF='#Index' name='F' style=\" color:#000080; background: #DFDFDF; font: "
                   "italic bold;\">Sub F()</a>",
                   "<span style=\" color:#0000FF; background: #FFFFFF;\">Dim</span>  "
                   "<span style=\" color:#008000; background: #FFFFFF;\">'c</span>"}));

  Colours colours = defaultColours();
  colours.fields[0][5] = "-1";
  colours.fields[2][5] = "1";
  EXPECT_EQ(fkt_ReplaceStyle("class='Parms' class='Marks' class='EndSub' class='sub'", colours),
            "style=\" color:#008080; background: inherit;\" "
            "style=\" color:#FF0000; background: #FFFFFF;\" "
            "style=\" color:#000080; background: inherit; font: italic bold;\" class='sub'");
}

TEST(LiteralDriver, TransparencyFlag) {
  for (const char* zero : {"", "0", "-0", " 0.00", ".", "x", "1x", "1,5", "&H1"}) {
    EXPECT_TRUE(FlagIsZero(zero)) << zero;
  }
  for (const char* set : {"1", "-1", "  +2", "0.5", ".1", "10"}) {
    EXPECT_FALSE(FlagIsZero(set)) << set;
  }
}

TEST(LiteralSelection, SelectedLinesOnly) {
  Options options;
  options.lineNumbers = true;
  Highlighter fresh = highlighter();
  SelectionResult result =
      AuswahlKonvertieren({"Sub F()", "x = _", "y", "Foo", "End Sub"},
                          {true, true, true, false, true}, options, defaultColours(), fresh);
  const Lines expected = {number("1:", "    ") + head("F", "Sub F()"),
                          number("2:", "    ") + "x = _ ", "     y ",
                          number("3:", "    ") + "<span class='EndSub'>End Sub</span>"};
  EXPECT_EQ(result.List2, expected);
  EXPECT_EQ(result.wrapped, std::vector<bool>(4, false));
  std::string html;
  std::string table;
  for (const std::string& line : expected) {
    html += line + "<br>";
    table += "<tr><td>" + line + "<br></td></tr>";
  }
  EXPECT_EQ(result.html, html);
  EXPECT_EQ(result.table, table);
  EXPECT_EQ(result.events.back(), "bearbeite 4 5");
}

TEST(LiteralIndentation, BlockRules) {
  struct {
    const char* name;
    Lines before;
    Lines after;  // with a unit of 2
  } const cases[] = {
      {"If block",
       {"  If a Then ", "x", "Else", "y", "Elseif b Then", "z", "End If", "   w"},
       {"If a Then ", "  x", "Else", "  y", "Elseif b Then", "  z", "End If", "w"}},
      {"a one-line If at level 0 opens a level", {"If a Then b", "x"}, {"If a Then b", "  x"}},
      {"a one-line If in a block keeps the level",
       {"For i", "x", "If a Then b", "y", "Next", "z"},
       {"For i", "  x", "If a Then b", "  y", "Next", "z"}},
      {"prefix tests",
       {"ForeColor = 1", "Without", "NextItem", "x"},
       {"ForeColor = 1", "  Without", "  NextItem", "  x"}},
      {"a record type in a block",
       {"While a", "public type T", "b", "END TYPE", "c", "Wend"},
       {"While a", "public type T", "  b", "END TYPE", "c", "Wend"}},
      {"a record type two blocks deep",
       {"With a", "With b", "Type T", "b", "End Type", "c"},
       {"With a", "  With b", "  Type T", "    b", "  End Type", "  c"}},
      {"the private record type is not indented",
       {"Private Type T", "b", "End Type", "c"},
       {"Private Type T", "b", "End Type", "c"}},
      {"an unbalanced end", {"  End If", "x"}, {"End If", "x"}},
      {"nested",
       {"With a", "With b", "x", "End With", "y", "End With"},
       {"With a", "  With b", "    x", "  End With", "  y", "End With"}},
      {"Do, Select and case count",
       {"Do", "Select Case a", "for i", "x"},
       {"Do", "Select Case a", "for i", "x"}},
  };
  for (const auto& c : cases) {
    Lines wider = c.before;
    int unit = 1;
    Formatieren(wider, unit);
    EXPECT_EQ(wider, c.after) << c.name;
    EXPECT_EQ(unit, 2);

    Lines narrower = c.before;
    unit = 3;
    Formatieren2(narrower, unit);
    EXPECT_EQ(narrower, c.after) << c.name << ", narrower";
    EXPECT_EQ(unit, 2);
  }
}

TEST(LiteralIndentation, UnitStaysAtZeroAndEmptyListChangesNothing) {
  Lines lines = {"For i", "  x"};
  int unit = 0;
  Formatieren2(lines, unit);
  EXPECT_EQ(unit, 0);
  EXPECT_EQ(lines, (Lines{"For i", "x"}));
  Lines none;
  unit = 4;
  Formatieren(none, unit);
  Formatieren2(none, unit);
  EXPECT_EQ(unit, 4);
}

// The source without its blanks, recovered from the HTML of a line that holds no markup itself.
std::string sourceWithoutBlanks(std::string html) {
  const std::size_t name = html.find("<span name='");
  if (name != std::string::npos) {
    const std::string closing = "' class='Sub'>";
    html.erase(name, html.find(closing) + closing.size() - name);
  }
  for (const char* cls : {"Code", "Parms", "Marks", "Rem", "EndSub"}) {
    html = Replace(html, std::string("<span class='") + cls + "'>", "");
  }
  html = Replace(Replace(html, "</span>", ""), " ", "");
  return Replace(Replace(html, "&lt;", "<"), "&gt;", ">");
}

TEST(LiteralRandomLines, EveryShortLineKeepsAllButItsBlanks) {
  std::set<std::string> lines;
  forEachShortLine(3, [&](const std::string& line) {
    lines.insert(line);
    EXPECT_EQ(sourceWithoutBlanks(highlighter().fkt_ZeileKonvertieren(line)),
              Replace(line, " ", ""));
  });
  EXPECT_EQ(lines.size(), 1u + 11u + 121u + 1331u);
}

TEST(LiteralRandomLines, TheSameSeedGivesTheSameLinesAndEveryRunEnds) {
  std::mt19937 first(7);
  std::mt19937 second(7);
  std::string all;
  for (int i = 0; i < 300; ++i) {
    const Lines lines = randomModule(first, 12);
    const Lines names = randomNames(first);
    EXPECT_EQ(lines, randomModule(second, 12));
    EXPECT_EQ(names, randomNames(second));
    EXPECT_LE(lines.size(), 12u);
    EXPECT_EQ(convert(lines, Options(), names).List2.size(), lines.size());
    for (const std::string& line : lines) all += line;
  }
  for (const char rare : {'\0', '\x03', '\t', '\xFC'}) {
    EXPECT_NE(std::count(all.begin(), all.end(), rare), 0);
  }
}

}  // namespace
}  // namespace tintline::literal
