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
#include "convert/reformatting.h"
#include "vb/module.h"
#include "vb/word.h"

namespace tintline {

struct ReadModule {
  vb::Module module;
  Message warning;  // of what was lost
};

// The module of a task, after the passes. Throws JobError.
ReadModule readModule(const Task& task, const Options& options, const vb::WordLists& words,
                      const std::vector<Reformatting>& passes, const Surroundings& surroundings);

// What the options and the user's colours mean for a listing.
listing::Options listingOptions(const Options& options, const Settings& settings);

void runExact(const std::vector<Task>& tasks, const Options& options, const Settings& settings,
              const Surroundings& surroundings, Report& report);

}  // namespace tintline
