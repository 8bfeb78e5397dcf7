// Tests engine/conversion.h, engine/line_emission.h and engine/html_lines.h.
#include "engine/conversion.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "engine/line_emission.h"
#include "tests/support/convert.h"

namespace tintline {
namespace {

using test::lineList;
using test::strings;
using Lines = std::vector<std::string>;

struct Setup {
  bool lineNumbers = false;
  StyleMode style = StyleMode::Class;
  bool blnPaste = false;
  ProcedureNames names = {};
};

Conversion convert(const Lines& lines, const Setup& setup = {}) {
  const KeywordTable noKeywords;
  Highlighter highlighter(noKeywords);
  SilentObserver observer;
  return Verarbeiten(lineList(lines), setup.names, {setup.lineNumbers, setup.blnPaste},
                     DocumentFrame(test::defaultColors(), setup.style), highlighter, observer);
}

TEST(Conversion, AnEmptySourceGivesAnEmptyBody) {
  const Conversion conversion = convert({});
  EXPECT_TRUE(conversion.List2.empty());
  EXPECT_EQ(conversion.body(), "");
}

TEST(Conversion, HeadsAreAnchorsAndLinksBack) {
  const Lines source = {"Sub A() ", "x ", "End Sub "};
  EXPECT_EQ(convert(source).body(),
            "<a HREF='#Index' name='A' class='Sub'>Sub A() </a><br>"
            "x  <br>\n"
            "<span class='EndSub'>End Sub </span><hr><br>\n");
  EXPECT_EQ(convert(source, {.lineNumbers = true}).body(),
            "<a name='A'  HREF='#Index' class='Marks'>1:</a><span class='Marks'>    </span>"
            "<span class='Sub'>Sub A()</span><br>"
            "<span class='Marks'>2:    </span>x  <br>\n"
            "<span class='Marks'>3:    </span><span class='EndSub'>End Sub </span><hr><br>\n");
}

TEST(Conversion, AContinuedHeadKeepsItsNumber) {
  const Lines source = {"Sub A(b, _ ", "  c, _ ", "  d) ", "x "};
  EXPECT_EQ(convert(source).body(),
            "<a HREF='#Index' name='A' class='Sub'>Sub A(b, _ </a><br>"
            "<a HREF='#Index' class='Sub'>c, _</a><br><br>"
            "<a HREF='#Index' class='Sub'>d)</a><br>\n"
            "x  <br>\n");
  const Conversion numbered = convert(source, {.lineNumbers = true});
  EXPECT_EQ(numbered.List2[1], "     <a class='Sub'>c, _</a>");
  EXPECT_EQ(numbered.List2[2], "     <a class='Sub'>d)</a>");
  EXPECT_EQ(numbered.List2[3], "<span class='Marks'>2:    </span>x  ");
  EXPECT_EQ(test::wrapped(numbered.List2), (std::vector<bool>{true, true, true, false}));
}

TEST(Conversion, AContinuedStatementStaysHighlighted) {
  const Lines source = {"x = _ ", "(y) ", "z "};
  EXPECT_EQ(convert(source).body(),
            "x = _  <br><br>"
            "<span class='Marks'>(</span>y<span class='Marks'>)</span>  <br>\n"
            "z  <br>\n");
  const Conversion numbered = convert(source, {.lineNumbers = true});
  EXPECT_EQ(numbered.List2[1], "     <span class='Marks'>(</span>y<span class='Marks'>)</span>  ");
  EXPECT_EQ(numbered.List2[2], "<span class='Marks'>2:    </span>z  ");
}

TEST(Conversion, ACommentThatEndsInAnUnderscoreCountsAsContinued) {
  const Conversion numbered = convert({"' a _ ", "b "}, {.lineNumbers = true});
  EXPECT_EQ(numbered.List2[1], "     <span class='Rem'>b </span>");
}

TEST(Conversion, TheNumberColumnIsFiveCharactersWide) {
  EXPECT_EQ(numberPrefix(7), "<span class='Marks'>7:    </span>");
  EXPECT_EQ(numberPrefix(32767), "<span class='Marks'>32767:</span>");
}

TEST(Conversion, CallsAreLinkedUnlessTheTextWasPasted) {
  EXPECT_EQ(convert({"Call Foo "}, {.names = {" Foo"}}).List2[0],
            "Call <a HREF='#Foo' class='Marks'>Foo</a>   ");
  EXPECT_EQ(convert({"Call Foo "}, {.blnPaste = true, .names = {" Foo"}}).List2[0], "Call Foo  ");
  EXPECT_EQ(convert({"Sub Foo(_ ", "Foo) "}, {.names = {" Foo"}}).List2[1],
            "<a HREF='#Index' class='Sub'>Foo)</a>")
      << "continued heads are never linked";
}

TEST(Conversion, ModuleHeadersOpenFrames) {
  const Lines source = {"'-------A ", "' Modul:A ", "'-------A ", "x ",
                        "'-------B ", "' Modul:B ", "'-------B "};
  const auto rem = [](const std::string& line) {
    return "<span class='Rem'>" + line + "</span><br>\n";
  };
  EXPECT_EQ(convert(source).body(), "<div style='border: thin solid #000080;'>" + rem(source[0]) +
                                        rem(source[1]) + rem(source[2]) + "x  <br>\n" +
                                        "</div><br><div style='border: thin solid #000080;'>" +
                                        rem(source[4]) + rem(source[5]) + rem(source[6]) +
                                        "</div>");
}

TEST(Conversion, LinesBeyond90CharactersTakeTheWrapper) {
  const Conversion conversion = convert({std::string(88, 'x') + " ", std::string(89, 'x') + " "});
  ASSERT_EQ(conversion.List2[0].size(), 90u);
  EXPECT_EQ(test::wrapped(conversion.List2), (std::vector<bool>{false, true}));
}

TEST(Conversion, InlineModeReplacesClassesBeforeTheLengthIsMeasured) {
  const Conversion conversion = convert({"(x "}, {.style = StyleMode::Inline});
  EXPECT_EQ(conversion.List2[0],
            "<span style=\" color:#FF0000; background: #FFFFFF;\">(</span>x  ");
}

TEST(Conversion, MarksInCommentsCountLikeTheHighlightersOwn) {
  EXPECT_EQ(convert({"' CLASS='endsub' "}).List2[0],
            "<span class='Rem'>' CLASS='endsub' </span><hr>");
  EXPECT_EQ(convert({"' class='sub'> "}).List2[0],
            "<a HREF='#Index' class='Rem'>' class='sub'> </a>");
  EXPECT_EQ(
      convert({"' <span class=\"Code\"> </span>class='Sub'> "}).List2[0],
      "<a HREF='#Index' class='Rem'>' <a HREF='#Index' class=\"Code\"> </a>class='Sub'> </a>");
  EXPECT_EQ(convert({"Sub F() <span class=\"Code\"> </span>"}, {.lineNumbers = true}).List2[0],
            "<a name='F'  HREF='#Index' class='Marks'>1:</a><span class='Marks'>    </span>"
            "<span class='Sub'>Sub F()  </span>");
}

TEST(Conversion, AnAbortKeepsTheLinesAndNoBody) {
  const KeywordTable noKeywords;
  Highlighter highlighter(noKeywords);
  test::RecordingObserver observer(2);
  const Conversion conversion =
      Verarbeiten(lineList({"a ", "Sub b() ", "c "}), {}, {},
                  DocumentFrame(test::defaultColors(), StyleMode::Class), highlighter, observer);
  EXPECT_TRUE(conversion.aborted);
  EXPECT_EQ(strings(conversion.List2),
            (Lines{"a  ", "<a HREF='#Index' name='b' class='Sub'>Sub b() </a>"}));
  EXPECT_EQ(conversion.body(), "");
  EXPECT_EQ(observer.events,
            (Lines{"lese 0 3", "yield", "abort?", "yield", "add direct", "bearbeite 1 3", "yield",
                   "lese 1 3", "yield", "abort?", "yield", "add direct", "yield",  // a head
                   "lese 2 3", "yield", "abort?"}));
}

TEST(Conversion, LongLinesAndTooManyLines) {
  const std::string longLine(100'000, 'x');
  EXPECT_EQ(convert({longLine}).body(), longLine + " <br>\n");
  EXPECT_EQ(convert(Lines(kMaxLines, "x")).List2.size(), kMaxLines);
  EXPECT_THROW(convert(Lines(kMaxLines + 1, "x")), std::length_error);
}

}  // namespace
}  // namespace tintline
