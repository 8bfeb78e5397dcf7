// A whole run of the command line. See run.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/run.h"

#include <system_error>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/classic_run.h"
#include "cli/exact_run.h"
#include "cli/inputs.h"
#include "cli/messages.h"
#include "cli/plan.h"
#include "cli/report.h"
#include "cli/settings.h"

namespace tintline {
namespace {

std::vector<Message> inputNames(const std::vector<Task>& tasks) {
  std::vector<Message> names;
  names.reserve(tasks.size());
  for (const Task& task : tasks) names.push_back(inputName(task));
  return names;
}

void tellPassedOver(const std::vector<PassedOver>& passedOver, const Surroundings& surroundings) {
  for (const auto& [path, reason] : passedOver)
    surroundings.tell(messages::kAbout(pathText(path), messages::kPassedOver(reason)));
}

// Names the inputs and outputs of a run, and what is known to fail.
ExitCode showPlan(const std::vector<Task>& tasks, const Surroundings& surroundings) try {
  ExitCode result = kAllConverted;
  for (const Task& task : tasks) {
    if (const Message failure = knownFailure(task.input); !failure.empty()) {
      surroundings.tell(messages::kAbout(inputName(task), failure));
      result = kSomeFailed;
    } else {
      const Message line = messages::kWouldBecome(inputName(task), targetName(task));
      surroundings.output << toUtf8(line.in(surroundings.language));
    }
  }
  surroundings.output.flush();
  return result;
} catch (const FileError& error) {
  surroundings.tell(messages::kUnwritable(messages::kStandardOutput(), reasonText(error.reason())));
  return kSomeFailed;
}

}  // namespace

void Surroundings::tell(const Message& message) const {
  write(messages::kTold(message).in(language));
}

ExitCode run(const Options& options, const Surroundings& surroundings) {
  Inputs inputs = collectInputs(options);
  const std::vector<Task> tasks = planTasks(options, std::move(inputs.modules));
  if (options.verbose) tellPassedOver(inputs.passedOver, surroundings);
  if (options.dryRun) return showPlan(tasks, surroundings);
  const Settings settings = loadSettings(options, surroundings);
  if (!options.outputDir.empty() && !options.check) {
    std::error_code failure;
    std::filesystem::create_directories(argumentPath(options.outputDir), failure);
    if (failure) throw FileError(argumentPath(options.outputDir), failure);
  }
  Report report(inputNames(tasks), surroundings.write,
                {.progress = surroundings.terminal && !options.quiet,
                 .summary = options.verbose,
                 .language = surroundings.language});
  if (options.mode == Mode::Classic)
    runClassic(tasks, options, settings, surroundings, report);
  else
    runExact(tasks, options, settings, surroundings, report);
  return report.close() ? kAllConverted : kSomeFailed;
}

}  // namespace tintline
