// Exact listings: what each format makes of small modules, and the colours.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "listing/document.h"
#include "listing/module_targets.h"
#include "vb/tokenizer.h"

namespace tintline::listing {
namespace {

std::string listed(Format format, const Options& options, const std::vector<std::u8string>& texts,
                   Place place = Place::OwnPages) {
  std::vector<vb::Module> modules;
  vb::Project project;
  Targets targets(options, place);
  const vb::WordLists words;
  for (const std::u8string& text : texts) {
    modules.push_back(vb::readModule(text, u8"M", vb::ModuleKind::Standard, words));
    project.add(modules.back());
    targets.add(modules.back(), modules.back().name + u8".htm");
  }
  project.close();
  std::ostringstream out;
  const auto document = makeDocument(format, out, options, targets, u8"T<i>tel");
  const std::size_t shown = place == Place::OnePage ? modules.size() : 1;
  for (std::uint32_t i = 0; i < shown; ++i)
    document->add({modules[i], project.resolve(modules[i], i), i});
  document->close();
  return out.str();
}

std::string bytes(const std::u8string& text) { return {text.begin(), text.end()}; }

TEST(listing, LinesInEachWay) {
  const Options plain, none{.links = Links::None}, procedures{.links = Links::Procedures},
      untitled{.titles = false}, numbered{.lineNumbers = true}, inlined{.style = Style::Inline},
      chosen{.lines = {{2, 2}}}, dropped{.header = Header::Drop};
  const std::u8string calls = u8"Dim v\r\nSub A()\rA: v = \"<\"\nEnd Sub";
  const struct {
    const Options& options;
    std::u8string text;
    std::u8string lines;
  } kCases[] = {
      {plain, u8"", u8""},
      {plain, u8"x", u8"x\n"},
      {plain, u8"'a _\r\nb\n", u8"<span class=c>'a _</span>\n<span class=c>b</span>\n"},
      {plain, u8"a = b _\n  & c\n", u8"a = b _\n  &amp; c\n"},
      {plain, u8"Const [x y] = 1:",
       u8"<span class=k>Const</span> <span id=\"x_y\">[x y]</span> = "
       u8"<span class=m>1</span>:\n"},
      {plain, std::u8string(u8"'\1\0\x7F", 4),
       u8"<span class=c>'<span title=\"U+0001\">␁</span><span title=\"U+0000\">\uFFFD</span>"
       u8"<span title=\"U+007F\">␡</span></span>\n"},
      {plain, u8"'\u202E",
       u8"<span class=c>'<span style=unicode-bidi:isolate title=\"U+202E\">"
       u8"\u202E</span></span>\n"},
      {untitled, calls,
       u8"<span class=k>Dim</span> <span id=\"v\">v</span>\n<span class=k>Sub</span> "
       u8"<span id=\"A\" class=nf>A</span>()\n<span id=\"A.A\" class=nl>A</span>: <a class=v "
       u8"href=\"#v\">v</a> = <span class=s>\"&lt;\"</span>\n<span class=k>End</span> "
       u8"<span class=k>Sub</span>\n"},
      {plain, u8"Dim a, b As Long\nSub S(): b = 1: End Sub",
       u8"<span class=k>Dim</span> <span id=\"a\">a</span>, <span id=\"b\">b</span> "
       u8"<span class=k>As</span> <span class=kt>Long</span>\n<span class=k>Sub</span> <span "
       u8"id=\"S\" "
       u8"class=nf>S</span>(): <a class=v href=\"#b\" title=\"Dim b As Long\">b</a> = "
       u8"<span class=m>1</span>: <span class=k>End</span> <span class=k>Sub</span>\n"},
      {none, u8"Sub S()\nS\nEnd Sub",
       u8"<span class=k>Sub</span> <span id=\"S\" class=nf>S</span>()\n"
       u8"S\n<span class=k>End</span> <span class=k>Sub</span>\n"},
      {procedures, u8"Dim v\nSub S()\nS v\nEnd Sub",
       u8"<span class=k>Dim</span> <span id=\"v\">v</span>\n<span class=k>Sub</span> <span "
       u8"id=\"S\" "
       u8"class=nf>S</span>()\n<a href=\"#S\" title=\"Sub S()\">S</a> v\n<span class=k>End</span> "
       u8"<span class=k>Sub</span>\n"},
      {numbered, u8"\n'", u8"<a id=1 href=#1></a>\n<a id=2 href=#2></a><span class=c>'</span>\n"},
      {inlined, u8"'c", u8"<span style=\"color:#1a6e1a;font-style:italic\">'c</span>\n"},
      {chosen, u8"Dim v\nv = w\n'", u8"v = w\n"},  // nothing leads to a line that is not shown
      {dropped, u8"Attribute VB_Name = \"N\"\nx", u8"x\n"},
  };
  for (const auto& each : kCases)
    EXPECT_EQ(listed(Format::Lines, each.options, {each.text}), bytes(each.lines))
        << bytes(each.text);
}

TEST(listing, BlocksOfAModule) {
  const std::u8string text =
      u8"Attribute VB_Name = \"N\"\n\n' about A\n' more\nSub A( _\n)\n  x\nEnd Sub: Sub B()\nEnd "
      u8"Sub\n"
      u8"' about C\n\nSub C(): End Sub\n#If 0 Then\nSub D()\n#Else\nSub D(x)\n#End If\nEnd Sub";
  std::string html = listed(Format::Body, {.links = Links::None}, {text});
  std::string tags;  // with the first word of each block
  for (std::size_t at = 0; (at = html.find('<', at)) != std::string::npos;) {
    const std::size_t end = html.find('>', at) + 1;
    const std::string tag = html.substr(at, end - at);
    if (tag.find("span") == std::string::npos && tag.find("code") == std::string::npos) tags += tag;
    at = end;
  }
  EXPECT_EQ(tags,
            "<div class=\"highlight\" id=\"0\" "
            "translate=\"no\"><details><summary></summary><pre></pre></details>"
            "<pre></pre><section id=\"A\"><pre></pre><h2></h2><pre></pre></section>"
            "<pre></pre><section id=\"C\"><h2></h2></section>"
            "<pre></pre><section id=\"D\"><h2></h2><pre></pre></section></div>");
  EXPECT_NE(html.find("<span id=\"B\" class=nf>B</span>"), html.npos);
  EXPECT_NE(html.find("<span id=\"D.2\" class=nf>D</span>"), html.npos);
}

TEST(listing, IdsAreUniqueWithoutCase) {
  const std::u8string text =
      u8"Dim A, a, [a.2], [1], [%<b>&\"' ], Ä, ä\nType T\nF As Long\nf As T\nEnd "
      u8"Type\nProperty Get "
      u8"P()\nL: End Property\nProperty Let P(l)\n10\nEnd Property\nDim [T.F], [P.Get]\n";
  const Options options;
  const vb::Module module = vb::readModule(text, u8"M", vb::ModuleKind::Standard, vb::WordLists());
  const ModuleTargets targets(module, options, u8"", u8"");
  std::u8string ids;
  for (std::uint32_t i = 0; i < module.declarations.size(); ++i)
    if (!targets.id(i).empty()) (ids += targets.id(i)) += u8' ';
  EXPECT_EQ(bytes(ids),
            bytes(u8"A a.2 a.2.2 _1 __b_____ Ä ä.2 T T.F T.f.2 P.Get P.Get.L P.Let P.Let._10 "
                  u8"T.F.3 P.Get.2 "));
}

TEST(listing, TheIndexIsGroupedAndInOrder) {
  const std::u8string text =
      u8"Event E()\nPrivate WithEvents x As C\nConst K = 1\nPrivate Sub x_Ding()\nEnd Sub\nSub "
      u8"Zug()\n"
      u8"End Sub\nSub Öl()\nEnd Sub\nSub Ohr()\nEnd Sub\nPrivate Sub Class_Initialize()\nEnd Sub\n"
      u8"Private Sub p_q()\nEnd Sub\nFriend Property Set P(a)\nEnd Property\nEnum En\nA\nEnd Enum\n"
      u8"Declare Sub D Lib \"l\" ()\n";
  const vb::Module module = vb::readModule(text, u8"M", vb::ModuleKind::Class, vb::WordLists());
  std::u8string labels;
  for (const auto& group : indexOf(module)) {
    for (const std::uint32_t i : group)
      (labels += labelOf(module, module.declarations[i])) += u8' ';
    labels += u8'|';
  }
  EXPECT_EQ(bytes(labels),
            bytes(u8"Ohr Öl P (Set) Zug |Class_Initialize x_Ding |p_q |E |En |D |K |"));
}

void holds(const std::string& text, const char* part) {
  EXPECT_NE(text.find(part), text.npos) << part << "\n" << text;
}

TEST(listing, LinksToOtherModules) {
  const std::vector<std::u8string> texts = {
      u8"Attribute VB_Name = \"A\"\nSub S()\nB.T: B.S\nEnd Sub\n",
      u8"Attribute VB_Name = \"B\"\nPublic Sub T()\nEnd Sub\nSub S()\nEnd Sub\n"};
  const Options all{.links = Links::All, .titles = false};
  holds(listed(Format::Page, all, texts), "<a href=\"B.htm\">B</a>.<a href=\"B.htm#T\">T</a>:");
  const std::string one = listed(Format::Page, all, texts, Place::OnePage);
  holds(one, "<a href=\"#B\">B</a>.<a href=\"#B.T\">T</a>:");
  holds(one, "<section id=\"B\"><h2>B</h2>");
  holds(one, "<section id=\"B.T\"><h3><code>");
  holds(listed(Format::Json, all, texts),
        "\"links\":[[3,1,1,\"B\",null],[3,3,1,\"B\",\"T\"],[3,6,1,");
}

TEST(listing, OtherFormats) {
  const std::u8string text =
      u8"' ä😀{\r\nFunction F$(a#, [b ]) As _\r\n  Long ' `` _\n x\r\nEnd Function";
  EXPECT_EQ(
      listed(Format::Json, {}, {text}),
      bytes(u8"{\"name\":\"M\",\"kind\":\"standard\",\"lines\":5,\"tokens\":[[1,1,5,\"c\"],[2,1,8,"
            u8"\"k\"],[2,10,2,\"nf\"],[2,12,1,\"p\"],[2,13,2,\"n\"],[2,15,1,\"p\"],[2,17,4,\"n\"],"
            u8"[2,21,1,\"p\"],[2,23,2,\"k\"],[3,3,4,\"kt\"],[3,8,9,\"c\"],[5,1,3,\"k\"],[5,5,8,"
            u8"\"k\"]],\"declarations\":[{\"id\":\"F\",\"kind\":\"function\",\"name\":\"F\","
            u8"\"accessor\":null,\"visibility\":\"public\",\"line\":2,\"endLine\":5,"
            u8"\"parameters\":[\"a\",\"b \"],\"type\":\"Long\",\"scope\":null},{\"id\":\"F.a\","
            u8"\"kind\":\"parameter\",\"name\":\"a\",\"accessor\":null,\"visibility\":null,"
            u8"\"line\":2,\"endLine\":2,\"parameters\":null,\"type\":\"Double\",\"scope\":\"F\"},"
            u8"{\"id\":\"F.b_\",\"kind\":\"parameter\",\"name\":\"b \",\"accessor\":null,"
            u8"\"visibility\":null,\"line\":2,\"endLine\":2,\"parameters\":null,\"type\":null,"
            u8"\"scope\":\"F\"}],\"links\":[]}\n"));
  holds(listed(Format::Json, {.lines = {{4, 9}, {1, 1}}}, {text}),
        "\"tokens\":[[1,1,5,\"c\"],[5,1,3,\"k\"],[5,5,8,\"k\"]]");
  EXPECT_EQ(
      listed(Format::Markdown, {.lineNumbers = true}, {text}),
      bytes(
          u8"# M\n\nModul · 5 Zeilen · 1 Prozedur\n\n## Öffentlich\n\n- `Function F$(a#, [b ]) As "
          u8"Long` (Zeile 2)\n\n## Code\n\n```vb\n1  ' ä😀{\n2  Function F$(a#, [b ]) As _\n3    "
          u8"Long ' `` _\n4   x\n5  End Function\n```\n"));
  const std::string rtf = listed(Format::Rtf, {}, {text});
  EXPECT_EQ(
      rtf.substr(rtf.find("\\pard")),
      "\\pard\\plain\\f0\\fs20\\cf1 {\\cf7\\i ' \\u228?\\u-10179?\\u-8704?\\{}\\line\r\n{\\cf3 "
      "Function} {\\cf4\\b F$}(a#, [b ]) {\\cf3 As} _\\line\r\n  {\\cf3 Long} {\\cf7\\i ' `` "
      "_}\\line\r\n{\\cf7\\i  x}\\line\r\n{\\cf3 End} {\\cf3 Function}\\line\r\n}\r\n");
}

TEST(listing, LongHeadsAndNamesCannotMultiply) {
  const std::u8string name(3000, u8'n'), value(5000, u8'"');
  const std::string html = listed(
      Format::Lines, {}, {u8"Const " + name + u8" = \"" + value + u8"\"\nSub S()\nx = " + name});
  const std::size_t link = html.find("<a class=v");
  EXPECT_LT(html.find('>', link) - link, 700U);
}

TEST(palette, DefaultsAndChosenColors) {
  EXPECT_EQ(colorFromText("#0a0B0c"), 0x0A0B0CU);
  for (const char* text :
       {"", "#12345", "#1234567", "red", "#12345g", "#+12345", "# 12345", "url(x)"})
    EXPECT_EQ(colorFromText(text), std::nullopt) << text;
  const auto at = [](const Palette& palette, Tint tint) {
    return palette[static_cast<std::size_t>(tint)];
  };
  for (const Palette& palette : {lightPalette({}), darkPalette({})})
    for (const Tint tint :
         {Tint::Text, Tint::Word, Tint::Name, Tint::Parameter, Tint::Comment, Tint::String,
          Tint::Number, Tint::Directive, Tint::Error, Tint::LineNumber, Tint::Quiet})
      for (const Tint background : {Tint::Page, Tint::Head})
        EXPECT_GE(contrast(at(palette, tint), at(palette, background)), 4.5) << int(tint);
  const UserColors user{.comments = 0x800000, .strings = 0x000000};
  EXPECT_EQ(at(lightPalette(user), Tint::Comment), 0x800000U);
  const Palette dark = darkPalette(user);
  EXPECT_GE(contrast(at(dark, Tint::Comment), at(dark, Tint::Head)), 4.5);
  const Color comment = at(dark, Tint::Comment);  // still red
  EXPECT_EQ(comment >> 8 & 0xFF, comment & 0xFF);
  EXPECT_GT(comment >> 16, comment & 0xFF);
  EXPECT_GE(contrast(at(dark, Tint::String), at(dark, Tint::Page)), 4.5);
}

}  // namespace
}  // namespace tintline::listing
