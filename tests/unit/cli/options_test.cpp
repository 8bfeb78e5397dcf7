// Tests of cli/options.h.
#include "cli/options.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/codepage.h"

namespace tintline {
namespace {

// Everything that parsing decides, in one line.
std::string describe(const Options& options) {
  std::ostringstream text;
  for (const std::string& input : options.inputs) text << '<' << input << '>';
  if (!options.output.empty()) text << " o=" << options.output;
  if (!options.outputDir.empty()) text << " d=" << options.outputDir;
  if (options.format != Format::Page) text << " format=" << static_cast<int>(options.format);
  if (options.style == StyleMode::Inline) text << " inline";
  if (options.lineNumbers) text << " n";
  for (const LineRange& range : options.lines)
    text << " [" << range.first << '-' << range.last << ']';
  if (options.indent != 0) text << " indent=" << options.indent;
  if (options.wrap != 0) text << " wrap=" << options.wrap;
  if (options.pasted) text << " pasted";
  if (!options.keywords.empty()) text << " k=" << options.keywords;
  if (!options.settings.empty()) text << " s=" << options.settings;
  if (options.jobs != 0) text << " jobs=" << options.jobs;
  if (options.quiet) text << " q";
  if (options.help) text << " help";
  if (options.version) text << " version";
  return text.str();
}

using Arguments = std::vector<std::string>;

TEST(Options, areRead) {
  const struct {
    const char* name;
    Arguments arguments;
    const char* expected;
  } kCases[] = {
      {"inputs keep their order", {"b.bas", "a.bas"}, "<b.bas><a.bas>"},
      {"a value in the next argument", {"--output", "x.htm", "a"}, "<a> o=x.htm"},
      {"a value behind an equals sign", {"--output=x=y.htm", "a"}, "<a> o=x=y.htm"},
      {"a value behind a letter and a blank", {"-o", "x.htm", "a"}, "<a> o=x.htm"},
      {"a value directly behind a letter", {"-ox.htm", "a"}, "<a> o=x.htm"},
      {"a value that looks like an option", {"-o", "-n", "a"}, "<a> o=-n"},
      {"letters in one argument", {"-nqdout", "a"}, "<a> d=out n q"},
      {"options behind the file", {"a", "-n", "--style", "inline"}, "<a> inline n"},
      {"the last of an option counts", {"-o1", "-o2", "a"}, "<a> o=2"},
      {"the standard input is a file", {"-", "-n"}, "<-> n"},
      {"behind -- all are files", {"--", "-n", "--help", "--"}, "<-n><--help><-->"},
      {"every format",
       {"--format=body", "--format=lines", "--format=preview", "--format=clipboard",
        "--format=table", "a"},
       "<a> format=5"},
      {"line ranges", {"--lines", "3-5,1-1,7", "a"}, "<a> [3-5] [1-1] [7-7]"},
      {"the last list of ranges counts", {"--lines=1", "--lines=2", "a"}, "<a> [2-2]"},
      {"a line number beyond all numbers is found outside the file later",
       {"--lines=99999999999999999999", "a"},
       "<a> [18446744073709551615-18446744073709551615]"},
      {"limits of numbers",
       {"--indent=100", "--wrap=1000", "--jobs=64", "a"},
       "<a> indent=100 wrap=1000 jobs=64"},
      {"the least line width", {"--wrap", "20", "a"}, "<a> wrap=20"},
      {"line width 0 is off", {"--wrap=80", "--wrap=0", "a"}, "<a>"},
      {"the rest", {"--pasted", "--keywords=k", "--settings=s", "a"}, "<a> pasted k=k s=s"},
      {"help at once, whatever follows", {"--help", "--wrong"}, " help"},
      {"version", {"--version"}, " version"},
  };
  for (const auto& row : kCases)
    EXPECT_EQ(describe(parseOptions(row.arguments)), row.expected) << row.name;
}

TEST(Options, wrongOnesAreNamedWithWhatIsAllowed) {
  const struct {
    Arguments arguments;
    const wchar_t* expected;
  } kCases[] = {
      {{"--wrong"}, L"unbekannte Option --wrong"},
      {{"--wrong=1"}, L"unbekannte Option --wrong"},
      {{"--out", "x"}, L"unbekannte Option --out"},
      {{"-x"}, L"unbekannte Option \"-x\""},
      {{"-nx"}, L"unbekannte Option \"-x\""},
      {{"--quiet=1"}, L"--quiet: nimmt keinen Wert"},
      {{"--output"}, L"--output: der Wert DATEI fehlt"},
      {{"--output="}, L"--output: der Wert DATEI fehlt"},
      {{"-d", ""}, L"--output-dir: der Wert ORDNER fehlt"},
      {{"--format", "html"},
       L"--format: \"html\" geht nicht, möglich: page, body, lines, preview, clipboard oder "
       L"table"},
      {{"--style", "Class"}, L"--style: \"Class\" geht nicht, möglich: class oder inline"},
      {{"--indent", "101"}, L"--indent: \"101\" geht nicht, möglich: eine Zahl von 0 bis 100"},
      {{"--wrap", "19"}, L"--wrap: \"19\" geht nicht, möglich: eine Zahl von 20 bis 1000 oder 0"},
      {{"--wrap", "1001"},
       L"--wrap: \"1001\" geht nicht, möglich: eine Zahl von 20 bis 1000 oder 0"},
      {{"--jobs", "0"}, L"--jobs: \"0\" geht nicht, möglich: eine Zahl von 1 bis 64"},
      {{"--jobs", "65"}, L"--jobs: \"65\" geht nicht, möglich: eine Zahl von 1 bis 64"},
      {{""}, L"ein leerer Text ist kein Dateiname"},
  };
  for (const auto& row : kCases) {
    try {
      parseOptions(row.arguments);
      ADD_FAILURE() << "accepted: " << row.arguments.front();
    } catch (const UsageError& error) {
      EXPECT_EQ(toUtf8(error.message()), toUtf8(row.expected));
    }
  }
}

TEST(Options, refuseWrongNumbersAndRanges) {
  for (const char* value : {"", "a", "-1", "+1", " 1", "1 ", "1x", "0x10", "1.5"}) {
    EXPECT_THROW(parseOptions({std::string("--indent=") + value}), UsageError) << value;
    EXPECT_THROW(parseOptions({std::string("--jobs=") + value}), UsageError) << value;
    EXPECT_THROW(parseOptions({std::string("--wrap=") + value}), UsageError) << value;
  }
  for (const char* value :
       {"0", "0-1", "2-1", "1-", "-1", "1--2", "1,", ",1", "1,,2", "1-2-3", "1;2", "1 - 2", "a-b"})
    EXPECT_THROW(parseOptions({std::string("--lines=") + value}), UsageError) << value;
}

TEST(Options, helpFitsATerminal) {
  std::wistringstream help(helpText());
  for (std::wstring line; std::getline(help, line);) {
    EXPECT_LE(line.size(), 80u) << toUtf8(line);
    EXPECT_TRUE(line.empty() || line.back() != L' ') << toUtf8(line);
  }
}

}  // namespace
}  // namespace tintline
