// The index of an Office file's project, beside the pages of its modules.
//
// Tested by tests/cli/run.py.
#pragma once

#include <vector>

#include "cli/options.h"
#include "cli/plan.h"

namespace tintline {

// Writes "index.htm" for each Office file whose modules are among the tasks, when they are written
// as pages into a folder, in the language of pages. Throws FileError.
void writeOfficeIndexes(const std::vector<Task>& tasks, const Options& options, Language language);

}  // namespace tintline
