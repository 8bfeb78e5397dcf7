// Tests of reformat/wrapping.h.
#include "reformat/wrapping.h"

#include <gtest/gtest.h>

#include "tests/support/convert.h"

namespace tintline {
namespace {

using Lines = std::vector<std::string>;
using test::lineList;
using test::strings;

// The lines between the first line feed and the end, each behind a line feed.
Lines linesOf(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n', 1), text.size());
    lines.emplace_back(text.substr(1, end - 1));
    text.remove_prefix(end);
  }
  return lines;
}

std::string joined(const Lines& lines) {
  std::string text;
  for (const std::string& line : lines) text += "\n" + line;
  return text;
}

Lines wrapped(const Lines& lines, int width, int unit) {
  return strings(*wrapLines(lineList(lines), width, unit));
}

Lines withBlanks(Lines lines, const char* blanks) {
  for (std::string& line : lines) line += blanks;
  return lines;
}

struct Case {
  const char* name;
  const char* before;
  const char* after;  // at width 20 with 2 blanks a unit
};

constexpr const char* kUnchanged = nullptr;

const Case kCases[] = {
    // Code
    {"a line as long as the width stays", R"(
12345678 = 9 + 12345)",
     kUnchanged},
    {"code breaks where the mark just fits", R"(
12345678 = 9 + 1 + 23
123456789 = 9 + 1 + 23
abcdefghijklmnopqr = 1
abcdefghijklmnopqrs = 1)",
     R"(
12345678 = 9 + 1 + _
  23
123456789 = 9 + 1 _
  + 23
abcdefghijklmnopqr _
  = 1
abcdefghijklmnopqrs = 1)"},
    {"further lines stand one unit deeper than the first, not each deeper", R"(
  Call Foo(alpha, beta, gamma, delta, eps))",
     R"(
  Call Foo(alpha, _
    beta, gamma, _
    delta, eps))"},
    {"the indentation is taken over with its tabs", "\n\tabcdefgh = ijklmnop + q",
     "\n\tabcdefgh = _\n\t  ijklmnop + q"},
    {"no break in a string, whatever it holds", R"(
x = "a ""b"" 'c _ d" & e & "f g")",
     R"(
