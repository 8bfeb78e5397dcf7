// Tests of output/rendered_page.h, output/page_markup.h and output/rich_text.h: pages as the
// preview shows them.
#include "output/rendered_page.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/codepage.h"
#include "base/file.h"
#include "output/rich_text.h"

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
    if (looks.bold) result << L"b";
    if (looks.italic) result << L"i";
    if (looks.link) result << L">" << page.targets[*looks.link];
    if (looks.link.has_value() != looks.underlined) result << (looks.link ? L" plain" : L"u");
    if (!plain) result << L"|";
    const std::wstring text = page.text.substr(run.start, run.length);
    result << (text == std::wstring(kRuleLength, kRuleCharacter) ? L"---" : text)
           << (plain ? L"" : L"]");
  }
  addAnchors(page.text.size());
  return toAnsi(result.str());
}

TEST(RenderedPage, ShowsMarkupAsABrowserDoes) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      // looks: of the style sheet, of attributes, inside each other
      {"<style type='text/css'>\r\n<!--\r\n.Code {\r\n color: #0000FF;\r\n background-color: "
       "#FFFFFF;\r\n}\r\n.Sub {\r\n color: #000080;\r\n font: italic bold;\r\n background-color: "
       "inherit;\r\n}\r\n-->\r\n</style></head><body>"
       "<span class='Code'>If</span> <span class=' sub'>S</span><span class='X'>x</span>",
       "[cffgffffff|If] [c80|S]x"},
      {"<span style=\" color:#008000; background: #00FF00; font: italic bold;\">' x</span>",
       "[c8000gff00|' x]"},
      {"<span style='color:#000001;background:#000002;font:bold'>a<span style='COLOR:#000003'>"
       "b</span>c</span>d",
       "[c1g2|a][c3g2|b][c1g2|c]d"},
      {"<span style='color:#000001'>a</span><span style='color:#000001'>b</span>", "[c1|ab]"},
      {"<span style='color: red; background: #12; border: 0; font; :; ;#000001'>a</span>", "a"},
      {"<i style='color:#1'><span style='color: #00001G; color: #+00010'>a</span>", "a"},
      {"<span style='color: #000001; color: #000002'>a</span>", "[c2|a]"},
      {"<body><style>.x {color:#000001}</style>", ".x {color:#000001}"},
      {"<style>.a {color:#000001} .b {<body><i class=a>x", "x"},
      // links and anchors
      {"&nbsp;<a HREF='#X'>X</a>", "\xA0[cff>#X|X]"},
      {"<a name='X'  HREF='#Index' class='Marks'>1:</a><span>    </span>x", "{X}[cff>#Index|1:] x"},
      {"a<br><a HREF='#Index' name='Y' class='Sub'>Sub Y()</a>", "a\n{Y}[cff>#Index|Sub Y()]"},
      {"a<span name='Z' style='color:#000001'>b</span>", "a{Z}[c1|b]"},
      {"<span style='color:#000001'>a<a href='x'>b</a><a href='x' "
       "style='color:#000002'>c</a></span>",
       "[c1|a][cff>x|b][c2>x|c]"},
      {"<span>a<a href='http://x/?a&amp;b&uuml;'>b</span>c", "a[cff>http://x/?a&b\xFC|b]c"},
      {"a<br><br><a name='E'></a>", "a{E}"},
      // lines, blanks, rules, frames
      {"<pre>\r\na  <br>\nb <br>\n\r\n</pre>", "a  \n\nb "},
      {"<pre>\r\n\r\na\rb\nc\r\nd\n\re\tf</pre>", "\na\nb\nc\nd\n\ne\tf"},
      {" \r\n a \t\r\n b<span> c</span> <br> \n d&nbsp; e <pre> f </pre>g",
       "a b c\nd\xA0 e\n f \ng"},
      {"<pre>a<hr><br>\nb</pre><hr>c<hr><hr>",
       "a\n[c808080|---]\n\n\nb\n[c808080|---]\nc\n[c808080|---]\n[c808080|---]"},
      {"<pre>a<br>\n<div style='border: thin solid #000080;'>'---<br>\n' b</div><br>"
       "<div style='border: thin solid #000080;'>c</pre>d",
       "a\n\n[c80|---]\n'---\n\n' b\n[c80|---]\n\n[c80|---]\nc\n[c80|---]\nd"},
      {"a<div>b</div>c", "a\nb\nc"},
      {"<html><body><pre>\r\n\r\n</pre></body></html>", ""},
      {"", ""},
      // what comments of the source can bring in
      {"a<script>alert(1)</script>b<img src=http://x/y onerror='z'><iframe src=x>", "aalert(1)b"},
      {"</span></a></div></pre></x>a", "a"},
      {"<span style='color:#000001'><pre>a\n</span>b</pre>c</span>d", "[c1|a]\n[c1|b]\n[c1|c]d"},
      {"<div><span style='color:#000001'>a</div>b</span>", "[c1|a]\nb"},
      {"<a href='javascript:x'>a</a><a href=\"\\\\s\\x\">b</a>",
       "[cff>javascript:x|a][cff>\\\\s\\x|b]"},
      {"<pre>a\0b\1c\x0B\x20\fe&#7;\x7F\x80\xFF</pre>"sv, "abc e\x7F\x80\xFF"},
      // tags, comments, quotes that are none
      {"<A HREF=x?y=1 class = Sub >a</a><a name=x NAME=y><a name name= class>",
       "[cff>x?y=1|a]{x}{class}"},
      {"a<br/>b<br />c<a =x='y' =><a '=y name=z>", "a\nb\nc{z}"},
      {"<a name=\"a'>b\">1", "{a'>b}1"},
      {"a<b>c a< b>c a<>b 1<2>1 </ x>", "ac a< b>c a<>b 1<2>1 </ x>"},
      {"a<!-- <b> -- > -->b<!doctype x>c<?x?>d", "abcd"},
      {"<!-- <b> <!-- x", "<!-- <!-- x"},
      {"<a name='x> <b>y", "<a name='x> y"},
      {"<a name='<b>y", "<a name='y"},
      {"<b>x<a <b", "x<a <b"},
      {"a<br>b<span x='>' <b y='>'", "a\nb<span x='>' <b y='>'"},
      {"<a\0b name='\0'>c<a name=d"sv, "c<a name=d"sv},
      {"\xC4\x80<br>", "\xC4\x80"},
      // references
      {"&lt;&gt;&amp;&quot;&apos;&Uuml;&szlig;&euro;&#228;&#xe4;&#XE4;&#x20AC;",
       "<>&\"'\xDC\xDF\x80\xE4\xE4\xE4\x80"},
      {"a & b &lt &LT; &; &", "a & b &lt &LT; &; &"},
      {"&#; &#x; &#xD800; &#8232; &#8233; &#-1; &#1x; &#99999999; &nichts;",
       "&#; &#x; &#xD800; &#8232; &#8233; &#-1; &#1x; &#99999999; &nichts;"},
  };
  for (const auto& [html, expected] : rows)
    EXPECT_EQ(described(renderPage(html)), expected) << html;
}

