// Tests of output/page_markup.h.
#include "output/page_markup.h"

#include <gtest/gtest.h>

namespace tintline {
namespace {

using namespace std::string_view_literals;

// All of a text: tags as "[name class=… ]", comments as "[!]", the rest as it is.
std::string readAll(std::string_view text) {
  TagReader reader(text);
  std::string result;
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] != '<') {
      result += text[i++];
      continue;
    }
    const TagReader::Result found = reader.read(i);
    EXPECT_GT(found.end, i);
    EXPECT_LE(found.end, text.size());
    if (found.tag) {
      const auto attribute = [](std::string_view name, const auto& value) {
        return value ? " " + std::string(name) + "=" + std::string(*value) : std::string();
      };
      const Tag& tag = *found.tag;
      result.append(tag.closing ? "[/" : "[").append(tag.name);
      result += attribute("class", tag.className) + attribute("style", tag.style) +
                attribute("name", tag.anchor) + attribute("href", tag.target) + "]";
    } else {
      result += found.isText ? std::string(text.substr(i, found.end - i)) : "[!]";
    }
    i = found.end;
  }
  return result;
}

TEST(PageMarkup, tags) {
  struct Case {
    const char* name;
    std::string_view text, expected;
  };
  const Case cases[] = {
      {"the highlighter's", "<span class='Rem'>' x</span>", "[span class=Rem]' x[/span]"},
      {"two blanks in front of an attribute", "<a name='X'  HREF='#Index' class='Marks'>",
       "[a class=Marks name=X href=#Index]"},
      {"double quotes hold single ones and brackets", "<span style=\"a'>b\">", "[span style=a'>b]"},
      {"a value without quotes", "<A HREF=x?y=1 class = Sub >", "[A class=Sub href=x?y=1]"},
      {"the first of two attributes counts", "<a name=x NAME=y>", "[a name=x]"},
      {"attributes without a value", "<a name name= class>", "[a name=class]"},
      {"a closing slash", "<br/><br />", "[br][br]"},
      {"no letter, no tag", "a<b>c a< b>c a<>b 1<2>1 </ x>", "a[b]c a< b>c a<>b 1<2>1 </ x>"},
      {"a sign of equality without a name", "<a =x='y' =>", "[a]"},
      // a browser takes all up to the next ">"
      {"a comparison of a comment", "' a <b</span>", "' a [b<]"},
      {"a comment", "a<!-- <b> -- > -->b<!doctype x>c<?x?>", "a[!]b[!]c[!]"},
      {"a comment without an end is text", "<!-- <b> <!-- x", "<!-- [b] <!-- x"},
      {"a quote without an end is text up to it", "<a name='x> <b>", "<a name='x> [b]"},
      {"a tag without an end is text", "<b>x<a <b", "[b]x<a <b"},
      {"an end inside quotes is none", "<a x='>' <b y='>'", "<a x='>' <b y='>'"},
      {"NULs are ordinary characters", "<a\0b name='\0'>"sv, "[a\0b name=\0]"sv},
  };
  for (const Case& c : cases) EXPECT_EQ(readAll(c.text), c.expected) << c.name;
}

TEST(PageMarkup, references) {
  struct Case {
    std::string_view value;
    std::wstring_view expected;
  };
  const Case cases[] = {
      {"&lt;&gt;&amp;&quot;&apos;&nbsp;", L"<>&\"'\u00A0"},
      {"&Uuml;ber&uuml;b&szlig;&euro;", L"\u00DCber\u00FCb\u00DF\u20AC"},
      {"\xDC&auml;", L"\u00DC\u00E4"},
      {"&#228;&#xe4;&#XE4;&#x20AC;", L"\u00E4\u00E4\u00E4\u20AC"},
      // none: an "&" of the source
      {"a & b &lt &LT; &; &", L"a & b &lt &LT; &; &"},
      {"&#; &#x; &#xD800; &#65532; &#8232; &#-1; &#1x; &#99999999;",
       L"&#; &#x; &#xD800; &#65532; &#8232; &#-1; &#1x; &#99999999;"},
      {"&nichts; &HFF; &uuuuuuuuuml;", L"&nichts; &HFF; &uuuuuuuuuml;"},
  };
  for (const Case& c : cases) EXPECT_EQ(attributeText(c.value), c.expected) << c.value;
}

std::string described(const Looks& looks) {
  const auto color = [](const char* name, std::optional<Color> value) {
    return value ? name + std::to_string(*value) + " " : std::string();
  };
  return color("c", looks.color) + color("g", looks.background) + color("r", looks.border) +
         (looks.bold ? "b" : "") + (looks.italic ? "i" : "");
}

TEST(PageMarkup, declarations) {
  struct Case {
    const char* name;
    std::string_view declarations, expected;
  };
  const Case cases[] = {
      {"of the style sheet",
       "\r\n color: #000010;\r\n font: italic bold;\r\n"
       " background-color: #00000F;\r\n",
       "c16 g15 bi"},
      {"of a style attribute", " color:#000010; background: inherit; font: italic bold;", "c16 bi"},
      {"of a frame", "border: thin solid #000080;", "r128 "},
      {"without blanks and semicolon", "COLOR:#00000a;Background:#00000B;font:bold", "c10 g11 b"},
      {"not understood", "color: red; background: #12; border: 0; font; :; ;#000001", ""},
      {"not hexadecimal", "color: #00001G; background: #+00010; border: #-00001", ""},
      {"the last one counts", "color: #000001; color: #000002", "c2 "},
  };
  for (const Case& c : cases)
    EXPECT_EQ(described(readDeclarations(c.declarations)), c.expected) << c.name;
}

}  // namespace
}  // namespace tintline
