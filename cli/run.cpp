// A whole run of the command line. See run.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/run.h"

#include <system_error>
#include <vector>

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

}  // namespace

void Surroundings::tell(const Message& message) const {
  write(messages::kTold(message).in(language));
}

ExitCode run(const Options& options, const Surroundings& surroundings) {
  const std::vector<Task> tasks = planTasks(options, collectInputs(options).modules);
  const Settings settings = loadSettings(options, surroundings);
  if (!options.outputDir.empty()) {
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
