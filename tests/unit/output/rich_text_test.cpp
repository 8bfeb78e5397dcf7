// Tests of output/rich_text.h.
#include "output/rich_text.h"

#include <gtest/gtest.h>

#include "tests/support/rendered_page.h"
#include "tests/support/rich_text.h"

namespace tintline {
namespace {

// What stands between the head and the closing brace.
std::string body(std::string_view html) {
  const std::string rtf = richText(renderPage(html));
  const std::string_view begin = "\\fs20 ";
  const std::size_t from = rtf.find(begin) + begin.size();
  EXPECT_TRUE(rtf.ends_with('}'));
  return rtf.substr(from, rtf.size() - from - 1);
}

TEST(RichText, characters) {
  struct Case {
    const char* name;
    std::string_view html, expected;
  };
  const Case cases[] = {
      {"those with a meaning", "a\\b{c}", "a\\\\b\\{c\\}"},
      {"umlauts and the euro", "\xE4\x80", "\\u228?\\u8364?"},
      {"beyond 15 bits the number is negative", "&#xABCD;", "\\u-21555?"},
      {"line ends and tabs", "<pre>a\tb\nc</pre>", "a\\tab b\\par\r\nc"},
      {"digits behind a number are text", "<span style='color:#000001'>1</span>2", "{\\cf1 1}2"},
      {"all looks", "<a href=x style='color:#0000FF; background:#FFFFFF; font: bold italic'>x</a>",
       "{\\cf1\\highlight2\\b\\i\\ul x}"},
      {"a colour has one number",
       "<span style='color:#000001'>a</span><span "
       "style='color:#000002;background:#000001'>b</span>",
       "{\\cf1 a}{\\cf2\\highlight1 b}"},
      {"nothing", "", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(body(c.html), c.expected) << c.name;
}

TEST(RichText, colorTable) {
  const std::string rtf =
      richText(renderPage("<span style='color:#010203; background:#FF8000'>x</span>"));
  EXPECT_NE(rtf.find("{\\colortbl;\\red1\\green2\\blue3;\\red255\\green128\\blue0;}"),
            std::string::npos)
      << rtf;
}

TEST(RichText, piecesEndInFrontOfLineEnds) {
  const RenderedPage page = renderPage("<pre>abcd\n\nefg\nh</pre>");
  struct Case {
    std::size_t from, characters, end;
  };
  // 0123 4 5 678 9 10
  const Case cases[] = {{0, 4, 4}, {0, 3, 4},  {0, 5, 5},   {0, 9, 9},   {4, 1, 5},
                        {5, 1, 9}, {9, 1, 11}, {0, 11, 11}, {11, 5, 11}, {0, 10, 9}};
  for (const Case& c : cases)
    EXPECT_EQ(pieceEnd(page, c.from, c.characters), c.end) << c.from << " " << c.characters;
}

// Read back, the pieces are the page's text: positions in a control agree with the page's.
TEST(RichText, positionsAreThoseOfThePage) {
  const RenderedPage page =
      renderPage(test::examplePage("Musterprojekt.bas", StyleMode::Class, true));
  EXPECT_EQ(test::plainText(richText(page)), page.text);
  std::wstring pieces;
  for (std::size_t from = 0; from < page.text.size();) {
    const std::size_t end = pieceEnd(page, from, 300);
    ASSERT_GT(end, from);
    pieces += test::plainText(richText(page, from, end));
    from = end;
  }
  EXPECT_EQ(pieces, page.text);
}

}  // namespace
}  // namespace tintline
