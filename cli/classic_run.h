// A run in the classic mode: each input by itself.
//
// Tested by tests/golden/run.py and tests/cli/run.py.
#pragma once

#include <vector>

#include "cli/options.h"
#include "cli/plan.h"
#include "cli/report.h"
#include "cli/run.h"
#include "cli/settings.h"

namespace tintline {

void runClassic(const std::vector<Task>& tasks, const Options& options, const Settings& settings,
                const Surroundings& surroundings, Report& report);

}  // namespace tintline
