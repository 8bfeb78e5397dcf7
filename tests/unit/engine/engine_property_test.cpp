// The engine against a literal transcription of its rules
// (tests/support/literal_*): on all short lines over a small alphabet of nasty pieces, and on
// random modules.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/codepage.h"
#include "engine/conversion.h"
#include "reformat/selection.h"
#include "tests/support/convert.h"
#include "tests/support/literal_engine.h"
#include "tests/support/random_text.h"

namespace tintline {
namespace {

const literal::KeywordLists kLists = {
    literal::KeywordText({"Dim", "Sub", "If", "Left$", "x", "span", "Rem"}),
    literal::KeywordText({"hwnd", "If", "class", "True"})};

// What the name in a head is, and that line states do not leak, shows on joined words, too: where
// one word is taken out, what stood around it may make another.
TEST(HighlighterProperty, AgreesWithTheTranscriptionOnShortAndRandomLines) {
  const KeywordTable table(kLists.Keywords1, kLists.Keywords2);
  Highlighter fast(table);
  literal::Highlighter slow(kLists);
  std::size_t lines = 0;
  const auto agree = [&](const std::string& line) {
    ++lines;
    ASSERT_EQ(fast.fkt_ZeileKonvertieren(line), slow.fkt_ZeileKonvertieren(line)) << line;
  };
  test::forEachShortText(4, "short", agree);
  // Lines are read sixteen and sixty-four characters at a time.
  test::forEachShortText(2, "short", [&](const std::string& text) {
    for (const std::size_t size : {13, 15, 31, 61, 62, 63, 64, 126, 127})
      for (const char filler : {' ', 'x'}) agree(std::string(size, filler) + text + " Dim");
  });
  test::forEachShortText(3, "headPart", [&](const std::string& head) {
    agree("Sub " + head + "()");
    agree("Property " + head + "()");
  });
  std::mt19937 random(1);
  for (const std::string& line : test::randomLines(random, "pieces", 40'000)) agree(line);
  EXPECT_GT(lines, 40'000u);
}

// A module and a way to convert it.
struct Case {
  explicit Case(unsigned seed) : random(seed), lines(test::randomLines(random, "line", 12)) {
    for (auto more = random() % 7; more > 0; --more)
      names.push_back(" " + toAnsi(fromUtf8(test::randomText(random, "procedure", 1))));
    for (const std::string& line [[maybe_unused]] : lines) selected.push_back(random() % 4 != 0);
    const char* const flags[] = {"0", "1", "-1", " 2 ", "+.5", "0.0", "-0", "1x", "1.2.3", "", "."};
    for (auto& category : colors) category[kTransparency] = flags[random() % std::size(flags)];
  }
  bool chance(unsigned n) { return random() % n == 0; }
  DocumentFrame frame() const { return {colors, style}; }
  literal::Options literalOptions() const {
    return {options.lineNumbers, style == StyleMode::Inline, options.blnPaste};
  }
  literal::Colours literalColours() const {
    literal::Colours result;
    for (std::size_t category = 0; category < kColorCategories; ++category)
      std::ranges::copy(colors[category], result.fields[category]);
    return result;
  }

  std::mt19937 random;
  std::vector<std::string> lines;
  std::vector<bool> selected;
  ProcedureNames names;
  ColorScheme colors = test::defaultColors();
  ConversionOptions options{.lineNumbers = chance(2), .blnPaste = chance(4)};
  StyleMode style = chance(2) ? StyleMode::Inline : StyleMode::Class;
  int abortAt = chance(8) ? static_cast<int>(random() % 12) : -1;
};

// Esc is pressed at a line, from 0.
struct Escape final : SilentObserver {
  explicit Escape(int line) : linesLeft(line) {}
  bool abortRequested() override { return linesLeft-- == 0; }
  int linesLeft;
};

void expectSame(const HtmlLines& List2, const literal::Result& expected) {
  ASSERT_EQ(test::strings(List2), expected.List2);
  for (std::size_t i = 0; i < List2.size(); ++i)
    ASSERT_EQ(List2.route(i) == Route::Wrapper, expected.wrapped[i]);
}

TEST(ConversionProperty, AgreesWithTheTranscriptionOnRandomModules) {
  const KeywordTable table(kLists.Keywords1, kLists.Keywords2);
  for (unsigned seed = 1; seed <= 2000 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const Case c(seed);
    Highlighter fast(table);
    literal::Highlighter slow(kLists);
    Escape observer(c.abortAt);
    const Conversion run =
        Verarbeiten(test::lineList(c.lines), c.names, c.options, c.frame(), fast, observer);
    const literal::Result expected = literal::Verarbeiten(c.lines, c.names, c.literalOptions(),
                                                          c.literalColours(), slow, c.abortAt);
    expectSame(run.List2, expected);
    ASSERT_EQ(run.body(), expected.html);
    ASSERT_EQ(run.aborted, expected.aborted);

    const SelectionConversion chosen = AuswahlKonvertieren(test::lineList(c.lines), c.selected,
                                                           c.options, c.frame(), fast, observer);
    const literal::Result expectedChoice = literal::AuswahlKonvertieren(
        c.lines, c.selected, c.literalOptions(), c.literalColours(), slow);
    expectSame(chosen.List2, expectedChoice);
    ASSERT_EQ(chosen.body(), expectedChoice.html);
    ASSERT_EQ(chosen.table, expectedChoice.table);
  }
}

}  // namespace
}  // namespace tintline
