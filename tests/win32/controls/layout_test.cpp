// Tests of win32/controls/layout.h and status_line.h.
#include "win32/controls/layout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "win32/controls/status_line.h"

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

struct Case {
  const char* name;
  SIZE client;
  unsigned dpi;
  bool preview;
  Division division;
};

const Case kCases[] = {
    {"as the program opens", {1160, 740}, 96, false, {}},
    {"with the preview", {1160, 740}, 96, true, {}},
    {"at its smallest", {720, 440}, 96, true, {}},
    {"at its smallest, at 150 %", {1080, 660}, 144, true, {}},
    {"on a large screen, at 200 %", {3800, 2000}, 192, true, {}},
    {"everything pushed to the left and up", {900, 600}, 96, true, {0, 1, 0}},
    {"everything pushed to the right and down", {900, 600}, 96, true, {1, 0, 1}},
};

std::vector<RECT> partsOf(const MainLayout& layout, bool preview) {
  std::vector<RECT> parts{layout.toolBar, layout.tree,  layout.list1,    layout.buttons1,
                          layout.options, layout.list2, layout.buttons2, layout.status};
  if (preview) parts.push_back(layout.browser);
  return parts;
}

bool holds(const RECT& outer, const RECT& inner) {
  return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
         outer.bottom >= inner.bottom;
}

TEST(layout, everyPartShowsAndNoneCoversAnother) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    const MainLayout layout = layOut(c.client, c.division, metricsAt(c.dpi), c.preview);
    const std::vector<RECT> parts = partsOf(layout, c.preview);
    const RECT client{0, 0, c.client.cx, c.client.cy};
    for (std::size_t i = 0; i < parts.size(); ++i) {
      EXPECT_TRUE(holds(client, parts[i])) << "part " << i;
      EXPECT_GT(parts[i].right - parts[i].left, 50) << "part " << i;
      EXPECT_GT(parts[i].bottom - parts[i].top, 15) << "part " << i;
      for (std::size_t k = 0; k < i; ++k) {
        RECT common{};
        EXPECT_FALSE(IntersectRect(&common, &parts[i], &parts[k])) << "parts " << i << ", " << k;
      }
    }
  }
}

TEST(layout, framesHoldTheirListsAndButtons) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    const MainLayout layout = layOut(c.client, c.division, metricsAt(c.dpi), c.preview);
    EXPECT_TRUE(holds(layout.frame1, layout.list1) && holds(layout.frame1, layout.buttons1));
    EXPECT_TRUE(holds(layout.frame2, layout.list2) && holds(layout.frame2, layout.buttons2));
    EXPECT_TRUE(holds(layout.preview, layout.browser));
  }
}

TEST(layout, optionsTakeTwoRowsWhereTheyHaveNoRoomInOne) {
  const LayoutMetrics metrics = metricsAt(96);
  const auto height = [&](LONG width) {
    const RECT row = layOut({width, 600}, {}, metrics, true).options;
    return row.bottom - row.top;
  };
  EXPECT_EQ(height(1400), metrics.option);
  EXPECT_EQ(height(800), 2 * metrics.option);
}

TEST(layout, aSplitterFollowsThePointer) {
  const SIZE client{1200, 800};
  const LayoutMetrics metrics = metricsAt(96);
  const struct {
    Splitter splitter;
    POINT to;
  } drags[] = {{Splitter::Tree, {400, 300}},
               {Splitter::Preview, {800, 300}},
               {Splitter::Source, {600, 350}}};
  for (const auto& drag : drags) {
    SCOPED_TRACE(static_cast<int>(drag.splitter));
    const Division division = moved(drag.splitter, drag.to, client, {}, metrics, true);
    const MainLayout layout = layOut(client, division, metrics, true);
    EXPECT_EQ(layout.splitterAt(drag.to), drag.splitter);
  }
}

TEST(layout, thereIsNoSplitterElsewhere) {
  const MainLayout layout = layOut({1200, 800}, {}, metricsAt(96), false);
  EXPECT_EQ(layout.splitterAt({100, 300}), Splitter::None);
  EXPECT_EQ(layout.splitterAt({1100, 300}), Splitter::None);
}

TEST(statusLine, isSharedAsItsTextsNeed) {
  const struct {
    int width;
    std::array<int, 3> needed, widths;
  } rows[] = {
      {400, {50, 60, 100}, {100, 100, 200}},  // their usual places
      {400, {300, 0, 0}, {300, 0, 100}},
      {400, {150, 50, 200}, {150, 50, 200}},
      {300, {250, 40, 250}, {130, 40, 130}},
  };
  for (const auto& row : rows) EXPECT_EQ(shareLine(row.width, row.needed), row.widths);
}

TEST(statusLine, textsAreShortenedInTheMiddle) {
  const struct {
    const wchar_t* text;
    std::size_t room;
    const wchar_t* shown;
  } rows[] = {
      {L"kurz", 4, L"kurz"},
      {L"C:\\Projekte\\Rechnungen\\Seite.htm", 16, L"C:\\Pr…\\Seite.htm"},
      {L"Ein langer Name.bas: Datei nicht gefunden", 30, L"Ein lan…: Datei nicht gefunden"},
      {L"Ein langer Name.bas: Datei nicht gefunden", 8, L"Ein…nden"},
      {L"Wort", 0, L"…"},
  };
  for (const auto& row : rows) {
    const auto fits = [&row](const std::wstring& text) { return text.size() <= row.room; };
    EXPECT_EQ(shortened(row.text, fits), row.shown);
  }
}

}  // namespace
}  // namespace tintline
