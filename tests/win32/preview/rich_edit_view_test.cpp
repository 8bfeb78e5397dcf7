// Tests of win32/preview/rich_edit_view.h, in a window without a display.
#include "win32/preview/rich_edit_view.h"

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

struct RichEditViewTest : testing::Test {
  test::Ole ole;
  test::TempFolder folder;
  test::TestWindow parent;
  std::vector<std::wstring> links;
  std::optional<RichEditView> view;

  void SetUp() override {
    view.emplace(parent.get(), [this](const std::wstring& link) { links.push_back(link); });
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

  // Scrolls a character into view and clicks on it.
  void click(std::size_t position) {
    test::clickAt(view->window(), {0, 0});  // else two clicks on one place are a double click
    select(static_cast<LONG>(position), static_cast<LONG>(position));
    send(EM_SCROLLCARET);
    test::clickCharacter(view->window(), position);
  }

  LRESULT lineOf(std::size_t position) {
    return send(EM_EXLINEFROMCHAR, 0, static_cast<LPARAM>(position));
  }
};

void expectLooks(const TextRun& run, const CHARFORMAT2W& format) {
  constexpr DWORD kColors = CFM_COLOR | CFM_BACKCOLOR | CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE;
  ASSERT_EQ(format.dwMask & kColors, kColors) << "not of one look at " << run.start;
  const auto color = [](Color c) { return RGB(c >> 16 & 0xFF, c >> 8 & 0xFF, c & 0xFF); };
  const TextLooks& looks = run.looks;
  EXPECT_EQ((format.dwEffects & CFE_UNDERLINE) != 0, looks.link.has_value()) << run.start;
  EXPECT_EQ(format.dwEffects & (CFE_BOLD | CFE_ITALIC), 0U) << run.start;
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

TEST_F(RichEditViewTest, tabsLeadToEveryEighthColumn) {
  show("<pre>\tx\n12345678x\n1234567\tx\n\t\tx\n1234567890123456x</pre>");
  const std::wstring text = view->page().text;
  std::vector<LONG> columns;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] == L'x') columns.push_back(test::placeOf(view->window(), i).x);
  EXPECT_EQ(columns[0], columns[1]);
  EXPECT_EQ(columns[2], columns[1]);
  EXPECT_EQ(columns[3], columns[4]);
  EXPECT_GT(columns[3], columns[2]);
}

TEST_F(RichEditViewTest, linksLeadToTheirAnchors) {
  show(test::examplePage("Musterprojekt.bas", StyleMode::Class, true));
  const RenderedPage& page = view->page();
  int calls = 0;
  for (const TextRun& run : page.runs) {
    if (!run.looks.link) continue;
    const std::size_t anchor = *page.anchorPosition(page.targets[*run.looks.link].substr(1));
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
  for (std::size_t position = 0; position < 9; ++position) {
    click(position);
    EXPECT_LE(selection().cpMin, 9);
  }
  EXPECT_EQ(links, (std::vector<std::wstring>{L"https://example.org/?a&b", L"mailto:a@b"}));
}

TEST_F(RichEditViewTest, aLinkIsWhereItsCharactersAre) {
  show("<pre>a<a href='mailto:a@b'>bc</a>d\n<a href='mailto:e@f'>ef</a></pre>");
  const HWND control = view->window();
  const POINT b = test::placeOf(control, 1), d = test::placeOf(control, 3),
              e = test::placeOf(control, 5), end = test::placeOf(control, 7);
  struct Case {
    const char* name;
    POINT place;
    const wchar_t* link;
  };
  const Case cases[] = {
      {"its first column", {b.x, b.y + 1}, L"mailto:a@b"},
      {"its last column", {d.x - 1, d.y + 1}, L"mailto:a@b"},
      {"in front of it", {b.x - 1, b.y + 1}, nullptr},
      {"behind it", {d.x, d.y + 1}, nullptr},
      {"the last line", {e.x + 1, e.y + 1}, L"mailto:e@f"},
      {"right of the text", {end.x + 1, end.y + 1}, nullptr},
      {"far right of the text", {end.x + 100, end.y + 1}, nullptr},
      {"below the text", {e.x + 1, e.y + 50}, nullptr},
      {"left of the text", {0, e.y + 1}, nullptr},
  };
  for (const Case& c : cases) {
    test::clickAt(control, {0, 0});
    links.clear();
    test::clickAt(control, c.place);
    EXPECT_EQ(links,
              c.link != nullptr ? std::vector<std::wstring>{c.link} : std::vector<std::wstring>())
        << c.name;
  }
}

TEST_F(RichEditViewTest, selectingALinkDoesNotFollowIt) {
  show("<a href='mailto:a@b'>Adresse</a>");
  const auto mouse = [this](UINT message, std::size_t position) {
    const POINT place = test::placeOf(view->window(), position);
    send(message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(place.x + 1, place.y + 5));
  };
  mouse(WM_LBUTTONDOWN, 1);
  mouse(WM_MOUSEMOVE, 4);
  mouse(WM_LBUTTONUP, 4);
  EXPECT_EQ(selection().cpMax - selection().cpMin, 3);
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
  constexpr std::size_t kLines = 50'000;
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
  EXPECT_LE(selection().cpMin, 1);
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
  show("<a href='x' style='color:#FF0000'>rot</a>");
  show("schlicht");
  const TextRun plain{.start = 0, .length = 8, .looks = {}};
  expectLooks(plain, formatOf(0, 8));
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
