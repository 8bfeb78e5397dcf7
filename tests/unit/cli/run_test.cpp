// Tests of cli/run.h: what cannot be provoked from outside the program.
#include "cli/run.h"

#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <stdexcept>

#include "base/codepage.h"
#include "base/file.h"
#include "tests/support/temp_folder.h"

namespace tintline {
namespace {

struct Ran {
  ExitCode exitCode;
  std::string output;
  std::string told;
};

Ran runOn(std::function<std::string()> readInput, std::ostream* output = nullptr) {
  const test::TempFolder folder;
  std::ostringstream written;
  std::wstring told;
  const ExitCode exitCode = run(parseOptions({"--format=lines", "-"}),
                                {.programFolder = folder.path(),
                                 .readInput = std::move(readInput),
                                 .output = output != nullptr ? *output : written,
                                 .tell = [&](std::wstring_view text) { told += text; },
                                 .terminal = false});
  return {exitCode, written.str(), toUtf8(told)};
}

TEST(Run, convertsTheStandardInput) {
  const Ran ran = runOn([] { return std::string("x\r\n"); });
  EXPECT_EQ(ran.exitCode, kAllConverted);
  EXPECT_EQ(ran.output, "x  \n");
  EXPECT_EQ(ran.told, "");
}

TEST(Run, whateverHappensToAnInputIsToldAsItsFailure) {
  const struct {
    std::function<std::string()> readInput;
    const char* reason;
  } kCases[] = {
      {[]() -> std::string { throw FileError({}, std::make_error_code(std::errc::io_error)); },
       "Fehler des Datenträgers"},
      {[]() -> std::string { throw std::bad_alloc(); }, "der Speicher reicht nicht"},
      {[]() -> std::string { throw std::length_error(""); }, "das Ergebnis wird zu groß"},
      {[]() -> std::string { throw std::overflow_error(""); }, "das Ergebnis wird zu groß"},
      {[]() -> std::string { throw std::runtime_error("why"); }, "unerwarteter Fehler: why"},
  };
  for (const auto& row : kCases) {
    const Ran ran = runOn(row.readInput);
    EXPECT_EQ(ran.exitCode, kSomeFailed);
    EXPECT_EQ(ran.output, "");
    EXPECT_EQ(ran.told, std::string("tintline: Standardeingabe: ") + row.reason + "\n");
  }
}

}  // namespace
}  // namespace tintline
