// Tests of cli/: what options mean, what a run tells, and what cannot be provoked from outside the
// program. tests/cli/run.py drives the program.
#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/options.h"
#include "cli/report.h"
#include "cli/run.h"
#include "tests/support/temp_folder.h"

namespace tintline {
namespace {

// Everything that parsing decides, in one line; the message about wrong usage.
std::string parsed(const std::vector<std::string>& arguments) {
  std::ostringstream text;
  try {
    const Options options = parseOptions(arguments);
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
  } catch (const UsageError& error) {
    text << toUtf8(error.message());
  }
  return text.str();
}

TEST(Options, AreReadOrRefusedWithWhatIsAllowed) {
  const std::pair<std::vector<std::string>, const char*> rows[] = {
      {{"b.bas", "--output", "x.htm", "a.bas"}, "<b.bas><a.bas> o=x.htm"},
      {{"--output=x=y.htm", "-o", "-n", "-ox.htm"}, " o=x.htm"},
      {{"-nqdout", "a", "--style", "inline"}, "<a> d=out inline n q"},
      {{"-", "-n", "--", "-n", "--help", "--"}, "<-><-n><--help><--> n"},
      {{"--format=body", "--format=lines", "--format=preview", "--format=clipboard",
        "--format=table", "a"},
       "<a> format=5"},
      {{"--lines=1", "--lines", "3-5,1-1,7"}, " [3-5] [1-1] [7-7]"},
      {{"--lines=99999999999999999999"}, " [18446744073709551615-18446744073709551615]"},
      {{"--indent=100", "--wrap=1000", "--jobs=64"}, " indent=100 wrap=1000 jobs=64"},
      {{"--wrap=80", "--wrap=0", "--jobs=1"}, " jobs=1"},
      {{"--wrap", "20", "--pasted", "--keywords=k", "--settings=s"}, " wrap=20 pasted k=k s=s"},
      {{"--help", "--wrong"}, " help"},
      {{"--version"}, " version"},
      // wrong usage
      {{"--wrong=1"}, "unbekannte Option --wrong"},
      {{"--out", "x"}, "unbekannte Option --out"},
      {{"-nx"}, "unbekannte Option \"-x\""},
      {{"--quiet=1"}, "--quiet: nimmt keinen Wert"},
      {{"--output"}, "--output: der Wert DATEI fehlt"},
      {{"-d", ""}, "--output-dir: der Wert ORDNER fehlt"},
      {{"--style", "Class"}, "--style: \"Class\" geht nicht, möglich: class oder inline"},
      {{"--indent", "101"}, "--indent: \"101\" geht nicht, möglich: eine Zahl von 0 bis 100"},
      {{"--wrap", "19"}, "--wrap: \"19\" geht nicht, möglich: eine Zahl von 20 bis 1000 oder 0"},
      {{"--jobs", "0"}, "--jobs: \"0\" geht nicht, möglich: eine Zahl von 1 bis 64"},
      {{"--jobs", "65"}, "--jobs: \"65\" geht nicht, möglich: eine Zahl von 1 bis 64"},
      {{""}, "ein leerer Text ist kein Dateiname"},
  };
  for (const auto& [arguments, expected] : rows) EXPECT_EQ(parsed(arguments), expected);
  for (const char* value : {"", "a", "-1", "+1", " 1", "1 ", "0x10", "1.5"})
    EXPECT_THROW(parseOptions({std::string("--wrap=") + value}), UsageError) << value;
  for (const char* value : {"0", "0-1", "2-1", "1-", "-1", "1--2", "1,", "1,,2", "1-2-3", "1;2"})
    EXPECT_THROW(parseOptions({std::string("--lines=") + value}), UsageError) << value;
}

TEST(Report, TellsFailuresInTheOrderOfTheInputsAroundItsCounter) {
  std::wstring told;
  Report report(
      {L"a", L"b", L"c", L"d"}, [&](std::wstring_view text) { told += text; }, true);
  report.finished(2, {.failure = L"drei"});
  report.finished(1, {.failure = L"zwei"});
  EXPECT_EQ(told, L"") << "the counter is shown now and then";
  std::this_thread::sleep_for(std::chrono::milliseconds(60));
  report.finished(0, {.failure = {}, .sourceLines = 20});
  EXPECT_EQ(told, L"tintline: b: zwei\ntintline: c: drei\n\r3 von 4 Dateien");
  told.clear();
  report.finished(3, {.failure = {}, .sourceLines = 22});
  EXPECT_FALSE(report.close());
  EXPECT_TRUE(told.starts_with(L"\r               \r2 Dateien, 42 Zeilen in 0,")) << toUtf8(told);
  EXPECT_TRUE(told.ends_with(L"s verarbeitet\n"));
  using std::chrono::milliseconds;
  const std::pair<int, const wchar_t*> seconds[] = {
      {0, L"0"}, {59, L"0,05"}, {300, L"0,3"}, {12349, L"12,34"}, {60000, L"60"}};
  for (const auto& [time, text] : seconds) EXPECT_EQ(secondsText(milliseconds(time)), text);
}

TEST(Run, WhateverHappensToAnInputIsToldAsItsFailure) {
  const std::pair<std::function<std::string()>, const char*> rows[] = {
      {[]() -> std::string { throw FileError({}, std::make_error_code(std::errc::io_error)); },
       "Fehler des Datenträgers"},
      {[]() -> std::string { throw std::bad_alloc(); }, "der Speicher reicht nicht"},
      {[]() -> std::string { throw std::length_error(""); }, "das Ergebnis wird zu groß"},
      {[]() -> std::string { throw std::overflow_error(""); }, "das Ergebnis wird zu groß"},
      {[]() -> std::string { throw std::runtime_error("why"); }, "unerwarteter Fehler: why"},
  };
  for (const auto& [readInput, reason] : rows) {
    const test::TempFolder folder;
    std::ostringstream written;
    std::wstring told;
    EXPECT_EQ(run(parseOptions({"--format=lines", "-"}),
                  {.programFolder = folder.path(),
                   .readInput = readInput,
                   .output = written,
                   .tell = [&](std::wstring_view text) { told += text; },
                   .terminal = false}),
              kSomeFailed);
    EXPECT_EQ(written.str(), "");
    EXPECT_EQ(toUtf8(told), std::string("tintline: Standardeingabe: ") + reason + "\n");
  }
}

}  // namespace
}  // namespace tintline
