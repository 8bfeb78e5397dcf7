// What the command line does with Office files besides converting them: a list of what they hold,
// their modules as files, all their code as one text.
//
// Tested by tests/cli/run.py.
#pragma once

#include <vector>

#include "cli/options.h"
#include "cli/run.h"
#include "cli/settings.h"
#include "runs/inputs.h"

namespace tintline {

// Whether the options ask for one of them.
bool isOfficeRun(const Options& options);

// Whether that gives a text, in a file or on the standard output.
bool hasText(const Options& options);

// Reads one file after the other. What is no Office file is a failure, but for that in folders.
// Throws UsageError when the result would take the place of something that is read.
ExitCode runOffice(Inputs inputs, const Options& options, const SettingsFiles& settings,
                   const Surroundings& surroundings);

}  // namespace tintline
