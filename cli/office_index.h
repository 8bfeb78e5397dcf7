// The index of an Office file's project, beside the pages of its modules.
//
// Tested by tests/cli/run.py.
#pragma once

#include <vector>

#include "cli/options.h"
#include "cli/plan.h"

namespace tintline {

// Writes "index.htm" for each Office file whose modules are among the tasks, when they are written
// as pages into a folder; tells what cannot be written, and returns whether all could. With
// --dry-run only names them.
bool writeOfficeIndexes(const std::vector<Task>& tasks, const Options& options, Language language,
                        const Surroundings& surroundings);

}  // namespace tintline
