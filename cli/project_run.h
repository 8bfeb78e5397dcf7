// A run that documents whole projects, as the options say.
//
// Tested by tests/cli/project.py.
#pragma once

#include "cli/options.h"
#include "cli/run.h"
#include "cli/settings.h"

namespace tintline {

// As `run` (cli/run.h).
ExitCode runProjects(const Options& options, const SettingsFiles& files,
                     const Surroundings& surroundings);

}  // namespace tintline
