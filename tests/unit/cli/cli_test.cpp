// Tests of cli/: what a run tells, and what cannot be provoked from outside the
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
#include "tests/support/office_fixture.h"
#include "tests/support/temp_folder.h"

namespace tintline {
namespace {

TEST(Report, TellsFailuresInTheOrderOfTheInputsAroundItsCounter) {
  std::wstring told;
  Report report({L"a", L"b", L"c", L"d"}, [&](std::wstring_view text) { told += text; },
                {.progress = true,
                 .summary = true,
                 .language = Language::German,
                 .silence = std::chrono::milliseconds(50)});
  report.finished(2, {.failure = valueOf(L"drei")});
  report.finished(1, {.failure = valueOf(L"zwei")});
  EXPECT_EQ(told, L"") << "the counter is shown now and then";
  std::this_thread::sleep_for(std::chrono::milliseconds(60));
  report.finished(0, {.failure = {}, .sourceLines = 20});
  EXPECT_EQ(told, L"tintline: b: zwei\ntintline: c: drei\n\r3 von 4 Dateien");
  told.clear();
  std::this_thread::sleep_for(std::chrono::milliseconds(60));
  report.finished(3, {.failure = {}, .sourceLines = 22});
  EXPECT_EQ(told, L"") << "no counter behind the last one";
  EXPECT_FALSE(report.close());
  EXPECT_TRUE(told.starts_with(L"\r               \r2 Dateien, 42 Zeilen in 0,")) << toUtf8(told);
  EXPECT_TRUE(told.ends_with(L"s verarbeitet\n"));
  using std::chrono::milliseconds;
  const std::pair<int, const wchar_t*> seconds[] = {
      {0, L"0"}, {59, L"0,05"}, {300, L"0,3"}, {12349, L"12,34"}, {60000, L"60"}};
  for (const auto& [time, text] : seconds) EXPECT_EQ(secondsText(milliseconds(time)).german, text);
}

TEST(Run, WhateverHappensToAnInputIsToldAsItsFailure) {
  const std::pair<std::function<std::string()>, const char*> rows[] = {
      {[]() -> std::string { throw FileError({}, std::make_error_code(std::errc::io_error)); },
       "input/output error"},
      {[]() -> std::string { throw std::bad_alloc(); }, "not enough memory"},
      {[]() -> std::string { throw std::length_error(""); }, "the result becomes too large"},
      {[]() -> std::string { throw std::overflow_error(""); }, "the result becomes too large"},
      {[]() -> std::string { throw std::runtime_error("why"); }, "unexpected error: why"},
  };
  for (const auto& [readInput, reason] : rows) {
    const test::TempFolder folder;
    std::ostringstream written;
    std::wstring told;
    EXPECT_EQ(run(parseOptions({"--format=lines", "-"}),
                  {.settingsFolders = {folder.path()},
                   .settingsFile = {},
                   .keywordsFile = {},
                   .readInput = readInput,
                   .output = written,
                   .write = [&](std::wstring_view text) { told += text; },
                   .terminal = false}),
              kSomeFailed);
    EXPECT_EQ(written.str(), "");
    EXPECT_EQ(toUtf8(told), std::string("tintline: standard input: ") + reason + "\n");
  }
}

TEST(Run, ClassicPagesOfOfficeModulesKeepTheirBytesWhereBrowsersKnowTheCodePage) {
  struct Row {
    std::uint16_t page;
    std::vector<std::string> options;
    std::string charset;
    const char* text;
  } const rows[] = {{1252, {}, "", "\xDF"},
                    {1251, {}, "windows-1251", "\xDF"},
                    {1251, {"--encoding=auto"}, "", "?"},
                    {437, {}, "", "\xDF"}};  // from "\xE1", which no browser reads
  for (const auto& [page, options, charset, text] : rows) {
    const test::TempFolder folder;
    const char* const stored = page == 437 ? "\xE1" : "\xDF";
    const std::string file =
        test::projectFile({.modules = {{.name = u"M", .code = std::string("' ") + stored + "\r\n"}},
                           .codePage = page});
    std::vector<std::string> arguments{"--mode=classic", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    std::ostringstream written;
    run(parseOptions(arguments), {.settingsFolders = {folder.path()},
                                  .settingsFile = {},
                                  .keywordsFile = {},
                                  .readInput = [&] { return file; },
                                  .output = written,
                                  .write = [](std::wstring_view) {},
                                  .terminal = false});
    const std::string html = written.str();
    EXPECT_NE(html.find(std::string("' ") + text + " </span>"), html.npos) << html;
    const std::size_t told = html.find("charset=");
    EXPECT_EQ(told == html.npos ? "" : html.substr(told + 8, 12), charset);
  }
}

}  // namespace
}  // namespace tintline
