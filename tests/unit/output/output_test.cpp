// Tests of output/: links, names and texts of what leaves the program. Whole documents are golden
// files; tests/unit/output/rendered_page_test.cpp has the preview.
#include <gtest/gtest.h>

#include <sstream>

#include "base/codepage.h"
#include "output/clipboard_text.h"
#include "output/export_name.h"
#include "output/html_document.h"
#include "output/html_format.h"
#include "output/link_target.h"
#include "output/word_page.h"
#include "tests/support/convert.h"

namespace tintline::test {
namespace {

using Lines = std::vector<std::string>;

TEST(LinkTarget, OnlyAnchorsAndPlainAddressesLeadSomewhere) {
  const auto told = [](const std::wstring& target) {
    const LinkTarget found = classifyLink(target);
    return (found.kind == LinkTarget::Kind::Anchor     ? L"anchor "
            : found.kind == LinkTarget::Kind::External ? L"external "
                                                       : L"refused ") +
           found.value;
  };
  for (const wchar_t* anchor : {L"#Index", L"#", L"#javascript:alert(1)"})
    EXPECT_EQ(told(anchor), std::wstring(L"anchor ") + (anchor + 1));
  const std::wstring longest = L"http://" + std::wstring(1993, L'x');
  for (const std::wstring& address : std::initializer_list<std::wstring>{
           L"http://example.org", L"HTTPS://Zz.org/a/b.htm?c=1&d=%20#e~!", L"http://[::1]/",
           L"mailto:jemand@example.org", longest})
    EXPECT_EQ(told(address), L"external " + address);
  for (const std::wstring& refused : std::initializer_list<std::wstring>{
           longest + L"x", L"javascript:alert(1)", L"file:///C:/Windows/notepad.exe",
           L"ms-its:C:\\x.chm::/y", L"httpx://example.org/", L"\\\\server\\share\\x.exe",
           L"//example.org/x", L"notepad.exe", L"",
           // nearly an address
           L"http://", L"http:///x", L"http:example.org", L"http://@x", L"mailto:?attach=x",
           L"  http://example.org", L"http://example.org/a b", L"http://example.org/\" -x",
           L"http://x/" + std::wstring(1, L'\0') + L"x", L"http://x/\x7F", L"http://x\u202E/"})
    EXPECT_EQ(told(refused), L"refused ") << toUtf8(refused);
}

TEST(ExportName, IsMadeOfThePathAndTheFilter) {
  const std::pair<std::vector<std::wstring>, const wchar_t*> names[] = {
      {{}, L""},
      {{L"a.b.frm"}, L"a.b"},
      {{L"Klasse.cls"}, L"Klasse"},
      {{L"MODUL1.BAS"}, L"MODUL1.BAS"},
      {{L"Brief 1.doc", L"Modul 1 (3)", L"Lesen (12 Z.)"}, L"Brief1.doc_Modul1_Lesen"},
      {{L"C:\\x\\y"}, L"C:_x_y"},
      {{L"a(b)c(d)e", L" (b)", L"c"}, L"ace_c"},
      {{L"a(b(c)d)e"}, L"ad)e"},
      {{L"a)b(c"}, L"a)b"},
      {{L"Modul1.bas", L"Übersicht Ω"}, L"Modul1.bas_ÜbersichtΩ"},
  };
  for (const auto& [parts, name] : names) EXPECT_EQ(defaultExportName(parts), name);
  const std::tuple<const wchar_t*, int, const wchar_t*> chosen[] = {
      {L"C:\\a\\x.txt", 2, L"C:\\a\\x.html"},
      {L"C:\\a.b\\x", 1, L"C:\\a.b\\x.htm"},
      {L"a.b/x", 2, L"a.b/x.html"},
      {L"x.y.z", 1, L"x.y.htm"},
      {L"x.", 1, L"x.htm"},
      {L"x", 2, L"x.html"},
  };
  for (const auto& [typed, filter, name] : chosen) EXPECT_EQ(forceExtension(typed, filter), name);
}

// A list whose lines are selected when they begin with "*".
SelectableLines list(const Lines& lines) {
  return {lines.size(), [&lines](std::size_t i) -> std::string_view { return lines[i]; },
          [&lines](std::size_t i) { return lines[i].starts_with('*'); }};
}

TEST(ClipboardText, HoldsTheSelectedLinesOrAll) {
  const struct {
    std::string PreCode;
    Lines lines;
    std::string PostCode, text;
  } rows[] = {
      {"A", {"*x", "n", "*y"}, "B", "A\r\n*x\r\n*y\r\nB"},
      {"", {"x", "y"}, "B", "\r\nx\r\ny\r\nB"},
      {"A", {"x", "y"}, "", "A"},  // a PreCode without selected lines is copied alone
      {"", {"*x", "y"}, "", "\r\n*x"},
      {"", {}, "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(HTMLKopieren(row.PreCode, list(row.lines), row.PostCode), row.text);
    if ((row.PreCode + row.PostCode).empty()) {
      EXPECT_EQ(Kopieren(list(row.lines)), row.text);
    }
  }
}

// Every place is that of a byte; a receiver cuts there.
TEST(HtmlFormat, ItsHeadTellsWhereEverythingIs) {
  for (const std::string& fragment :
       {std::string("<pre>\xC3\xA4</pre>"), std::string(99'999, 'x')}) {
    const std::string text = htmlFormat(fragment);
    const auto place = [&](const std::string& name) {
      const std::size_t at = text.find("\r\n" + name + ":") + name.size() + 3;
      EXPECT_EQ(text.substr(at + 10, 2), "\r\n");
      return std::stoul(text.substr(at, 10));
    };
    const std::size_t begin = place("StartFragment"), end = place("EndFragment");
    EXPECT_EQ(text.substr(begin, end - begin), fragment);
    EXPECT_TRUE(text.starts_with("Version:1.0\r\n"));
    EXPECT_TRUE(text.substr(0, begin).ends_with("<html><body>\r\n<!--StartFragment-->"));
    EXPECT_EQ(text.substr(place("StartHTML"), 6), "<html>");
    EXPECT_EQ(text.substr(end), "<!--EndFragment-->\r\n</body></html>");
    EXPECT_EQ(place("EndHTML"), text.size());
  }
}

TEST(HtmlDocument, ThePlaceholderIsAddedToTheHtmlText) {
  std::string htmlText = "alt";
  std::ostringstream page;
  DummySeite(page, DocumentFrame(defaultColors(), StyleMode::Inline), htmlText);
  EXPECT_EQ(htmlText,
            "altIn diesem Bereich wird der<span class='Parms'> VB(A)-Code</span> angezeigt.");
  EXPECT_TRUE(page.str().ends_with("<body><a name='Index'></a>\r\n" + htmlText +
                                   "\r\n</body>\r\n</html>\r\n"));
}

TEST(WordPage, LinesKeepTheirColoursAndNothingElse) {
  const std::string blue = "<span style=\" color:#0000FF; background: #FFFFFF;\">";
  const auto page = [](const Lines& lines) {
    std::ostringstream text;
    writeWordPage(text, defaultColors(), list(lines));
    EXPECT_EQ(text.str().find("<style"), std::string::npos);
    const std::size_t start = text.str().find("<pre>\r\n") + 7;
    return text.str().substr(start, text.str().find("\r\n</pre>") - start);
  };
  const std::pair<std::string, std::string> rows[] = {
      {"", ""},
      {"  x = 1 ", "  x = 1 "},
      {"<span class='Code'>If</span> a &lt; b", blue + "If</span> a &lt; b"},
      {blue + "If</span>", blue + "If</span>"},
      {"<a name='A'  HREF='#Index' class='Code'>1:</a>", blue + "1:</span>"},
      {"<a HREF='#A'>A</a> ", "<span>A</span> "},
      {"<span name='A' class='Sub'>Sub A()</span><hr>",
       "<span style=\" color:#000080; background: #DFDFDF; font-style: italic; font-weight: "
       "bold;\">Sub A()</span><hr>"},
      // what code may hold
      {"a & b &H10 &amp; a > b", "a &amp; b &amp;H10 &amp;amp; a &gt; b"},
      {"' <img src='http://x/'> <b>", "' &lt;img src='http://x/'&gt; &lt;b&gt;"},
      {"<span style=\"background:url(x)\" onclick='x'>y</span>", "<span>y</span>"},
      {"a < b < c", "a &lt; b &lt; c"},
      {"\xC4\x80", "&#196;&#8364;"},
  };
  for (const auto& [line, text] : rows) EXPECT_EQ(page({line}), text) << line;
  EXPECT_EQ(page({"a", "b"}), "a\r\nb");
  EXPECT_EQ(page({"*a", "b", "*c"}), "*a\r\n*c") << "selected lines stand alone";
}

}  // namespace
}  // namespace tintline::test
