// Tests of win32/preview/: the pane, the rich-edit control that shows pages where there is no HTML
// engine, and, as far as it goes without one, the browser.
#include <windows.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <algorithm>
#include <fstream>
#include <optional>
#include <vector>

#include "base/file.h"
#include "convert/exact_source.h"
#include "convert/source_text.h"
#include "tests/support/temp_folder.h"
#include "tests/win32/host_window.h"
#include "win32/preview/preview_pane.h"

namespace tintline {
namespace {

using Engine = PreviewPane::Engine;
using Links = std::vector<std::wstring>;

struct PreviewTest : testing::Test {
  test::TempFolder folder;
  test::HostWindow parent;
  Links links;
  std::optional<PreviewPane> pane;

  PreviewPane& make(Engine engine) {
    pane.emplace(parent.hwnd(), 42, engine);
    pane->onExternalLink = [this](const std::wstring& link) { links.push_back(link); };
    SetWindowPos(pane->window(), nullptr, 0, 0, 600, 400, SWP_NOZORDER | SWP_SHOWWINDOW);
    return *pane;
  }
  std::filesystem::path page(std::string_view html) const {
    const std::filesystem::path path = folder / L"Prüfung #1 100%.html";
    std::ofstream(path, std::ios::binary) << html;
    return path;
  }
  void show(std::string_view html) {
    if (!pane) make(Engine::RichEdit);
    pane->navigate(page(html));
    ASSERT_TRUE(test::pumpUntil(
        [this] { return pane->richEdit() != nullptr && pane->richEdit()->loaded(); }, 60'000));
  }
  HWND control() const { return pane->richEdit()->window(); }
  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(control(), message, wParam, lParam);
  }
  std::wstring text() const {
    std::wstring text = windowText(control());
    std::erase(text, L'\n');
    std::ranges::replace(text, L'\r', L'\n');
    return text;
  }
  void select(LONG from, LONG to) const {
    CHARRANGE range{from, to};
    send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
  }
  CHARRANGE selection() const {
    CHARRANGE range{};
    send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return range;
  }
  POINT placeOf(std::size_t position) const {
    POINTL place{};
    send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), static_cast<LPARAM>(position));
    return {place.x, place.y};
  }
  void click(POINT place) const {
    for (const POINT& at : {POINT{0, 0}, place})  // else two clicks may be a double click
      for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP})
        send(message, 0, MAKELPARAM(at.x, at.y));
  }
  void expectLooks(const TextRun& run) const {
    select(static_cast<LONG>(run.start), static_cast<LONG>(run.start + run.length));
    CHARFORMAT2W format{};
    format.cbSize = sizeof format;
    send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    const auto color = [](std::optional<Color> c) {
      return c ? RGB(*c >> 16 & 0xFF, *c >> 8 & 0xFF, *c & 0xFF) : 0;
    };
    const auto has = [&](DWORD effect) { return (format.dwEffects & effect) != 0; };
    EXPECT_EQ(has(CFE_UNDERLINE), run.looks.underlined) << run.start;
    EXPECT_EQ(has(CFE_BOLD), run.looks.bold) << run.start;
    EXPECT_EQ(has(CFE_ITALIC), run.looks.italic) << run.start;
    EXPECT_EQ(has(CFE_AUTOCOLOR) ? 0 : format.crTextColor, color(run.looks.color)) << run.start;
    EXPECT_EQ(has(CFE_AUTOBACKCOLOR) ? 0 : format.crBackColor, color(run.looks.background));
  }
};

TEST_F(PreviewTest, textAndLooksAreThoseOfThePage) {
  ExactSource source;
  source.add(
      {u8"Kunde", vb::ModuleKind::Class, decodeSource(readFile("data/examples/Kunde.cls")).text});
  source.append(u8"' \u65E5\U0001F600 {\\}");
  for (const std::string& html :
       {readFile("tests/golden/sample/expected-class.htm"),
        readFile("tests/golden/sample/expected-form.htm"),  // with styles in its elements
        convertExact(source, {}, {.lineNumbers = true}, {}, u8"Kunde.cls").page}) {
    show(html);
    const RenderedPage rendered = renderPage(html);
    EXPECT_EQ(text(), rendered.text);
    for (const TextRun& run : rendered.runs) expectLooks(run);
  }
  show("schlicht");
  expectLooks({.start = 0, .length = 8, .looks = {}});  // nothing of the page before
  EXPECT_THROW(pane->navigate(folder / "fehlt.html"), FileError);
  EXPECT_EQ(text(), L"schlicht");
}

TEST_F(PreviewTest, linksAreWhereTheirCharactersAreAndLeadOutOnlyWhenChecked) {
  show(
      "<pre>a<a href='mailto:a@b'>bc</a>d\n<a href='javascript:x'>ef</a> <a href='file:///c'>g</a>"
      " <a href='https://example.org/?a&amp;b'>h</a></pre>");
  const POINT b = placeOf(1), d = placeOf(3), e = placeOf(5), h = placeOf(10);
  const struct {
    POINT place;
    const wchar_t* link;
  } rows[] = {{{b.x, b.y + 1}, L"mailto:a@b"}, {{d.x - 1, d.y + 1}, L"mailto:a@b"},
              {{b.x - 1, b.y + 1}, nullptr},   {{d.x, d.y + 1}, nullptr},
              {{e.x + 1, e.y + 1}, nullptr},   {{h.x + 1, h.y + 1}, L"https://example.org/?a&b"},
              {{h.x + 100, h.y + 1}, nullptr}};
  for (const auto& row : rows) {
    links.clear();
    click(row.place);
    EXPECT_EQ(links, row.link != nullptr ? Links{row.link} : Links()) << &row - rows;
  }
  links.clear();
  select(1, 1);
  send(WM_KEYDOWN, VK_RETURN);
  EXPECT_EQ(links.size(), 1U) << "Enter follows the link at the caret";
  send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(b.x, b.y + 1));
  send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(d.x + 1, d.y + 1));
  send(WM_LBUTTONUP, 0, MAKELPARAM(d.x + 1, d.y + 1));
  EXPECT_EQ(links.size(), 1U) << "selecting a link does not follow it";
  EXPECT_EQ(send(WM_GETDLGCODE, VK_TAB) & (DLGC_WANTTAB | DLGC_WANTALLKEYS), 0);
}

