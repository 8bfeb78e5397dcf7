// Tests of win32/rich_edit_view.h, in a window without a display.
#include "win32/rich_edit_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "tests/support/rendered_page.h"
#include "tests/win32/test_window.h"

namespace tintline {
namespace {

constexpr COLORREF kLinkBlue = RGB(0, 0, 255);

struct RichEditViewTest : testing::Test {
  test::Ole ole;
  test::TempFolder folder;
  test::TestWindow parent;
  std::vector<std::wstring> links;
  std::optional<RichEditView> view;

  void SetUp() override {
    view.emplace(parent.get(), [this](const std::wstring& link) { links.push_back(link); });
    parent.onNotify = [this](const NMHDR& header) { view->onNotify(header); };
  }

  // Shows a page to its end.
  void show(std::string_view html) {
    view->navigate(test::writePage(folder,
                                   "Pr\xC3\xBC"
                                   "fung.html",
                                   html));
    ASSERT_TRUE(test::pumpUntil([this] { return view->loaded(); }));
  }

  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendMessageW(view->window(), message, wParam, lParam);
  }

  void select(LONG from, LONG to) {
    CHARRANGE range{from, to};
    send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
  }

  CHARRANGE selection() {
    CHARRANGE range{};
    send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return range;
  }

  CHARFORMAT2W formatOf(std::size_t from, std::size_t to) {
    select(static_cast<LONG>(from), static_cast<LONG>(to));
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    return format;
  }

  // Presses and releases the mouse on the link that begins there, as the control tells it.
  void click(std::size_t position) {
    ENLINK link{};
    link.nmhdr = {view->window(), 0, EN_LINK};
    link.chrg = {static_cast<LONG>(position), static_cast<LONG>(position + 1)};
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
      link.msg = message;
      SendMessageW(parent.get(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&link));
    }
  }

  LRESULT lineOf(std::size_t position) {
    return send(EM_EXLINEFROMCHAR, 0, static_cast<LPARAM>(position));
  }
};

void expectLooks(const TextRun& run, const CHARFORMAT2W& format) {
  constexpr DWORD kColors = CFM_COLOR | CFM_BACKCOLOR | CFM_BOLD | CFM_ITALIC | CFM_LINK;
  ASSERT_EQ(format.dwMask & kColors, kColors) << "not of one look at " << run.start;
  const auto color = [](Color c) { return RGB(c >> 16 & 0xFF, c >> 8 & 0xFF, c & 0xFF); };
  const TextLooks& looks = run.looks;
  EXPECT_EQ((format.dwEffects & CFE_LINK) != 0, looks.link.has_value()) << run.start;
  EXPECT_EQ((format.dwEffects & CFE_BOLD) != 0, looks.bold) << run.start;
  EXPECT_EQ((format.dwEffects & CFE_ITALIC) != 0, looks.italic) << run.start;
  EXPECT_EQ((format.dwEffects & CFE_AUTOCOLOR) == 0, looks.color.has_value()) << run.start;
  if (looks.color) {
    EXPECT_EQ(format.crTextColor, color(*looks.color)) << run.start;
  }
  EXPECT_EQ((format.dwEffects & CFE_AUTOBACKCOLOR) == 0, looks.background.has_value()) << run.start;
  if (looks.background) {
    EXPECT_EQ(format.crBackColor, color(*looks.background)) << run.start;
  }
}

TEST_F(RichEditViewTest, textAndLooksAreThoseOfThePage) {
  for (const StyleMode style : {StyleMode::Class, StyleMode::Inline}) {
    const std::string html = test::examplePage("Musterprojekt.bas", style, true);
    show(html);
    const RenderedPage page = renderPage(html);
    ASSERT_GT(page.text.size(), 1000U);
    EXPECT_EQ(test::windowText(view->window()), page.text);
    const TextLooks* before = nullptr;
    for (const TextRun& run : page.runs) {
      if (before == nullptr || *before != run.looks)
        expectLooks(run, formatOf(run.start, run.start + run.length));
      before = &run.looks;
      if (HasFatalFailure()) return;
    }
  }
}

TEST_F(RichEditViewTest, linksLeadToTheirAnchors) {
  show(test::examplePage("Musterprojekt.bas", StyleMode::Class, true));
  const RenderedPage& page = view->page();
  int calls = 0;
  for (const TextRun& run : page.runs) {
    if (!run.looks.link) continue;
    const std::size_t anchor = *page.anchorPosition(page.targets[*run.looks.link].substr(1));
    select(0, 0);
    send(WM_VSCROLL, SB_TOP);
    click(run.start);
    EXPECT_EQ(selection().cpMin, static_cast<LONG>(anchor));
    EXPECT_EQ(selection().cpMax, static_cast<LONG>(anchor));
    calls += anchor > run.start;
  }
  EXPECT_GT(calls, 0);
  EXPECT_TRUE(links.empty());
}

TEST_F(RichEditViewTest, anAnchorIsScrolledToTheTop) {
  std::string html = "<pre><a href='#mitte'>x</a>";
  for (int i = 0; i < 500; ++i) html += i == 250 ? "<a name='mitte'>y</a>\n" : "zeile\n";
  show(html);
  EXPECT_EQ(send(EM_GETFIRSTVISIBLELINE), 0);
  click(0);
  EXPECT_EQ(send(EM_GETFIRSTVISIBLELINE), 250);
  EXPECT_EQ(lineOf(static_cast<std::size_t>(selection().cpMin)), 250);
}

