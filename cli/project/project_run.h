// A run that documents whole projects: their site, or what is known of them as data.
//
// Tested by tests/cli/project.py.
#pragma once

#include "cli/options.h"
#include "cli/run.h"
#include "cli/settings.h"

namespace tintline {

// As `run` (cli/run.h).
ExitCode documentProjects(const Options& options, const SettingsFiles& files,
                          const Settings& settings, const Surroundings& surroundings);

}  // namespace tintline