// What such a page holds, as tests/golden has it, and what it cannot hold.
TEST(RenderedPage, ShowsAnExactPageAsABrowserDoes) {
  constexpr std::string_view kHead =
      "<!DOCTYPE html>\n<head><style>\nheader,nav,pre{border-color:#000009}\nnav a{color:#000001}\n"
      "main h2{background-color:#000002}\n.nf,.nc{color:#000003}\nmain h2 .nf{font-weight:700}\n"
      "a[id]:empty:before{content:attr(id);color:#000004}\n.c{color:#000005}\n.c{font-style:italic}"
      "\n"
      "@media screen and (x){:root{y}.c{color:#000006}}\n</style></head>\n<body>\n";
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"<a class=\"skip\" href=\"#code\">Zum Code</a>\n<header><h1>M</h1><p>1\n  "
       "Zeile</p></header>\n"
       "<nav><h2>A</h2><ul>\n<li><a href=\"#P\" title=\"Sub\">P</a></li>\n</ul></nav>\n"
       "<main id=\"code\"><pre><code>x\n</code></pre></main>",
       "[b|M]\n1 Zeile\n[c9|---]\n[b|A]\n  [c1>#P plain|P]\n[c9|---]\nx{code}"},
      {"<main><section id=\"P\"><h2><code><a id=7 href=#7></a>S <span "
       "class=nf>P</span>\n</code></h2>"
       "<pre><code><a id=8 href=#8></a>\t<span class=c>&lt; "
       "\xC3\xBC\xF0\x9F\x98\x80</span>\n\nz</code></pre>",
       "{P}{7}[c4g2>#7 plain|    7][g2|  S ][c3g2b|P]\n{8}[c4>#8 plain|    8]  \t[c5i|< "
       "\xFC??]\n\nz"},
      {"<main><pre><code><a class=v href=\"#x\">x</a><a class=nc "
       "href=\"#y\">y</a>\xE2\x80\xA8\f<b>k",
       "[>#x plain|x][c3>#y|y]?k"},
      {"</main></nav><details><summary>K</summary><pre><code>h</code></pre></details>", "K\nh"},
      {"<main><pre style=\"color:#000007\"><code><span style=\"color:#000008\">n</span>",
       "[c8|n]"}};
  for (const auto& [html, expected] : rows) {
    const RenderedPage page = renderPage(std::string(kHead).append(html));
    EXPECT_EQ(described(page), expected) << html;
  }
}

