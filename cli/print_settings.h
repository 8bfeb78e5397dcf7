// The text of --print-settings.
//
// Tested by tests/cli/run.py.
#pragma once

#include "cli/options.h"
#include "cli/run.h"
#include "cli/settings.h"

namespace tintline {

// Writes the settings that count to the standard output, as a settings file (8-bit text) whose
// comments tell where they come from. Failures throw FileError.
void printSettings(const Settings& settings, const Options& options,
                   const Surroundings& surroundings);

}  // namespace tintline
