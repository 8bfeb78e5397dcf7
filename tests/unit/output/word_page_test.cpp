// Tests of output/word_page.h.
#include "output/word_page.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/convert.h"

namespace tintline::test {
namespace {

std::string page(const std::vector<std::string>& lines, const std::vector<bool>& selected = {}) {
  std::ostringstream text;
  writeWordPage(text, defaultColors(),
                {.count = lines.size(),
                 .line = [&](std::size_t i) { return std::string_view(lines[i]); },
                 .selected = [&](std::size_t i) { return i < selected.size() && selected[i]; }});
  return text.str();
}

// What stands on the page for one line.
std::string onPage(const std::string& line) {
  const std::string text = page({line});
  const std::size_t start = text.find("<pre>\r\n") + 7;
  return text.substr(start, text.find("\r\n</pre>") - start);
}

TEST(WordPage, LinesKeepTheirColoursAndNothingElse) {
  const std::string blue = "<span style=\" color:#0000FF; background: #FFFFFF;\">";
  const std::string head =
      "<span style=\" color:#000080; background: #DFDFDF; font-style: italic; font-weight: "
      "bold;\">";
  const struct {
    std::string line, text;
  } rows[] = {
      {"", ""},
      {"  x = 1 ", "  x = 1 "},
      {"<span class='Code'>If</span> a &lt; b", blue + "If</span> a &lt; b"},
      {"<span style=\" color:#0000FF; background: #FFFFFF;\">If</span>", blue + "If</span>"},
      {"<a name='A'  HREF='#Index' class='Code'>1:</a>", blue + "1:</span>"},
      {"<a HREF='#A'>A</a> ", "<span>A</span> "},
      {"<span name='A' class='Sub'>Sub A()</span>", head + "Sub A()</span>"},
      {"<hr>", "<hr>"},
      // what code may hold
      {"a & b &H10 &amp; a > b", "a &amp; b &amp;H10 &amp;amp; a &gt; b"},
      {"' <img src='http://x/'> <b>", "' &lt;img src='http://x/'&gt; &lt;b&gt;"},
      {"<span style=\"background:url(x)\">y</span>", "<span>y</span>"},
      {"<span onclick='x'>y</span>", "<span>y</span>"},
      {"a < b < c", "a &lt; b &lt; c"},
      {"\xC4\x80", "&#196;&#8364;"},
  };
  for (const auto& row : rows) EXPECT_EQ(onPage(row.line), row.text) << row.line;
}

TEST(WordPage, SelectedLinesStandAloneElseAllOfThem) {
  EXPECT_NE(page({"a", "b", "c"}).find("<pre>\r\na\r\nb\r\nc\r\n</pre>"), std::string::npos);
  EXPECT_NE(page({"a", "b", "c"}, {true, false, true}).find("<pre>\r\na\r\nc\r\n</pre>"),
            std::string::npos);
}

TEST(WordPage, NoStyleSheetComesAlong) {
  const std::string text = page({"<span class='Rem'>' x</span>"});
  EXPECT_EQ(text.find("<style"), std::string::npos);
  EXPECT_EQ(text.find("class="), std::string::npos);
}

}  // namespace
}  // namespace tintline::test
