// Which module goes where, decided and checked before anything is written.
//
// Tested by tests/cli/run.py.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "cli/options.h"
#include "cli/run.h"
#include "cli/settings.h"
#include "runs/inputs.h"
#include "runs/task.h"

namespace tintline {

// Throws UsageError when the options do not fit together.
void checkOptions(const Options& options);

// Throws UsageError when a target is a file that is read, as an input or as one of the settings.
void checkNothingReadIsOverwritten(const std::vector<Task>& tasks, const SettingsFiles& settings);

// One task a module, in the order given. Below an output folder a target is called like its
// source, and with the source's ending in front of its own where two would have the same name; what
// still has is a failure. The options fit together. Throws UsageError when a result would take the
// place of something that is read.
std::vector<Task> planTasks(const Options& options, std::vector<Input> modules,
                            const SettingsFiles& settings);

// An input as a Notice has it.
std::wstring inputFile(const Task& task);

void tellPassedOver(const std::vector<PassedOver>& passedOver, const Surroundings& surroundings);

// Names the inputs and outputs of a run, and what is known to fail.
ExitCode showPlan(const std::vector<Task>& tasks, const Surroundings& surroundings);

// The folder for results, where one is written to. Throws FileError.
void makeOutputFolder(const Options& options);

}  // namespace tintline
