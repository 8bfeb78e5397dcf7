// Tests of reformat/selection.h.
#include "reformat/selection.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/convert.h"

namespace tintline {
namespace {

using Lines = std::vector<std::string>;

SelectionConversion convert(const Lines& lines, const std::vector<bool>& selected,
                            bool lineNumbers = false, StyleMode style = StyleMode::Class) {
  const KeywordTable noKeywords;
  Highlighter highlighter(noKeywords);
  SilentObserver observer;
  return AuswahlKonvertieren(test::lineList(lines), selected, {.lineNumbers = lineNumbers},
                             DocumentFrame(test::defaultColors(), style), highlighter, observer);
}

TEST(Selection, NothingSelectedGivesNothing) {
  const SelectionConversion conversion = convert({"a ", "b "}, {false, false});
  EXPECT_TRUE(conversion.List2.empty());
  EXPECT_EQ(conversion.body(), "");
  EXPECT_EQ(conversion.table, "");
}

TEST(Selection, HasTwoTextsOfTheSelectedLines) {
  const SelectionConversion conversion =
      convert({"Sub A() ", "x ", "End Sub "}, {true, false, true});
  const std::string head = "<span name='A' class='Sub'>Sub A() </span>";
  const std::string end = "<span class='EndSub'>End Sub </span>";
  EXPECT_EQ(test::strings(conversion.List2), (Lines{head, end})) << "no link, no rule";
  EXPECT_EQ(conversion.body(), head + "<br>" + end + "<br>");
  EXPECT_EQ(conversion.table,
            "<tr><td>" + head + "<br></td></tr><tr><td>" + end + "<br></td></tr>");
}

TEST(Selection, NumbersCountTheSelectedStatements) {
  const SelectionConversion conversion =
      convert({"a ", "b _ ", "c ", "d ", "e "}, {false, true, true, false, true}, true);
  EXPECT_EQ(test::strings(conversion.List2),
            (Lines{"<span class='Marks'>1:    </span>b _  ", "     c  ",
                   "<span class='Marks'>2:    </span>e  "}));
}

TEST(Selection, LengthIsMeasuredOnTheStyledLine) {
  const Lines lines = {std::string(60, 'x') + "( "};
  EXPECT_EQ(convert(lines, {true}).List2.route(0), Route::Direct);
  const SelectionConversion styled = convert(lines, {true}, false, StyleMode::Inline);
  EXPECT_EQ(styled.List2.route(0), Route::Wrapper);
  EXPECT_EQ(styled.table,
            "<tr><td>" + std::string(60, 'x') +
                "<span style=\" color:#FF0000; background: #FFFFFF;\">(</span> <br></td></tr>");
}

TEST(Selection, RefusesMoreLinesThanItCanCount) {
  EXPECT_THROW(convert(Lines(kMaxLines + 1, "x"), std::vector<bool>(kMaxLines + 1)),
               std::length_error);
}

}  // namespace
}  // namespace tintline
