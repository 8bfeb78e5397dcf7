// Tests of output/rendered_page.h.
#include "output/rendered_page.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "base/codepage.h"
#include "tests/support/rendered_page.h"

namespace tintline {
namespace {

using namespace std::string_view_literals;

// The page with its looks: runs as "[c=0000ff bi >target|text]", plain text bare, a rule as "---",
// an anchor as "{name}".
std::string described(const RenderedPage& page) {
  std::wostringstream result;
  std::size_t anchor = 0;
  const auto addAnchors = [&](std::size_t position) {
    for (; anchor < page.anchors.size() && page.anchors[anchor].position <= position; ++anchor)
      result << L"{" << page.anchors[anchor].name << L"}";
  };
  for (const TextRun& run : page.runs) {
    addAnchors(run.start);
    const TextLooks& looks = run.looks;
    const bool plain = looks == TextLooks{};
    if (!plain) result << L"[";
    if (looks.color) result << L"c" << std::hex << *looks.color;
    if (looks.background) result << L"g" << std::hex << *looks.background;
    result << (looks.bold ? L"b" : L"") << (looks.italic ? L"i" : L"");
    if (looks.link) result << L">" << page.targets[*looks.link];
    if (!plain) result << L"|";
    const std::wstring text = page.text.substr(run.start, run.length);
    result << (text == test::kRule ? L"---" : text) << (plain ? L"" : L"]");
  }
  addAnchors(page.text.size());
  return toAnsi(result.str());
}

struct Case {
  const char* name;
  std::string_view html, expected;
};

void checkAll(std::initializer_list<Case> cases) {
  for (const Case& c : cases) {
    const RenderedPage page = renderPage(c.html);
    EXPECT_EQ(described(page), c.expected) << c.name;
    EXPECT_EQ(test::faultOf(page), "") << c.name;
  }
}

TEST(RenderedPage, looks) {
  checkAll({
      {"a rule of the style sheet",
       "<html><head><style type='text/css'>\r\n<!--\r\n.Code {\r\n color: #0000FF;\r\n"
       " background-color: #FFFFFF;\r\n}\r\n.Sub {\r\n color: #000080;\r\n font: italic bold;\r\n"
       " background-color: inherit;\r\n}\r\n-->\r\n</style></head><body>"
       "<span class='Code'>If</span> <span class='sub'>S</span><span class='X'>x</span>",
       "[cffgffffff|If] [c80bi|S]x"},
      {"a style attribute",
       "<span style=\" color:#008000; background: #00FF00; font: italic bold;\">' x</span>",
       "[c8000gff00bi|' x]"},
      {"inner looks stand on outer ones",
       "<span style='color:#000001;background:#000002'>a<span "
       "style='color:#000003'>b</span>c</span>"
       "d",
       "[c1g2|a][c3g2|b][c1g2|c]d"},
      {"neighbours of equal looks are one run",
       "<span style='color:#000001'>a</span><span style='color:#000001'>b</span>", "[c1|ab]"},
      {"a style sheet in the body is text", "<body><style>.x {color:#000001}</style>",
       ".x {color:#000001}"},
      {"a style sheet without an end", "<style>.a {color:#000001} .b {<body><i class=a>x", "x"},
  });
}

TEST(RenderedPage, linksAndAnchors) {
  checkAll({
      {"an index entry has a browser's link colour", "&nbsp;<a HREF='#X'>X</a>", "\xA0[cff>#X|X]"},
      {"a head with a number", "<a name='X'  HREF='#Index' class='Marks'>1:</a><span>    </span>x",
       "{X}[cff>#Index|1:] x"},
      {"a head without a number", "a<br><a HREF='#Index' name='Y' class='Sub'>Sub Y()</a>",
       "a\n{Y}[cff>#Index|Sub Y()]"},
      {"an anchor of its own shows nothing", "<a name='Index'></a>x", "{Index}x"},
      {"a span may be an anchor", "a<span name='Z' style='color:#000001'>b</span>", "a{Z}[c1|b]"},
      {"a link's own colour counts, a colour around it does not",
       "<span style='color:#000001'>a<a href='x'>b</a><a href='x' "
       "style='color:#000002'>c</a></span>",
       "[c1|a][cff>x|b][c2>x|c]"},
      {"references in addresses", "<a href='http://x/?a&amp;b&uuml;'>x</a>",
       "[cff>http://x/?a&b\xFC|x]"},
      {"a link that is never closed ends with what holds it", "<span>a<a href='x'>b</span>c",
       "a[cff>x|b]c"},
      {"anchors behind the last line lie at its end", "a<br><br><a name='E'></a>", "a{E}"},
  });
}

TEST(RenderedPage, lines) {
  checkAll({
      {"a line of the source is a line and an empty one", "<pre>\r\na  <br>\nb <br>\n\r\n</pre>",
       "a  \n\nb "},
      {"a continued line is one line", "<pre>a _<br>b</pre>", "a _\nb"},
      {"only the first line end behind <pre> is dropped", "<pre>\r\n\r\na</pre>", "\na"},
      {"CR, LF and CR LF end a line", "<pre>a\rb\nc\r\nd\n\re</pre>", "a\nb\nc\nd\n\ne"},
      {"tabs stay", "<pre>a\tb</pre>", "a\tb"},
      {"blanks collapse outside <pre>",
       " \r\n a \t\r\n b<span> c</span> <br> \n d&nbsp; e <pre> f </pre>g",
       "a b c\nd\xA0 e\n f \ng"},
      {"a rule is a line of its own", "<pre>a<hr><br>\nb</pre><hr>c<hr><hr>",
       "a\n[c808080|---]\n\n\nb\n[c808080|---]\nc\n[c808080|---]\n[c808080|---]"},
      {"a frame is its upper and lower edge",
       "<pre>a<br>\n<div style='border: thin solid #000080;'>'---<br>\n' b</div><br>"
       "<div style='border: thin solid #000080;'>c</pre>d",
       "a\n\n[c80|---]\n'---\n\n' b\n[c80|---]\n\n[c80|---]\nc\n[c80|---]\nd"},
      {"a block without a border breaks the line", "a<div>b</div>c", "a\nb\nc"},
      {"nothing", "", ""},
      {"a page of nothing", "<html><body><pre>\r\n\r\n</pre></body></html>", ""},
  });
}

// What comments of the source can bring into a page.
TEST(RenderedPage, foreignMarkup) {
  checkAll({
      {"scripts are text", "a<script>alert(1)</script>b", "aalert(1)b"},
      {"nothing is loaded", "a<img src=http://x/y onerror='z'><iframe src=x></iframe>b", "ab"},
      {"ends without a beginning", "</span></a></div></pre></x>a", "a"},
      {"the end of a span does not close a block",
       "<span style='color:#000001'><pre>a\n</span>b</pre>c</span>d", "[c1|a]\n[c1|b]\n[c1|c]d"},
      {"a block closes what it holds", "<div><span style='color:#000001'>a</div>b", "[c1|a]\nb"},
      {"links stay what is written",
       "<a href='javascript:alert(1)'>a</a><a href=\"\\\\server\\x\">b</a>",
       "[cff>javascript:alert(1)|a][cff>\\\\server\\x|b]"},
      {"control characters show nothing",
       "<pre>a\0b\1c\x0B"
       "d\fe&#7;\x7F"sv,
       "abcde\x7F"},
      {"a tag that never ends is text", "a<br>b<span class='x", "a\nb<span class='x"},
      {"all characters of the code page", "<pre>\x80\x9F\xA0\xFF</pre>", "\x80\x9F\xA0\xFF"},
  });
}

TEST(RenderedPage, questions) {
  const RenderedPage page =
      renderPage("ab<a name='x'></a><a name='X'></a><a href='#x'>cd</a><a name='x'>");
  EXPECT_EQ(page.anchorPosition(L"x"), 2U);
  EXPECT_EQ(page.anchorPosition(L"X"), 2U);
  EXPECT_EQ(page.anchorPosition(L"y"), std::nullopt);
  EXPECT_EQ(page.runAt(1), page.runs.data());
  EXPECT_EQ(page.runAt(2), &page.runs[1]);
  EXPECT_EQ(page.runAt(3), &page.runs[1]);
  EXPECT_EQ(page.runAt(4), nullptr);
}

// The lines without their blanks; empty lines and rules left out.
std::vector<std::wstring> fullLines(std::wstring_view text) {
  std::vector<std::wstring> lines;
  std::wistringstream stream{std::wstring(text)};
  for (std::wstring line; std::getline(stream, line);) {
    std::wstring words;
    std::wistringstream inLine(line);
    for (std::wstring word; inLine >> word;) words += word;
    if (!words.empty() && line != test::kRule) lines.push_back(words);
  }
  return lines;
}

// A page of the engine without its tags is the source again (but for blanks: the conversion puts
// one more behind some words).
TEST(RenderedPage, showsTheSourceLines) {
  for (const char* file : {"Musterprojekt.bas", "Kunde.cls", "Eingabe.frm"}) {
    const auto expected = fullLines(fromAnsi(readFile(test::examplePath(file))));
    ASSERT_GT(expected.size(), 20U) << file;
    for (const StyleMode style : {StyleMode::Class, StyleMode::Inline}) {
      const RenderedPage page = renderPage(test::examplePage(file, style, false));
      EXPECT_EQ(fullLines(page.text), expected) << file;
      EXPECT_EQ(test::faultOf(page), "") << file;
    }
  }
}

// Both ways to write the colours look alike, and every call and head leads to its anchor.
TEST(RenderedPage, stylesLookAlike) {
  const RenderedPage page =
      renderPage(test::examplePage("Musterprojekt.bas", StyleMode::Class, true));
  const RenderedPage other =
      renderPage(test::examplePage("Musterprojekt.bas", StyleMode::Inline, true));
  EXPECT_EQ(page.text, other.text);
  ASSERT_EQ(page.runs.size(), other.runs.size());
  for (std::size_t i = 0; i < page.runs.size(); ++i)
    EXPECT_EQ(page.runs[i].looks, other.runs[i].looks) << "run " << i;
  EXPECT_GT(page.targets.size(), 5U);
  for (const std::wstring& target : page.targets)
    EXPECT_TRUE(page.anchorPosition(target.substr(1))) << toAnsi(target);
}

}  // namespace
}  // namespace tintline
