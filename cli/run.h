// A whole run of the command line: every input converted and written to its place.
//
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#pragma once

#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "cli/options.h"

namespace tintline {

enum ExitCode : int {
  kAllConverted = 0,
  kSomeFailed = 1,  // each failure was told, the other inputs are converted
  kWrongUsage = 2   // nothing was written
};

// What surrounds a run.
struct Surroundings {
  std::vector<std::filesystem::path> settingsFolders;  // where settings are looked for, in order
  std::filesystem::path settingsFile;                  // that the environment names, or ""
  std::filesystem::path keywordsFile;                  // likewise
  std::function<std::string()> readInput;              // the standard input; throws FileError
  std::ostream& output;                          // the standard output; failures throw FileError
  std::function<void(std::wstring_view)> write;  // puts text on the error stream
  bool terminal;                                 // the error stream is a terminal
  Language language = Language::English;         // of the messages
  NoticeFormat format = NoticeFormat::Text;      // likewise

  void tell(const Notice& notice) const;
};

// Returns kAllConverted or kSomeFailed; throws UsageError when
// the options do not fit together or a file that they name cannot be used, and FileError when a
// file beside the program or the output folder cannot be used, before anything is written.
ExitCode run(const Options& options, const Surroundings& surroundings);

}  // namespace tintline
