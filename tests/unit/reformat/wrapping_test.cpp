// Tests of reformat/wrapping.h and reformat/line_text.h, in both kinds of text.
#include "reformat/wrapping.h"

#include <gtest/gtest.h>

#include "base/file.h"
#include "base/text.h"
#include "convert/reformatting.h"
#include "tests/support/convert.h"

namespace tintline {
namespace {

using Lines = std::vector<std::string>;
using test::lineList;
using test::strings;

Lines wrapped(const Lines& lines, int width, int unit) {
  return strings(*wrapLines(lineList(lines), width, unit));
}

std::u8string wrapped(std::u8string_view text, int width, int unit) {
  return reformatted(text, {.pass = Reformatting::Pass::Umbruch, .unit = unit, .width = width});
}

// The lines as a text, `end` behind each.
std::string joined(const Lines& lines, const char* end) {
  std::string text;
  for (const std::string& line : lines) text.append(line).append(end);
  return text;
}

std::u8string decoded(const std::string& text) { return {text.begin(), text.end()}; }

void checkCase(const std::string& name, const Lines& before, const Lines& after) {
  const auto withBlank = [](Lines lines) {
    for (std::string& line : lines) line += ' ';
    return lines;
  };
  EXPECT_EQ(joined(wrapped(before, 20, 2), "\n"), joined(after, "\n")) << name;
  EXPECT_EQ(wrapped(withBlank(before), 20, 2), withBlank(after))
      << name << " (as read from a file)";
  EXPECT_EQ(wrapped(decoded(joined(before, "\r\n")), 20, 2), decoded(joined(after, "\r\n")))
      << name << " (decoded)";
}

TEST(Wrapping, Cases) {
  std::string name;
  Lines before, after;
  bool changes = false;
  int cases = 0;
  const auto check = [&] {
    if (!name.empty()) checkCase(name, before, changes ? after : before);
    cases += !name.empty();
  };
  const std::string file = readFile("tests/unit/reformat/wrapping_cases.txt");
  for (const std::string_view line : Split(file, '\n')) {
    if (line.starts_with("= ")) {
      check();
      name = line.substr(2);
      before.clear();
      after.clear();
      changes = false;
    } else if (line == "->") {
      changes = true;
    } else if (!line.empty() && !line.starts_with("##")) {
      (changes ? after : before).emplace_back(line);
    }
  }
  check();
  EXPECT_GT(cases, 40);
}

// A sum that needs many lines.
std::string sum(int numbers) {
  std::string text = "x = 11111";
  for (int i = 1; i < numbers; ++i) text += " + 11111";
  return text;
}

TEST(Wrapping, BlanksBehindALineDoNotCountAndTheUsualUnitIsFour) {
  const Lines fits = {"12345678 = 9 + 12345    ", "12345678 = 9 + 12345"};
  EXPECT_EQ(wrapped(fits, 20, 4), fits);
  EXPECT_FALSE(hasLongerLine(lineList(fits), 20));
  EXPECT_TRUE(hasLongerLine(lineList({"", "12345678901234567890x"}), 20));
  EXPECT_EQ(wrapped({"x = 123 + 123 + 12345   ", "' abc def ghi klm nop"}, 20, 0),
            (Lines{"x = 123 + 123 + _ ", "    12345   ", "' abc def ghi klm", "' nop"}));
  EXPECT_EQ(wrapped({sum(100)}, 0, 4), Lines{sum(100)}) << "0 is off";
}

TEST(Wrapping, AStatementHasAtMost24Continuations) {
  const Lines lines = wrapped({sum(100), "y = 1 ' ein langes Wort"}, 20, 4);
  ASSERT_EQ(lines.size(), 27u);
  EXPECT_TRUE(lines[23].ends_with(" _"));
  EXPECT_FALSE(lines[24].ends_with(" _"));
  EXPECT_EQ(lines[25], "' ein langes Wort");
  Lines continued(22, "a, _");  // with those that the statement has
  continued.push_back(sum(100));
  EXPECT_EQ(wrapped(continued, 20, 4).size(), 25u);
}

TEST(Wrapping, ALimitOfLinesIsThatOfTheClassicConversion) {
  Lines lines(kMaxLines, "x");
  EXPECT_EQ(wrapLines(lineList(lines), 20, 4)->size(), kMaxLines);
  lines.back() = "' abc def ghi klm nop";
  EXPECT_FALSE(wrapLines(lineList(lines), 20, 4));
  const std::u8string text = decoded(joined(lines, "\n"));
  EXPECT_EQ(wrapped(text, 20, 4), text.substr(0, text.size() - 5) + u8"\n' nop\n");
}

TEST(Wrapping, DecodedTextIsMeasuredInCharactersAndKeepsItsLineEnds) {
  struct Case {
    std::u8string_view before, after;
  };
  for (const auto& [before, after] : {
           Case{u8"äöü = \"äöüäöüäöüäöü\"\r\n", u8"äöü = \"äöüäöüäöüäöü\"\r\n"},
           Case{u8"äöü = \"äöüäöüäöüäöüä\" & x\r", u8"äöü = _\r  \"äöüäöüäöüäöüä\" _\r  & x\r"},
           Case{u8"a = \"日本\" & b + c + d + e", u8"a = \"日本\" & b + c + _\n  d + e"},
           Case{u8"x\r\na = b + cdefgh + i + j", u8"x\r\na = b + cdefgh + i _\r\n  + j"},
           Case{u8"\u3000\u3000a = b\u3000+ cdefghijk + i",
                u8"\u3000\u3000a = b\u3000+ _\n\u3000\u3000  cdefghijk + i"},
           Case{u8"\u3000a = 1 '日本語\u3000の とても\u3000長いコメントですよ",
                u8"\u3000'日本語\u3000の とても\n\u3000'長いコメントですよ\n\u3000a = 1"},
       })
    EXPECT_EQ(wrapped(before, 20, 2), after);
}

TEST(Indentation, DecodedTextIsIndentedAsItsLinesAre) {
  const auto indented = [](std::u8string_view text) {
    return reformatted(text, {.pass = Reformatting::Pass::Formatieren, .unit = 2});
  };
  EXPECT_EQ(indented(u8"If a Then \u3000\r\n\t\u3000\x19ä = 1\r  End If\n\nIf b Then c\nd"),
            u8"If a Then \u3000\r\n  ä = 1\rEnd If\n\nIf b Then c\n  d");
  std::u8string deep;
  for (int i = 0; i < 40'000; ++i) deep += u8"If a Then\n";
  EXPECT_LT(indented(deep).size(), deep.size() + 40'000 * 1000) << "bounded";
}

TEST(Wrapping, TheWidthIsReadFromWhatAUserWrites) {
  for (const auto& [text, width] : std::initializer_list<std::pair<const wchar_t*, int>>{
           {L"20", 20}, {L"1000", 1000}, {L"0", 0}, {L"   80 ", 80}, {L"0072", 72}})
    EXPECT_EQ(parseLineWidth(text), width) << width;
  for (const wchar_t* text : {L"", L"19", L"1001", L"-20", L"2 0", L"80x", L"\t80",
                              L"99999999999999999999", L"\x0668\x0660"})
    EXPECT_EQ(parseLineWidth(text), std::nullopt) << text;
}

}  // namespace
}  // namespace tintline
