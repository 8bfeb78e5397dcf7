// Tests of reformat/indentation.h.
#include "reformat/indentation.h"

#include <gtest/gtest.h>

#include "tests/support/convert.h"

namespace tintline {
namespace {

using Lines = std::vector<std::string>;
using test::lineList;
using test::strings;

// The lines joined for readable failures, each behind a line feed.
std::string joined(const LineList& lines) {
  std::string result;
  for (const std::string& line : strings(lines)) result.append("\n").append(line);
  return result;
}

LineList splitLines(std::string_view text) {
  LineList lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n', 1), text.size());
    lines.append(text.substr(1, end - 1));
    text.remove_prefix(end);
  }
  return lines;
}

struct Case {
  const char* name;
  const char* before;
  const char* after;  // with two blanks a level
};

const Case kCases[] = {
    {"If and End If", R"(
If a Then
b
End If
c)",
     R"(
If a Then
  b
End If
c)"},
    {"Else and Elseif stand one level left", R"(
If a Then
b
Elseif c Then
d
ElseIf e Then
f
Else
g
End If)",
     R"(
If a Then
  b
Elseif c Then
  d
ElseIf e Then
  f
Else
  g
End If)"},
    {"nested blocks", R"(
For i = 1 To 2
With x
While y
z
Wend
End With
Next i)",
     R"(
For i = 1 To 2
  With x
    While y
      z
    Wend
  End With
Next i)"},
    {"a one-line If stands one level left of its neighbours", R"(
With x
a
If b Then c
d
End With)",
     R"(
With x
  a
If b Then c
  d
End With)"},
    {"a one-line If at level 0 opens a level", R"(
If b Then c
d)",
     R"(
If b Then c
  d)"},
    {"blanks behind Then do not count, comments do", R"(
With x
If a Then  
If a Then ' b
End With)",
     R"(
With x
  If a Then  
  If a Then ' b
  End With)"},
    {"a record type", R"(
a
Public Type T
b
End Type
TYPE T
b
END TYPE
c)",
     R"(
a
Public Type T
  b
End Type
TYPE T
  b
END TYPE
c)"},
    {"a record type within a block takes a level away", R"(
With x
With y
Type T
b
End Type
c)",
     R"(
With x
  With y
  Type T
    b
  End Type
  c)"},
    {"a private record type is no block", R"(
Private Type T
b
End Type
c)",
     R"(
Private Type T
b
End Type
c)"},
    {"only the first letters of a word count", R"(
ForeColor = 1
Without
NextItem
Typed
x)",
     R"(
ForeColor = 1
  Without
  NextItem
Typed
  x)"},
    {"the case counts", R"(
if a Then
FOR i
b)",
     R"(
if a Then
FOR i
b)"},
    {"other blocks are none", R"(
Sub x()
Do
Select Case a
End Select
Loop
End Sub)",
     R"(
Sub x()
Do
Select Case a
End Select
Loop
End Sub)"},
    {"the level never falls below 0", R"(
End If
Next
Else
If a Then
b)",
     R"(
End If
Next
Else
  If a Then
    b)"},
    {"old leading blanks go, tabs and trailing blanks stay", "\n   With a \n b \n\tc\n",
     "\nWith a \n  b \n  \tc\n  "},
};

TEST(Indentation, followsTheBlocks) {
  for (const Case& row : kCases) {
    const LineList before = splitLines(row.before);
    int unit = 1;
    EXPECT_EQ(joined(Formatieren(before, unit)), row.after) << row.name;
    EXPECT_EQ(unit, 2) << row.name;
    unit = 3;
    EXPECT_EQ(joined(Formatieren2(before, unit)), row.after) << row.name;
    EXPECT_EQ(unit, 2) << row.name;
  }
}

TEST(Indentation, unitIsNeverNegative) {
  int unit = 1;
  const LineList lines = lineList({"With a", "  b"});
  for (int press = 0; press < 2; ++press) {
    EXPECT_EQ(strings(Formatieren2(lines, unit)), (Lines{"With a", "b"}));
    EXPECT_EQ(unit, 0);
  }
}

TEST(Indentation, anEmptyListChangesNothing) {
  int unit = 3;
  EXPECT_TRUE(Formatieren({}, unit).empty());
  EXPECT_TRUE(Formatieren2({}, unit).empty());
  EXPECT_EQ(unit, 3);
}

TEST(Indentation, countsAsManyLevelsAsLines) {
  LineList lines;
  for (std::size_t i = 0; i < kMaxLines; ++i) lines.append("With");
  int unit = 1;
  const LineList flush = Formatieren2(lines, unit);
  EXPECT_EQ(flush[kMaxLines - 1], "With");
  lines.append("With");
  EXPECT_THROW(Formatieren(lines, unit), std::length_error);
}

TEST(Indentation, aNegativeLevelBecomesZero) {
  std::int16_t level = -1;
  EXPECT_EQ(fktEinrücken(2, level, "a"), "a");
  EXPECT_EQ(level, 0);
  level = 3;
  EXPECT_EQ(fktEinrücken(2, level, "a "), "      a ");
  EXPECT_EQ(level, 3);
}

}  // namespace
}  // namespace tintline
