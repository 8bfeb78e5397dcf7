// A whole run of the command line. See run.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/run.h"

#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/classic_run.h"
#include "cli/exact_run.h"
#include "cli/inputs.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "cli/office_index.h"
#include "cli/office_inputs.h"
#include "cli/office_run.h"
#include "cli/plan.h"
#include "cli/print_settings.h"
#include "cli/project/check_links.h"
#include "cli/project/project_run.h"
#include "cli/report.h"
#include "cli/settings.h"

namespace tintline {
namespace {

void tellPassedOver(const std::vector<PassedOver>& passedOver, const Surroundings& surroundings) {
  for (const auto& [path, reason] : passedOver)
    surroundings.tell({.severity = Notice::Severity::Note,
                       .file = pathText(path),
                       .message = messages::kPassedOver(reason)});
}

// Names the inputs and outputs of a run, and what is known to fail.
ExitCode showPlan(const std::vector<Task>& tasks, const Surroundings& surroundings) try {
  ExitCode result = kAllConverted;
  for (const Task& task : tasks) {
    if (const Message failure = knownFailure(task.input); !failure.empty()) {
      surroundings.tell(
          {.severity = Notice::Severity::Error, .file = inputFile(task), .message = failure});
      result = kSomeFailed;
    } else {
      const Message line = messages::kWouldBecome(inputName(task), targetName(task));
      surroundings.output << toUtf8(line.in(surroundings.language));
    }
  }
  surroundings.output.flush();
  return result;
} catch (const FileError& error) {
  surroundings.tell(
      {.severity = Notice::Severity::Error,
       .message = messages::kUnwritable(messages::kStandardOutput(), reasonText(error.reason()))});
  return kSomeFailed;
}

// What it is shows in its bytes.
void readStandardInput(Input& input, const Surroundings& surroundings) {
  const Outcome outcome = outcomeOf([&] {
    input.bytes =
        std::make_shared<std::string>(readInput({.input = input, .target = {}}, surroundings));
    return Outcome();
  });
  input.failure = outcome.failure;
  if (!input.bytes) return;
  const auto beginning = std::string_view(*input.bytes).substr(0, office_file::kBeginning);
  input.isOffice = office_file::isOfficeFile(beginning);
}

// The classic conversion makes one document of modules only as one.
void joinOfficeModules(std::vector<Input>& inputs) {
  std::vector<Input> modules;
  for (const Input& input : inputs)
    if (input.module) modules.push_back(input);
  if (modules.size() < 2) return;
  std::erase_if(inputs, [](const Input& input) { return input.module != nullptr; });
  inputs.insert(inputs.begin(), joinedModules(modules));
}

}  // namespace

void Surroundings::tell(const Notice& notice) const { write(noticeText(notice, format, language)); }

ExitCode run(const Options& options, const Surroundings& surroundings) {
  const SettingsFiles files = findSettings(options, surroundings);
  if (options.printSettings) {
    printSettings(loadSettings(files, options, surroundings), options, surroundings);
    return kAllConverted;
  }
  checkOptions(options);
  if (options.checkLinks) return checkLinks(options, surroundings);
  if (options.project)
    return documentProjects(options, files, loadSettings(files, options, surroundings),
                            surroundings);
  Inputs inputs = collectInputs(options);
  for (Input& input : inputs.modules)
    if (isStandardInput(input)) readStandardInput(input, surroundings);
  if (isOfficeRun(options)) return runOffice(std::move(inputs), options, surroundings);
  inputs = withOfficeModules(std::move(inputs), options);
  if (options.mode == Mode::Classic && options.outputDir.empty()) joinOfficeModules(inputs.modules);
  const std::vector<Task> tasks = planTasks(options, std::move(inputs.modules), files);
  if (options.verbose) tellPassedOver(inputs.passedOver, surroundings);
  if (options.dryRun) return showPlan(tasks, surroundings);
  const Settings settings = loadSettings(files, options, surroundings);
  if (!options.outputDir.empty() && !options.check) {
    std::error_code failure;
    std::filesystem::create_directories(argumentPath(options.outputDir), failure);
    if (failure) throw FileError(argumentPath(options.outputDir), failure);
  }
  Report report(inputFiles(tasks), surroundings.write, tellingOf(options, surroundings));
  if (options.mode == Mode::Classic)
    runClassic(tasks, options, settings, surroundings, report);
  else
    runExact(tasks, options, settings, surroundings, report);
  if (!options.check) writeOfficeIndexes(tasks, options);
  return report.close() ? kAllConverted : kSomeFailed;
}

}  // namespace tintline
