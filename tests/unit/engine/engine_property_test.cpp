// The engine against a literal transcription of its rules (tests/support/literal_*):
// on all short lines over a small alphabet of nasty pieces, and on random modules.
#include <gtest/gtest.h>

#include <random>

#include "base/text.h"
#include "engine/conversion.h"
#include "reformat/indentation.h"
#include "reformat/selection.h"
#include "tests/support/convert.h"
#include "tests/support/literal_driver.h"
#include "tests/support/random_lines.h"

namespace tintline {
namespace {

const literal::KeywordLists kLists = {
    literal::KeywordText({"Dim", "Sub", "If", "Left$", "x", "span", "Rem"}),
    literal::KeywordText({"hwnd", "If", "class", "True"})};

TEST(HighlighterProperty, AgreesWithTheTranscriptionOnAllShortLines) {
  const KeywordTable table(kLists.Keywords1, kLists.Keywords2);
  Highlighter fast(table);
  literal::Highlighter slow(kLists);
  std::size_t lines = 0;
  literal::forEachShortLine(5, [&](const std::string& line) {
    ++lines;
    if (fast.fkt_ZeileKonvertieren(line) != slow.fkt_ZeileKonvertieren(line)) {
      literal::Highlighter again(kLists);
      Highlighter fresh(table);
      ASSERT_EQ(fresh.fkt_ZeileKonvertieren(line), again.fkt_ZeileKonvertieren(line)) << line;
      FAIL() << "state differs at: " << line;
    }
  });
  EXPECT_GT(lines, 100'000u);
}

// The source of a line that holds no markup itself, from its HTML and without its blanks.
std::string sourceWithoutBlanks(std::string html) {
  constexpr std::string_view kHead = "<span name='", kHeadEnd = "' class='Sub'>";
  if (const std::size_t head = html.find(kHead); head != std::string::npos)
    html.erase(head, html.find(kHeadEnd) + kHeadEnd.size() - head);
  for (const std::string style : {"Code", "Parms", "Marks", "Rem", "EndSub"})
    eraseAll(html, "<span class='" + style + "'>");
  eraseAll(html, "</span>");
  eraseAll(html, " ");
  return Replace(Replace(html, "&lt;", "<"), "&gt;", ">");
}

TEST(HighlighterProperty, KeepsAllOfALineButItsBlanks) {
  const KeywordTable table(kLists.Keywords1, kLists.Keywords2);
  Highlighter highlighter(table);
  literal::forEachShortLine(4, [&](const std::string& line) {
    ASSERT_EQ(sourceWithoutBlanks(std::string(highlighter.fkt_ZeileKonvertieren(line))),
              Replace(line, " ", ""));
  });
}

// The name in a head is found without taking out one word after the other, where that is the same.
TEST(HighlighterProperty, AgreesWithTheTranscriptionOnHeadsWhoseWordsJoin) {
  const KeywordTable table(kLists.Keywords1, kLists.Keywords2);
  Highlighter fast(table);
  literal::Highlighter slow(kLists);
  std::size_t heads = 0;
  literal::forEachShortHead(4, [&](const std::string& head) {
    for (const std::string keyword : {"Sub ", "Property "}) {
      const std::string html = slow.fkt_ZeileKonvertieren(keyword + head);
      heads += html.find("class='Sub'") != std::string::npos;
      ASSERT_EQ(fast.fkt_ZeileKonvertieren(keyword + head), html);
    }
  });
  EXPECT_GT(heads, 200'000u);
}

TEST(ConversionProperty, AgreesWithTheTranscriptionOnRandomModules) {
  const KeywordTable table(kLists.Keywords1, kLists.Keywords2);
  for (unsigned seed = 1; seed <= 4000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::vector<std::string> lines = literal::randomModule(random, 12);
    const ProcedureNames names = literal::randomNames(random);
    const auto chance = [&random](unsigned n) { return random() % n == 0; };
    const ConversionOptions options{.lineNumbers = chance(2), .blnPaste = chance(4)};
    const StyleMode style = chance(2) ? StyleMode::Inline : StyleMode::Class;
    const int abortAt = chance(8) ? static_cast<int>(random() % 12) : -1;
    ColorScheme colors = test::defaultColors();
    for (auto& category : colors)
      if (chance(3)) category[kTransparency] = "1";

    Highlighter fast(table);
    test::RecordingObserver observer(abortAt);
    const Conversion conversion = Verarbeiten(test::lineList(lines), names, options,
                                              DocumentFrame(colors, style), fast, observer);
    literal::Highlighter slow(kLists);
    const literal::Result expected = literal::Verarbeiten(
        lines, names, {options.lineNumbers, style == StyleMode::Inline, options.blnPaste},
        test::literalColours(colors), slow, abortAt);

    ASSERT_EQ(test::strings(conversion.List2), expected.List2);
    ASSERT_EQ(conversion.body(), expected.html);
    ASSERT_EQ(test::wrapped(conversion.List2), expected.wrapped);
    ASSERT_EQ(conversion.aborted, expected.aborted);
    ASSERT_EQ(observer.events, expected.events);
  }
}

// Shows the 0-based index, as the selection run does.
class SelectionObserver : public test::RecordingObserver {
 public:
  void processed(std::size_t i, std::size_t n) override {
    events.push_back("bearbeite " + std::to_string(i) + ' ' + std::to_string(n));
  }
};

TEST(SelectionProperty, AgreesWithTheTranscriptionOnRandomModules) {
  const KeywordTable table(kLists.Keywords1, kLists.Keywords2);
  for (unsigned seed = 1; seed <= 2000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::vector<std::string> lines = literal::randomModule(random, 12);
    std::vector<bool> selected(lines.size());
    for (std::size_t i = 0; i < selected.size(); ++i) selected[i] = random() % 4 != 0;
    const bool lineNumbers = random() % 2 == 0;
    const StyleMode style = random() % 2 == 0 ? StyleMode::Inline : StyleMode::Class;

    Highlighter fast(table);
    SelectionObserver observer;
    const SelectionConversion conversion =
        AuswahlKonvertieren(test::lineList(lines), selected, {.lineNumbers = lineNumbers},
                            DocumentFrame(test::defaultColors(), style), fast, observer);
    literal::Highlighter slow(kLists);
    const literal::SelectionResult expected = literal::AuswahlKonvertieren(
        lines, selected, {.lineNumbers = lineNumbers, .inlineStyle = style == StyleMode::Inline},
        test::literalColours(test::defaultColors()), slow);

    ASSERT_EQ(test::strings(conversion.List2), expected.List2);
    ASSERT_EQ(conversion.body(), expected.html);
    ASSERT_EQ(conversion.table, expected.table);
    ASSERT_EQ(test::wrapped(conversion.List2), expected.wrapped);
    ASSERT_EQ(observer.events, expected.events);
  }
}

TEST(IndentationProperty, AgreesWithTheTranscriptionOnRandomLines) {
  const char* const pieces[] = {
      "If",   " Then ",   "Else",        "Elseif",        "End If",   "For",
      "Next", "While",    "Wend",        "With",          "End With", "TYPE",
      "type", "End Type", "Public Type", "PRIVATE TYPE ", "  ",       "x"};
  std::mt19937 random(1);
  for (int run = 0; run < 3000; ++run) {
    std::vector<std::string> lines(random() % 20);
    for (std::string& line : lines)
      for (auto more = random() % 4; more > 0; --more) line += pieces[random() % std::size(pieces)];
    int unit = static_cast<int>(random() % 4), expectedUnit = unit;
    for (const bool widen : {random() % 2 == 0, true, false}) {
      const LineList before = test::lineList(lines);
      const LineList after = widen ? Formatieren(before, unit) : Formatieren2(before, unit);
      (widen ? literal::Formatieren : literal::Formatieren2)(lines, expectedUnit);
      ASSERT_EQ(test::strings(after), lines) << "run " << run;
      ASSERT_EQ(unit, expectedUnit);
    }
  }
}

}  // namespace
}  // namespace tintline