// By the id of the line at the top, else by its share; a line that is asked for is marked.
TEST_F(PreviewTest, theNextPageKeepsThePlaceAndLinesAreMarked) {
  const auto lines = [](int count, bool ids, int behind) {
    std::string html = "<pre>";
    for (int i = 1; i <= count; ++i) {
      const std::string number = std::to_string(i);
      if (ids) html += "<a name='" + number + "'></a>";
      html += number + "\n";
    }
    return html + std::string(static_cast<std::size_t>(behind), '\n') + ".";
  };
  const auto top = [&] {
    const LRESULT line = send(EM_GETFIRSTVISIBLELINE);
    wchar_t buffer[32] = {sizeof buffer / sizeof *buffer};
    send(EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(buffer));
    return std::stoi(buffer);
  };
  show(lines(500, true, 100));
  send(EM_LINESCROLL, 0, 249);
  ASSERT_EQ(top(), 250);
  const struct {
    std::string html;
    int expected;
  } rows[] = {{"x\n" + lines(500, true, 300), 250}, {lines(1000, false, 200), 438}};
  for (const auto& [html, expected] : rows) {
    pane->navigate(page(html), true);
    EXPECT_NEAR(top(), expected, 5);
  }
  show(lines(500, true, 100));
  for (const auto& [id, from] : {std::pair{L"10", 10}, {L"400", 397}}) {
    pane->showAnchor(id);
    const CHARRANGE marked = selection();
    EXPECT_EQ(text().substr(static_cast<std::size_t>(marked.cpMin),
                            static_cast<std::size_t>(marked.cpMax - marked.cpMin)),
              id);
    EXPECT_EQ(top(), from == 10 ? 1 : from) << "only what nobody sees is brought into view";
  }
  pane->showAnchor(L"fehlt");
  EXPECT_EQ(top(), 397);
}

TEST_F(PreviewTest, tabsLeadToEveryEighthColumn) {
  show("<pre>\tx\n12345678x\n\t\tx\n1234567890123456x</pre>");
  std::vector<LONG> columns;
  for (std::size_t i = 0; i < text().size(); ++i)
    if (text()[i] == L'x') columns.push_back(placeOf(i).x);
  EXPECT_EQ(columns[0], columns[1]);
  EXPECT_EQ(columns[2], columns[3]);
  EXPECT_GT(columns[2], columns[0]);
}

TEST_F(PreviewTest, aLongPageComesInPiecesThatDisturbNobody) {
  std::string html = "<pre>\n<a href='#Ende'>E</a>\n";
  for (int i = 0; i < 50'000; ++i) html += "<span style='color:#0000FF'>Zeile</span> x\n";
  html += "<a name='Ende'>Ende</a>";
  for (int i = 0; i < 100; ++i) html += "\nx";
  make(Engine::RichEdit).navigate(page(html));
  EXPECT_FALSE(pane->richEdit()->loaded());
  select(3, 8);
  send(EM_LINESCROLL, 0, 20);
  const LRESULT line = send(EM_GETFIRSTVISIBLELINE);
  ASSERT_TRUE(test::pumpUntil([this] { return pane->richEdit()->loaded(); }, 60'000));
  EXPECT_EQ(text(), pane->richEdit()->page().text);
  EXPECT_EQ(send(EM_GETFIRSTVISIBLELINE), line);
  EXPECT_EQ(selection().cpMax, 8);

  pane->navigate(page(html));
  click({placeOf(0).x + 1, placeOf(0).y + 1});  // its anchor is not there yet
  ASSERT_TRUE(test::pumpUntil([this] { return pane->richEdit()->loaded(); }, 60'000));
  const std::size_t anchor = *pane->richEdit()->page().anchorPosition(L"Ende");
  EXPECT_EQ(selection().cpMin, static_cast<LONG>(anchor));
  EXPECT_EQ(send(EM_GETFIRSTVISIBLELINE), send(EM_EXLINEFROMCHAR, 0, static_cast<LPARAM>(anchor)));

  pane->navigate(page(html));
  show("<b>kurz</b>");
  test::pumpFor(200);
  EXPECT_EQ(text(), L"kurz") << "the next page cancels the rest";
  pane->navigate(page(html));
  parent.close();
  EXPECT_EQ(pane->window(), nullptr);
}

// Where there is no engine the browser object fails, and the page is shown all the same.
TEST_F(PreviewTest, aBrowserThatFailsIsReplacedAndKeepsTheKeyboard) {
  if (BrowserHost::engineAnswers()) GTEST_SKIP() << "the browser works here";
  make(Engine::Browser).navigate(page("eins"));
  EXPECT_EQ(pane->richEdit(), nullptr) << "not inside of the browser's own event";
  show("zwei");
  EXPECT_EQ(text(), L"zwei");
  SetFocus(pane->window());
  EXPECT_EQ(GetFocus(), control());
  show("drei");
  EXPECT_EQ(GetFocus(), control());
}

}  // namespace
}  // namespace tintline
