// Tells which links of the HTML pages in folders do not land.
//
// Tested by tests/cli/project.py.
#pragma once

#include "cli/options.h"
#include "cli/run.h"

namespace tintline {

// The inputs of the options are the folders. Returns kSomeFailed when a link does not land or a
// page cannot be read.
ExitCode checkLinks(const Options& options, const Surroundings& surroundings);

}  // namespace tintline