TEST(RenderedPage, FindsAnchorsAndRuns) {
  const RenderedPage page =
      renderPage("ab<a name='x'></a><a name='X'></a><a href='#x'>cd</a><a name='x'>");
  EXPECT_EQ(page.anchorPosition(L"x"), 2U);
  EXPECT_EQ(page.anchorPosition(L"y"), std::nullopt);
  EXPECT_EQ(page.runAt(1), page.runs.data());
  EXPECT_EQ(page.runAt(2), &page.runs[1]);
  EXPECT_EQ(page.runAt(3), &page.runs[1]);
  EXPECT_EQ(page.runAt(4), nullptr);
}

// Both ways to write the colours look alike, and every call and head leads to its anchor.
TEST(RenderedPage, StylesLookAlike) {
  const RenderedPage page = renderPage(readFile("tests/golden/sample/expected-preview.htm"));
  const RenderedPage other =
      renderPage(readFile("tests/golden/sample/expected-preview-inline.htm"));
  EXPECT_EQ(described(page), described(other));
  EXPECT_GT(page.targets.size(), 5U);
  for (const std::wstring& target : page.targets)
    EXPECT_TRUE(page.anchorPosition(target.substr(1))) << toAnsi(target);
}

TEST(RichText, WritesCharactersLooksAndPieces) {
  const auto body = [](const std::string& rtf) {
    const std::size_t from = rtf.find("\\fs20 ") + 6;
    EXPECT_TRUE(rtf.ends_with('}'));
    return rtf.substr(from, rtf.size() - from - 1);
  };
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"a\\b {c}\xE4\x80&#xABCD;", "a\\\\b \\{c\\}\\u228?\\u8364?\\u-21555?"},
      {"<pre>a\tb\nc</pre>", "a\\tab b\\par\r\nc"},
      {"<span style='color:#000001'>1</span>2", "{\\cf1 1}2"},
      {"<a href=x style='color:#0000FF; background:#FFFFFF'>x</a>", "{\\cf1\\highlight2\\ul x}"},
      {"<span style='color:#000001'>a</span><span "
       "style='color:#000002;background:#000001'>b</span>",
       "{\\cf1 a}{\\cf2\\highlight1 b}"},
  };
  for (const auto& [html, expected] : rows) EXPECT_EQ(body(richText(renderPage(html))), expected);
  EXPECT_NE(richText(renderPage("<span style='color:#010203; background:#FF8000'>x</span>"))
                .find("{\\colortbl;\\red1\\green2\\blue3;\\red255\\green128\\blue0;}"),
            std::string::npos);

  const RenderedPage page =
      renderPage("<pre>abcd\n\ne<span style='color:#000001'>f</span>g\nh</pre>");
  const std::size_t ends[][3] = {{0, 4, 4}, {0, 3, 4},  {0, 5, 5},   {0, 9, 9},   {4, 1, 5},
                                 {5, 1, 9}, {9, 1, 11}, {0, 11, 11}, {11, 5, 11}, {0, 10, 9}};
  for (const auto& [from, characters, end] : ends)
    EXPECT_EQ(pieceEnd(page, from, characters), end) << from << " " << characters;
  EXPECT_EQ(body(richText(page, 5, 9)), "\\par\r\ne{\\cf1 f}g");
  EXPECT_EQ(body(richText(page, 7, 9)), "{\\cf1 f}g");
}

}  // namespace
}  // namespace tintline
