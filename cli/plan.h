// Which input goes where, decided and checked before anything is written.
//
// Tested by tests/cli/run.py.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/options.h"
#include "cli/platform.h"

namespace tintline {

struct Task {
  std::string input;             // as given
  ExistingFile source;           // the file behind the input, when there is one
  std::filesystem::path target;  // empty: the standard output
};

// One task an input, in the order given. Throws UsageError when a result would
// be lost: no place for it, the place of another one, or of something that is read.
std::vector<Task> planTasks(const Options& options);

// An input or a target as the user reads it.
std::wstring inputName(const Task& task);
std::wstring targetName(const Task& task);

}  // namespace tintline
