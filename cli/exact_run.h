// A run in the exact mode: each input by itself, or all of them as the modules of a project.
//
// Tested by tests/cli/run.py and tests/golden/run.py.
#pragma once

#include <vector>

#include "cli/options.h"
#include "cli/plan.h"
#include "cli/report.h"
#include "cli/run.h"
#include "cli/settings.h"
#include "runs/read_module.h"

namespace tintline {

// What the options and the user's words mean for reading.
Reading readingOf(const Options& options, const Settings& settings);

// What the options and the user's colours mean for a listing.
listing::Options listingOptions(const Options& options, const Settings& settings);

void runExact(const std::vector<Task>& tasks, const Options& options, const Settings& settings,
              const Surroundings& surroundings, Report& report);

}  // namespace tintline
