// Tests of win32/controls/layout.h, status_line.h and fonts.h.
#include "win32/controls/layout.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "base/codepage.h"
#include "win32/controls/fonts.h"
#include "win32/controls/opening_place.h"
#include "win32/controls/status_line.h"
#include "win32/system/text_measure.h"

namespace tintline {
namespace {

LayoutMetrics metricsAt(unsigned dpi) {
  const auto px = [dpi](int size) { return MulDiv(size, static_cast<int>(dpi), 96); };
  return {.dpi = dpi,
          .toolBar = px(32),
          .status = px(24),
          .button = px(26),
          .caption = px(18),
          .option = px(24),
          .optionsWidth = px(430)};
}

bool holds(const RECT& outer, const RECT& inner) {
  RECT both{};
  UnionRect(&both, &outer, &inner);
  return EqualRect(&both, &outer) && inner.right - inner.left > 50 && inner.bottom - inner.top > 15;
}

TEST(layout, everyPartShowsInItsFrameAndNoneCoversAnother) {
  const struct {
    SIZE client;
    unsigned dpi;
    bool preview;
    Division division;
  } rows[] = {
      {{1160, 740}, 96, false, {}},       // as the program opens
      {{720, 440}, 96, true, {}},         // at its smallest
      {{1080, 660}, 144, true, {}},       // the same at 150 %
      {{3800, 2000}, 192, true, {}},      // a large screen at 200 %
      {{900, 600}, 96, true, {0, 1, 0}},  // splitters pushed to the left and up
      {{900, 600}, 96, true, {1, 0, 1}},  // and to the right and down
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    const MainLayout layout = layOut(row.client, row.division, metricsAt(row.dpi), row.preview);
    std::vector<RECT> parts{layout.toolBar, layout.tree,  layout.list1,    layout.buttons1,
                            layout.options, layout.list2, layout.buttons2, layout.status};
    if (row.preview) parts.push_back(layout.browser);
    for (const RECT& part : parts) {
      EXPECT_TRUE(holds({0, 0, row.client.cx, row.client.cy}, part)) << &part - parts.data();
      for (const RECT& other : parts) {
        RECT common{};
        EXPECT_TRUE(&part == &other || !IntersectRect(&common, &part, &other));
      }
    }
    EXPECT_TRUE(holds(layout.frame1, layout.list1) && holds(layout.frame1, layout.buttons1));
    EXPECT_TRUE(holds(layout.frame2, layout.list2) && holds(layout.frame2, layout.buttons2));
    EXPECT_TRUE(!row.preview || holds(layout.preview, layout.browser));
  }
}

TEST(layout, aSplitterFollowsThePointer) {
  const LayoutMetrics metrics = metricsAt(96);
  const SIZE client{1200, 800};
  for (const auto& [splitter, to] : {std::pair{Splitter::Tree, POINT{400, 300}},
                                     {Splitter::Preview, POINT{800, 300}},
                                     {Splitter::Source, POINT{600, 350}}}) {
    const Division division = moved(splitter, to, client, {}, metrics, true);
    EXPECT_EQ(layOut(client, division, metrics, true).splitterAt(to), splitter);
  }
  EXPECT_EQ(layOut(client, {}, metrics, false).splitterAt({1100, 300}), Splitter::None);
}

// What scrolling sideways stands on: characters of one width, tabs to every fourth column.
TEST(fonts, textIsAsWideAsItIsMeasured) {
  const UniqueFont font = listFont(kDesignDpi);
  ListTextMeasure measure;
  for (const auto& [line, shown] : {std::pair{"\xC4\xD6\xDC\xDF\x80", "\xC4\xD6\xDC\xDF\x80"},
                                    {"abc\tx", "abc x"},
                                    {"abcd\t\tx", "abcd        x"}}) {
    EXPECT_EQ(measure.width(fromAnsi(line)), textSize(font.get(), fromAnsi(shown)).cx) << line;
  }
}

TEST(statusLine, isSharedAsItsTextsNeedAndTheseAreShortenedInTheMiddle) {
  const std::array<int, 3> needs[] = {{50, 60, 100}, {300, 0, 0}, {250, 40, 450}},
                           widths[] = {{100, 100, 200}, {300, 0, 100}, {180, 40, 180}};
  for (std::size_t i = 0; i < std::size(needs); ++i) EXPECT_EQ(shareLine(400, needs[i]), widths[i]);
  const struct {
    const wchar_t* text;
    std::size_t room;
    const wchar_t* shown;
  } rows[] = {
      {L"kurz", 4, L"kurz"},
      {L"C:\\Projekte\\Rechnungen\\Seite.htm", 16, L"C:\\Pr…\\Seite.htm"},
      {L"Ein langer Name.bas: Datei nicht gefunden", 30, L"Ein lan…: Datei nicht gefunden"},
      {L"Wort", 0, L"…"},
  };
  for (const auto& row : rows) {
    const auto fits = [&row](const std::wstring& text) { return text.size() <= row.room; };
    EXPECT_EQ(shortened(row.text, fits), row.shown);
  }
}

TEST(openingPlace, isOnTheScreenAndBesideTheOthers) {
  const RECT work{0, 40, 1000, 800};
  const struct {
    RECT wanted;
    std::vector<RECT> others;
    RECT expected;
  } rows[] = {
      {{100, 100, 500, 400}, {}, {100, 100, 500, 400}},
      {{-5000, -100, -4000, 300}, {}, {0, 40, 1000, 440}},  // of a screen that is gone
      {{700, 700, 2700, 1700}, {}, {0, 40, 1000, 800}},
      {{100, 100, 500, 400}, {{105, 100, 300, 300}}, {130, 130, 530, 430}},
      {{100, 100, 500, 400}, {{100, 100, 0, 0}, {130, 130, 0, 0}}, {160, 160, 560, 460}},
      {{600, 500, 1000, 800}, {{600, 500, 0, 0}}, {0, 40, 400, 340}},  // no room there
  };
  for (const auto& row : rows) {
    const RECT place = openingPlace(row.wanted, work, row.others, 30);
    EXPECT_TRUE(EqualRect(&place, &row.expected))
        << &row - rows << ": " << place.left << " " << place.top;
  }
}

}  // namespace
}  // namespace tintline
