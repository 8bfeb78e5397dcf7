// Tests of convert/ by the work of the command line on one input, cli/job.h.
#include "cli/job.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/text.h"
#include "reformat/indentation.h"
#include "sources/module_file_reader.h"

namespace tintline {
namespace {

// The text that a source gives with the options of the command line.
std::string converted(const std::string& source, const std::vector<std::string>& arguments) {
  const Options options = parseOptions(arguments);
  ColorScheme colors;
  modColor::Farbesetzen(colors);
  const JobSettings settings{.options = options,
                             .keywords = KeywordTable(),
                             .frame = DocumentFrame(colors, options.style),
                             .clipboard = {.PreCode = "<code>", .PostCode = "</code>"}};
  std::ostringstream text;
  writeConverted(convertSource(source, settings), settings, text);
  return text.str();
}

TEST(Classic, onePassIndentsLikeManyPresses) {
  const std::string source =
      "Sub A()\r\n   If a Then\r\nFor i = 1 To 2\r\nNext\r\n  Else\r\nEnd If\r\nIf b Then c\r\n"
      "Type T\r\n x\r\nEnd Type\r\nEnd If\r\nEnd If\r\n  ForeColor = 1\r\ny\r\nEnd Sub\r\n";
  LineList pressed = ModulDateiLesen(source).List1;
  int unit = 0;
  for (int presses = 1; presses <= 7; ++presses) {
    pressed = Formatieren(pressed, unit);
    std::string lines;
    for (std::size_t i = 0; i < pressed.size(); ++i) lines.append(RTrim(pressed[i])) += "\r\n";
    EXPECT_EQ(converted(source, {"--format=lines", "--indent=" + std::to_string(presses)}),
              converted(lines, {"--format=lines"}))
        << presses;
  }
}

TEST(Classic, linesAreBrokenBehindTheIndentationAndThenChosen) {
  const std::string source = "If a Then\r\nb ' ein Kommentar, lang\r\nEnd If\r\n";
  EXPECT_EQ(converted(source, {"--format=lines", "--indent=2", "--wrap=20", "--lines=2-4"}),
            "<span class='Rem'>  ' ein Kommentar, </span>\n"
            "<span class='Rem'>  ' lang </span>\n"
            "  b  \n");
  EXPECT_EQ(converted("abcdefghijklmn = o + p\r\n", {"--format=lines", "--wrap=20"}),
            "abcdefghijklmn = o _  \n    + p  \n");
}

TEST(Classic, chosenLinesAreConvertedAsASelection) {
  const std::string source = "one\r\ntwo\r\nthree\r\nfour\r\n";
  EXPECT_EQ(converted(source, {"--format=lines", "--lines=4,1-2,2-2"}), "one  \ntwo  \nfour  \n");
  EXPECT_EQ(converted(source, {"--format=body", "--lines=2"}), "two  <br>");
  EXPECT_EQ(converted(source, {"--format=table", "--lines=3"}), "<tr><td>three  <br></td></tr>");
  EXPECT_EQ(converted(source, {"--format=clipboard", "--lines=3"}), "<code>\r\nthree  \r\n</code>");
  EXPECT_EQ(converted(source, {"--format=table"}),
            converted(source, {"--format=table", "--lines=1-4"}));
}

TEST(Classic, failuresNameTheReason) {
  const auto reason = [](const std::string& source, const std::vector<std::string>& arguments) {
    try {
      converted(source, arguments);
    } catch (const JobError& error) {
      return error.reason();
    }
    return std::wstring();
  };
  std::string lines;
  for (std::size_t i = 0; i < kMaxLines; ++i) lines += "x\r\n";
  EXPECT_EQ(reason(lines, {"--format=body"}), L"");
  EXPECT_EQ(reason(lines + "x", {"--format=body"}), L"mehr als 32767 Zeilen");
  EXPECT_EQ(reason(lines + "x", {"--format=body", "--pasted"}), L"mehr als 32767 Zeilen");
  EXPECT_EQ(reason(lines, {"--wrap=20"}), L"");
  lines.replace(lines.size() - 3, 3, "' ein Kommentar, lang\r\n");
  EXPECT_EQ(reason(lines, {"--wrap=30"}), L"");
  EXPECT_EQ(reason(lines, {"--wrap=20"}), L"mehr als 32767 Zeilen nach dem Umbruch");
  EXPECT_EQ(reason("a\r\nb\r\n", {"--lines=2-3"}),
            L"--lines reicht über das Ende hinaus, letzte Zeile ist 2");
  EXPECT_EQ(reason("", {"--lines=1"}), L"--lines reicht über das Ende hinaus, letzte Zeile ist 0");
}

}  // namespace
}  // namespace tintline