x = _
  "a ""b"" 'c _ d" _
  & e & "f g")"},
    {"no break in a date", R"(
d = x + #1/2/2000 10:30 PM#
d = Foo(#Jan 3, 2000#, 1))",
     R"(
d = x + _
  #1/2/2000 10:30 PM#
d = _
  Foo(#Jan 3, 2000#, 1))"},
    {"numbers of files are no dates", R"(
Print #1, #2 + #3, abc, d)",
     R"(
Print #1, #2 + #3, _
  abc, d)"},
    {"no break in a name in brackets, which may hold any sign", R"(
x = ['Blatt 1'!A1 "b c] + y)",
     R"(
x = _
  ['Blatt 1'!A1 "b c] + y)"},
    {"a bracket that stays open is a sign like any", R"(
x = [a + b + c + d + e)",
     R"(
x = [a + b + c + d _
  + e)"},
    {"no break in front of a member of With where it would get another owner", R"(
Debug.Print .Vorname
Zeige 1, 2, 3, 4 + .Wert
Debug.Print12345 !Feld)",
     R"(
Debug.Print .Vorname
Zeige 1, 2, 3, 4 + _
  .Wert
Debug.Print12345 !Feld)"},
    {"many blanks are one gap and go with the break", R"(
abcdefgh =         ijklmnop + q)",
     R"(
abcdefgh = _
  ijklmnop + q)"},
    {"a tab alone is no place for a break, one beside a blank goes with it",
     "\nabcdefgh\t=\tijklmnop\t+ q\nabcdefgh = \t ijklmnop + q",
     "\nabcdefgh\t=\tijklmnop\t+ q\nabcdefgh = _\n  ijklmnop + q"},
    {"no break behind a label or a line number", R"(
Sprungmarke1: abcdefgh = 1
Marke : abcdefghij = 1
1000 abcdefghijklmnop = 1
1000: abcdefghijklmnop = 1
10 Marke: abcdefg = 1
Sprungmarke12345: a
Foo abcdefghij:=1, b:=2)",
     R"(
Sprungmarke1: abcdefgh = 1
Marke : abcdefghij _
  = 1
1000 abcdefghijklmnop = 1
1000: abcdefghijklmnop = 1
10 Marke: abcdefg _
  = 1
Sprungmarke12345: a
Foo abcdefghij:=1, _
  b:=2)"},
    {"a Declare breaks like code", R"(
Declare Sub S Lib "kernel32" (ByVal a As Long))",
     R"(
Declare Sub S Lib _
  "kernel32" _
  (ByVal a As Long))"},
    // Statements that go on already
    {"a line that goes on is broken in front of its mark", R"(
    Call F(alpha, beta, _
           gamma, delta)",
     R"(
    Call F(alpha, _
      beta, _
           gamma, _
      delta)"},
    {"the mark alone never comes to stand on a line", R"(
abcdefghijklmnopqrs _
  + 1)",
     kUnchanged},
    {"a name that ends in an underscore continues nothing", R"(
abcdefghij = 1234567_
Marke: b = 2 + 3 + 45)",
     R"(
abcdefghij = _
  1234567_
Marke: b = 2 + 3 + _
  45)"},
    // Comments behind code
    {"a comment that does not fit moves in front", R"(
  x = 1     ' ein Wort zu viel
  y = 2 ' passt eben)",
     R"(
  ' ein Wort zu viel
  x = 1
  y = 2 ' passt eben)"},
    {"it moves in front of the first line and is broken itself", R"(
  x = 1 + _
        2 ' ein Kommentar mit Worten)",
     R"(
  ' ein Kommentar
  ' mit Worten
  x = 1 + _
        2)"},
    {"the code is broken when it still does not fit", R"(
If abcdef = ghijklm Then ' c)",
     R"(
' c
If abcdef = _
  ghijklm Then)"},
    {"it stays where the statement breaks in an other line", R"(
abcdefghij = klmnop + _
  1 ' c)",
     R"(
abcdefghij = _
  klmnop + _
  1 ' c)"},
    {"an apostrophe in a string is no comment", R"(
x = "it's" + "that's"
x = "a" 'b "c" d e f g h)",
     R"(
x = "it's" + _
  "that's"
'b "c" d e f g h
x = "a")"},
    {"Rem behind a colon is a comment", R"(
x = 1: Rem ein langes Wort
abc: REM ein langes Wort
100 Rem ein langes Wort)",
     R"(
Rem ein langes Wort
x = 1:
REM ein langes Wort
abc:
Rem ein langes Wort
100)"},
    {"Rem behind Then and Else stays", R"(
If abcde Then Rem ein Wort
If abcde Then: Rem ein Wort
If a Then b Else Rem c d e)",
     R"(
If abcde _
  Then Rem ein Wort
If abcde _
  Then: Rem ein Wort
If a Then b _
  Else Rem c d e)"},
    {"Rem as a part of a name or a member is none", R"(
x.Rem abc, Remark, Prem, d)",
     R"(
x.Rem abc, Remark, _
  Prem, d)"},
    {"a comment that goes on stays, the code in front of it is broken", R"(
abc = def + g ' ein Kommentar _
  und mehr von ihm, das auch bleibt)",
     R"(
