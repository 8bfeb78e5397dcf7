// What the options mean for the work on inputs, in both modes.
//
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/options.h"
#include "cli/plan.h"
#include "cli/report.h"
#include "cli/run.h"
#include "convert/reformatting.h"
#include "runs/inputs.h"
#include "runs/task.h"

namespace tintline {

// Has `write` write the result to the task's target, which has it whole afterwards or not at
// all; only looks whether it could be written there, or leaves a target that is the same, where the
// options say so. Throws JobError.
void writeTarget(const Task& task, const Options& options, const Surroundings& surroundings,
                 const std::function<void(std::ostream&)>& write);

// The inputs that the options name.
InputChoice inputChoice(const Options& options);

// What --check and --skip-unchanged say.
Writing writingOf(const Options& options);

// The inputs as a Report has them, and what it tells.
std::vector<std::wstring> inputFiles(const std::vector<Task>& tasks);
Telling tellingOf(const Options& options, const Surroundings& surroundings);

// How many inputs are worked on at the same time.
std::size_t jobsOf(const Options& options, std::size_t tasks);

// The order in which the tasks are done. With several threads the largest inputs come first: one
// of them at the end would leave the other threads idle.
std::vector<std::size_t> workOrder(const std::vector<Task>& tasks, std::size_t jobs);

// What --indent and --wrap do with the lines of a source, in this order.
std::vector<Reformatting> passesOf(const Options& options);

// Throws JobError when --lines names a line that a source of so many lines does not have.
void checkLines(const std::vector<LineRange>& ranges, std::size_t count);

}  // namespace tintline