TEST_F(RichEditViewTest, onlyCheckedAddressesAreHandedOut) {
  show(
      "<a href='https://example.org/?a&amp;b'>A</a> <a href='javascript:alert(1)'>B</a> "
      "<a href='file:///C:/x.exe'>C</a> <a href='#nirgends'>D</a> <a href='mailto:a@b'>E</a>");
  select(9, 9);
  for (std::size_t position = 0; position < 9; ++position) click(position);
  EXPECT_EQ(links, (std::vector<std::wstring>{L"https://example.org/?a&b", L"mailto:a@b"}));
  EXPECT_EQ(selection().cpMin, 9) << "no link led anywhere in the page";
}

TEST_F(RichEditViewTest, selectingALinkDoesNotFollowIt) {
  show("<a href='mailto:a@b'>Adresse</a>");
  select(1, 3);
  click(0);
  EXPECT_TRUE(links.empty());
}

TEST_F(RichEditViewTest, keys) {
  show("a<a href='mailto:a@b'>b</a>c");
  EXPECT_EQ(send(WM_GETDLGCODE, VK_TAB) & (DLGC_WANTTAB | DLGC_WANTALLKEYS), 0);
  EXPECT_NE(send(WM_GETDLGCODE, VK_DOWN) & DLGC_WANTARROWS, 0);
  select(1, 1);
  send(WM_KEYDOWN, VK_RETURN);
  EXPECT_EQ(links.size(), 1U) << "Enter follows the link at the caret";
  select(0, 0);
  send(WM_KEYDOWN, VK_RETURN);
  send(WM_CHAR, 'x');
  EXPECT_EQ(links.size(), 1U);
  EXPECT_EQ(test::windowText(view->window()), L"abc") << "nothing can be typed";
}

// A page that takes many pieces, more than show at once.
std::string longPage() {
  constexpr std::size_t kLines = 12'000;
  std::string html = "<pre>\n<a name='Index'></a><a href='#Ende'>E</a>\n";
  for (std::size_t i = 0; i < kLines; ++i)
    html += "<span style='color:#0000FF'>Zeile</span> " + std::to_string(i) +
            " <a href='#Index'>nach oben</a>\n";
  return html + "<a name='Ende'>Ende</a></pre>";
}

TEST_F(RichEditViewTest, aLongPageComesInPieces) {
  view->navigate(test::writePage(folder, "lang.html", longPage()));
  EXPECT_FALSE(view->loaded());
  const std::wstring beginning = test::windowText(view->window());
  EXPECT_FALSE(beginning.empty());
  EXPECT_TRUE(view->page().text.starts_with(beginning));
  // What the user does meanwhile stays.
  select(3, 8);
  send(EM_LINESCROLL, 0, 20);
  const LRESULT line = send(EM_GETFIRSTVISIBLELINE);
  ASSERT_TRUE(test::pumpUntil([this] { return view->loaded(); }, 60'000));
  EXPECT_EQ(test::windowText(view->window()), view->page().text);
  EXPECT_EQ(send(EM_GETFIRSTVISIBLELINE), line);
  EXPECT_EQ(selection().cpMin, 3);
  EXPECT_EQ(selection().cpMax, 8);
  const TextRun& last = *std::find_if(view->page().runs.rbegin(), view->page().runs.rend(),
                                      [](const TextRun& run) { return run.looks.link; });
  expectLooks(last, formatOf(last.start, last.start + last.length));
}

TEST_F(RichEditViewTest, anAnchorThatIsNotThereYetIsGoneToWhenItComes) {
  view->navigate(test::writePage(folder, "lang.html", longPage()));
  ASSERT_FALSE(view->loaded());
  click(0);
  EXPECT_EQ(selection().cpMin, 0);
  ASSERT_TRUE(test::pumpUntil([this] { return view->loaded(); }, 60'000));
  EXPECT_EQ(selection().cpMin, static_cast<LONG>(*view->page().anchorPosition(L"Ende")));
}

TEST_F(RichEditViewTest, theNextPageCancelsTheRest) {
  view->navigate(test::writePage(folder, "lang.html", longPage()));
  ASSERT_FALSE(view->loaded());
  show("<b>kurz</b>");
  test::pumpUntil([] { return false; }, 200);
  EXPECT_EQ(test::windowText(view->window()), L"kurz");
  show("");
  EXPECT_EQ(test::windowText(view->window()), L"");
}

TEST_F(RichEditViewTest, looksDoNotReachTheNextPage) {
  show("<a href='x' style='color:#FF0000; font: bold'>rot</a>");
  show("schlicht");
  const TextRun plain{.start = 0, .length = 8, .looks = {}};
  expectLooks(plain, formatOf(0, 8));
  EXPECT_NE(formatOf(0, 8).crTextColor, kLinkBlue);
}

TEST_F(RichEditViewTest, aMissingFileLeavesTheOldPage) {
  show("alt");
  EXPECT_THROW(view->navigate(folder / "fehlt.html"), FileError);
  EXPECT_EQ(test::windowText(view->window()), L"alt");
}

TEST_F(RichEditViewTest, theParentMayGoFirst) {
  view->navigate(test::writePage(folder, "lang.html", longPage()));
  parent.destroy();
  EXPECT_EQ(view->window(), nullptr);
}

}  // namespace
}  // namespace tintline
