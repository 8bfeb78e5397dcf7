// What the command line does with Office files besides converting them: a list of what they hold,
// their modules as files, all their code as one text.
//
// Tested by tests/cli/run.py.
#pragma once

#include <vector>

#include "cli/options.h"
#include "cli/run.h"
#include "runs/inputs.h"

namespace tintline {

// Whether the options ask for one of them.
bool isOfficeRun(const Options& options);

// Reads one file after the other. What is no Office file is a failure, but for that in folders.
ExitCode runOffice(Inputs inputs, const Options& options, const Surroundings& surroundings);

}  // namespace tintline