abc = def + _
  g ' ein Kommentar _
  und mehr von ihm, das auch bleibt)"},
    {"a comment stays when it or its code would seem to go on", R"(
x ' ein langes Wort da_
x_ ' ein langes Wort da)",
     kUnchanged},
    {"a comment that stands alone behind a mark stays", R"(
x = 1 _
  ' ein langer Kommentar)",
     kUnchanged},
    // Comment lines
    {"a comment line goes on with indentation, opener and its blanks", R"(
  '   ein langer Kommentar
'ein langer Kommentar da
''' ein langer Kommentar
  Rem ein langer Kommentar
rem(ein langer Kommentar)",
     R"(
  '   ein langer
  '   Kommentar
'ein langer
'Kommentar da
''' ein langer
''' Kommentar
  Rem ein langer
  Rem Kommentar
rem(ein langer
rem Kommentar)"},
    {"many blanks behind the opener are not repeated", R"(
'            Titel des Moduls)",
     R"(
'            Titel
' des Moduls)"},
    {"a comment without a place for a break stays", R"(
'----------------------------
' http://beispiel/ein/langer/Name
                    ' Kommentar mit Worten)",
     kUnchanged},
    {"behind a word that is too long the comment goes on", R"(
' http://beispiel/ein/langer/Name und mehr)",
     R"(
' http://beispiel/ein/langer/Name
' und mehr)"},
    {"no part of a comment ends in an underscore", R"(
' ein Wort foo_ _ abc d)",
     R"(
' ein Wort
' foo_ _ abc d)"},
    {"a comment line that goes on: its next line is comment too", R"(
' ein langer Kommentar _
  x = 1 + 2 + 3 + 4 + 5 _
  y
z = 1)",
     R"(
' ein langer
' Kommentar _
  x = 1 + 2 + 3 + 4
' + 5 _
  y
z = 1)"},
    // No code
    {"lines of conditional compilation stay", R"(
  #If VBA7 And Win64 Then ' c
#Const Schalter = 1 + 2 + _
  3 + 4 + 5 + 6 + 7 + 8 + 9
  #End If ' ein Kommentar)",
     kUnchanged},
    {"Attribute lines stay, a call of that name does not", R"(
Attribute VB_Name = "Modul eins"
  attribute Foo.VB_Description = "a b"
Attribute VB_Foo.Bar = "a b c"
Attribute Foo.Bar, 1, 2)",
     R"(
Attribute VB_Name = "Modul eins"
  attribute Foo.VB_Description = "a b"
Attribute VB_Foo.Bar = "a b c"
Attribute Foo.Bar, _
  1, 2)"},
    {"the header of a form stays, its code does not", R"(
VERSION 5.00
Object = "{831FDD16}#2.0#0"; "COM.OCX"
Begin VB.Form frmKunde der Kunden
   Caption = "Kunde" 'Kommentar
   BeginProperty Font {0BE35203-8F91}
      Name = "ein langer Name"
   EndProperty
   Begin VB.Label lblKunde ein Kunde
   End
   Tag = "Kunde"  'noch in der Form
End
Begin abcdefgh, ijkl, m)",
     R"(
VERSION 5.00
Object = "{831FDD16}#2.0#0"; "COM.OCX"
Begin VB.Form frmKunde der Kunden
   Caption = "Kunde" 'Kommentar
   BeginProperty Font {0BE35203-8F91}
      Name = "ein langer Name"
   EndProperty
   Begin VB.Label lblKunde ein Kunde
   End
   Tag = "Kunde"  'noch in der Form
End
Begin abcdefgh, _
  ijkl, m)"},
    {"a header that does not end ends at the attributes", R"(
VERSION 1.0 CLASS
BEGIN
  MultiUse = -1  'True oder so
Attribute VB_Name = "Kunde eins"
x = 1 ' ein langes Wort)",
     R"(
VERSION 1.0 CLASS
BEGIN
  MultiUse = -1  'True oder so
Attribute VB_Name = "Kunde eins"
' ein langes Wort
x = 1)"},
    {"a call of Version begins no header", R"(
Version 5
x = 1 ' ein langes Wort)",
     R"(
Version 5
' ein langes Wort
x = 1)"},
};

TEST(Wrapping, lineByLine) {
  for (const Case& row : kCases) {
    const Lines before = linesOf(row.before);
    const std::string after = row.after == kUnchanged ? row.before : row.after;
    EXPECT_EQ(joined(wrapped(before, 20, 2)), after) << row.name;
    EXPECT_EQ(joined(wrapped(withBlanks(before, " "), 20, 2)),
              joined(withBlanks(linesOf(after), " ")))
        << row.name << " (as read from a file)";
  }
}

TEST(Wrapping, blanksBehindALineDoNotCount) {
  const Lines fits = {"12345678 = 9 + 12345    ", "12345678 = 9 + 12345"};
  EXPECT_EQ(wrapped(fits, 20, 4), fits);
  EXPECT_FALSE(hasLongerLine(lineList(fits), 20));
  EXPECT_EQ(wrapped({"x = 123 + 123 + 12345   ", "' abc def ghi klm nop"}, 20, 4),
            (Lines{"x = 123 + 123 + _ ", "    12345   ", "' abc def ghi klm", "' nop"}));
}

TEST(Wrapping, unitIsFourWhenTheFormHasNone) {
  const Lines before = {"  x = 123 + 123 + 12345"};
  EXPECT_EQ(wrapped(before, 20, 0), (Lines{"  x = 123 + 123 + _", "      12345"}));
  EXPECT_EQ(wrapped(before, 20, 1), (Lines{"  x = 123 + 123 + _", "   12345"}));
}

// A sum that needs many lines.
std::string sum(int numbers) {
  std::string text = "x = 11111";
  for (int i = 1; i < numbers; ++i) text += " + 11111";
  return text;
}

TEST(Wrapping, statementHasAtMost24Continuations) {
  const Lines lines = wrapped({sum(100), "y = 1 ' ein langes Wort"}, 20, 4);
  ASSERT_EQ(lines.size(), 27u);
  EXPECT_TRUE(lines[23].ends_with(" _"));
  EXPECT_FALSE(lines[24].ends_with(" _"));
  EXPECT_GT(lines[24].size(), 100u);
  EXPECT_EQ(lines[25], "' ein langes Wort");

  Lines continued(22, "a, _");  // with those that the statement has
  continued.push_back(sum(100));
  EXPECT_EQ(wrapped(continued, 20, 4).size(), 25u);
  Lines full(24, "a, _");
  full.push_back("bcdefgh, ijklmnop, qrst ' c d");
  const Lines moved = wrapped(full, 20, 4);
  EXPECT_EQ(moved.front(), "' c d");
  EXPECT_EQ(moved.back(), "bcdefgh, ijklmnop, qrst");
  EXPECT_EQ(moved.size(), 26u);
}

TEST(Wrapping, listHasAtMost32767Lines) {
  Lines lines(kMaxLines, "x");
  EXPECT_EQ(wrapLines(lineList(lines), 20, 4)->size(), kMaxLines);
  lines.back() = "' abc def ghi klm nop";
  EXPECT_FALSE(wrapLines(lineList(lines), 20, 4));
  lines.erase(lines.begin());
  EXPECT_EQ(wrapLines(lineList(lines), 20, 4)->size(), kMaxLines);
  std::string comment = "' a";
  for (std::size_t i = 0; i <= kMaxLines; ++i) comment += " abcdefghij";
  EXPECT_FALSE(wrapLines(lineList({comment}), 20, 4));
}

TEST(Wrapping, widthZeroIsOff) {
  const Lines lines = {sum(100), "' " + std::string(30, 'x') + " y"};
  EXPECT_EQ(wrapped(lines, 0, 4), lines);
  EXPECT_FALSE(hasLongerLine(lineList(lines), 0));
  EXPECT_TRUE(hasLongerLine(lineList(lines), 20));
  EXPECT_TRUE(hasLongerLine(lineList({"", "12345678901234567890x"}), 20));
  EXPECT_FALSE(hasLongerLine(LineList(), 20));
  EXPECT_EQ(wrapped({}, 20, 4), Lines());
}

TEST(Wrapping, widthIsReadFromWhatAUserWrites) {
  for (const auto& [text, width] : std::initializer_list<std::pair<const wchar_t*, int>>{
           {L"20", 20}, {L"1000", 1000}, {L"0", 0}, {L"  80 ", 80}, {L"0072", 72}})
    EXPECT_EQ(parseLineWidth(text), width) << width;
  for (const wchar_t* text :
       {L"", L" ", L"1", L"19", L"1001", L"-20", L"+20", L"20.0", L"2 0", L"80x", L"0x20", L"\t80",
        L"99999999999999999999", L"4294967376", L"\x0668\x0660"})
    EXPECT_EQ(parseLineWidth(text), std::nullopt) << text;
}

}  // namespace
}  // namespace tintline
