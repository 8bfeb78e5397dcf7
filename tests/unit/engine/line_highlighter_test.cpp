// Tests engine/line_highlighter.h.
#include "engine/line_highlighter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace tintline {
namespace {

using namespace std::string_literals;

struct Case {
  std::string_view name;
  std::string_view line;
  std::string_view html;
};

// Expectations are readable: {C:…} is a Code span, {P:…} Parms, {R:…} Rem,
// {E:…} EndSub, {S name:…} a head; {"} {(} {)} are Marks spans.
std::string expand(std::string_view text) {
  struct Rule {
    std::string_view shortForm, html;
  };
  constexpr Rule kRules[] = {{"{C:", "<span class='Code'>"},    {"{P:", "<span class='Parms'>"},
                             {"{R:", "<span class='Rem'>"},     {"{E:", "<span class='EndSub'>"},
                             {"{\"", "<span class='Marks'>\""}, {"{(", "<span class='Marks'>("},
                             {"{)", "<span class='Marks'>)"}};
  std::string html;
  while (!text.empty()) {
    const auto rule = std::find_if(std::begin(kRules), std::end(kRules),
                                   [text](const Rule& r) { return text.starts_with(r.shortForm); });
    if (rule != std::end(kRules)) {
      html += rule->html;
      text.remove_prefix(rule->shortForm.size());
    } else if (text.starts_with("{S ")) {
      const std::size_t colon = text.find(':');
      html += "<span name='" + std::string(text.substr(3, colon - 3)) + "' class='Sub'>";
      text.remove_prefix(colon + 1);
    } else {
      html += text.front() == '}' ? "</span>" : std::string(1, text.front());
      text.remove_prefix(1);
    }
  }
  return html;
}

KeywordTable keywords() {
  return KeywordTable("\0Dim\0As\0Long\0If\0Then\0Not\0Call\0Exit\0Stop\0Left$\0Now\0"s,
                      "\0True\0hwnd\0Bar\0"s);
}

void expectCases(std::initializer_list<Case> cases) {
  const KeywordTable table = keywords();
  for (const auto& [name, line, html] : cases) {
    Highlighter highlighter(table);
    EXPECT_EQ(highlighter.fkt_ZeileKonvertieren(line), expand(html)) << name;
  }
}

TEST(Highlighter, WordsAndBlanks) {
  expectCases({
      {"an empty line has no words", "", ""},
      {"a blank line has two empty words", " ", "  "},
      {"the line ends with one more blank", "x", "x "},
      {"blanks are kept one for one", "  Dim  x", "  {C:Dim}  x "},
      {"the second list gives Parms", "hwnd True", "{P:hwnd} {P:True} "},
      {"lower case is another word", "dim As", "dim {C:As} "},
      {"$ belongs to a word", "Left$", "{C:Left$} "},
      {"a tab is an ordinary character", "\tDim Dim", "\tDim {C:Dim} "},
  });
}

TEST(Highlighter, PiecesOfWords) {
  expectCases({
      {"call with two arguments", "f(x, y)", "f{(}x, y{)} "},
      {"nested parentheses", "f((a),b)", "f{(}{(}a{)},b{)} "},
      {"keywords between separators", "(Dim,As)", "{(}{C:Dim},As{)} "},
      {"a comma in front is not split off", ",a,b", ",a,b "},
      {"empty parentheses stay together", "Now()", "Now{(}{)} "},
      {"the blank behind a closing ( is lost", "Foo( x )", "Foo{(}x {)} "},
      {"named argument", "Call Foo(Bar:=1)", "{C:Call} Foo{(}{P:Bar}{P::=}1{)} "},
      {"two named-argument marks in one piece", ":=a:=b", "{P::=}a{P::=}b "},
      {"a mark alone", ":=", "{P::=} "},
      {"first < and > of a piece are escaped", "a<>b", "a&lt;&gt;b "},
      {"only the first of each", "a<b<c >>", "a&lt;b<c &gt;> "},
      {"quotes are marked one by one", "\"a\"\"\"", "{\"}a{\"}{\"}{\"} "},
      {"words in a string are looked up", "MsgBox \"Stop if Not done\"",
       "MsgBox {\"}Stop if {C:Not} done{\"} "},
  });
}

TEST(Highlighter, Comments) {
  expectCases({
      {"indentation stands inside the span", "    ' note", "{R:    ' note}"},
      {"Rem in any case", "rEm x", "{R:rEm x}"},
      {"Remove begins with Rem: kept on purpose", "Remove x", "{R:Remove x}"},
      {"trailing comment", "Dim x ' <b> Dim", "{C:Dim} x  {R:' <b> Dim}"},
      {"an apostrophe in a string is none", "x = \"It's\"", "x = {\"}It's{\"} "},
      {"the last apostrophe is judged", "x = \"It's\" ' c", "x = {\"}It's{\"}  {R:' c}"},
      {"an earlier apostrophe is not", "x ' c \"It's", "x ' c {\"}It's "},
      {"trailing Rem takes its blank along", "x rem y", "x {R: rem y}"},
      {"Rem inside a longer word", "x Remove y", "x {R: Remove y}"},
      {"any Rem outside a string counts", "x \"a REM b\" rem c", "x {\"}a REM b{\"} {R: rem c}"},
      {"Rem in a string is none", "\"a Rem b\"", "{\"}a Rem b{\"} "},
      {"the split is at the last Rem", "x Rem \"a Rem b\"", "x Rem {\"}a {R: Rem b\"}"},
  });
}

TEST(Highlighter, ProcedureHeadsAndEnds) {
  expectCases({
      {"head", "Private Sub SubMain()", "{S Main:Private Sub SubMain()}"},
      {"property", "Public Property Get Name()", "{S GetName:Public Property Get Name()}"},
      {"other words stay in the name", "Friend Function F()", "{S FriendF:Friend Function F()}"},
      {"private in lower case stays", "private Sub A()", "{S privateA:private Sub A()}"},
      {"Declare", "Private Declare Function GetTickCount Lib \"kernel32\" () As Long",
       "{S GetTickCount:Private Declare Function GetTickCount Lib \"kernel32\" () As Long}"},
      {"Exit Sub is a head: kept on purpose", "Exit Sub", "{S Exit:Exit Sub}"},
      {"words before the keyword are dropped", "Dim x As Sub <y>",
       "{S DimxAs<y>:Dim x As Sub <y>}"},
      {"comment behind a head", "Sub A() ' <c>", "{S A:Sub A() }{R:' <c>}"},
      {"end", "  End Sub", "{E:  End Sub}"},
      {"end with a comment", "End Property ' x", "{E:End Property }{R:' x}"},
      {"End Function as a prefix", "End FunctionX", "{E:End FunctionX}"},
      {"lower case is code", "end sub", "end sub "},
      {"a keyword needs its own word", "Sub(x)", "Sub{(}x{)} "},
      {"code 3 separates the keyword list", "Sub\3Function x", "{S x:Sub\3Function x}"},
  });
}

TEST(Highlighter, CommentsThatEndInAnUnderscoreGoOn) {
  const KeywordTable table = keywords();
  Highlighter highlighter(table);
  const std::pair<std::string_view, std::string_view> lines[] = {
      {"' one _ ", "{R:' one _ }"},
      {"Dim Sub _", "{R:Dim Sub _}"},
      {"End Sub", "{R:End Sub}"},
      {"Dim x ' two _", "{C:Dim} x  {R:' two _}"},
      {"x", "{R:x}"},
      {"Dim y _", "{C:Dim} y _ "},
      {"Dim z", "{C:Dim} z "},
  };
  for (const auto& [line, html] : lines)
    EXPECT_EQ(highlighter.fkt_ZeileKonvertieren(line), expand(html));
}

TEST(Highlighter, VeryLongLinesKeepEveryCharacter) {
  const KeywordTable table = keywords();
  Highlighter highlighter(table);
  const std::string quotes(100'000, '"');
  EXPECT_EQ(highlighter.fkt_ZeileKonvertieren(quotes).size(), 28 * quotes.size() + 1);
  std::string words;
  for (int i = 0; i < 50'000; ++i) words += "If ";
  const std::size_t oneWord = std::string_view("<span class='Code'>If</span> ").size();
  EXPECT_EQ(highlighter.fkt_ZeileKonvertieren(words).size(), 50'000 * oneWord + 1);
}

}  // namespace
}  // namespace tintline
