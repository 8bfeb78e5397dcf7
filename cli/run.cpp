// A whole run of the command line. See run.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/run.h"

#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/check_links.h"
#include "cli/classic_run.h"
#include "cli/exact_run.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "cli/office_index.h"
#include "cli/office_run.h"
#include "cli/plan.h"
#include "cli/print_settings.h"
#include "cli/project_run.h"
#include "cli/report.h"
#include "cli/settings.h"
#include "runs/inputs.h"
#include "runs/office_inputs.h"

namespace tintline {
namespace {

// What it is shows in its bytes.
void readStandardInput(Input& input, const Surroundings& surroundings) {
  const Outcome outcome = outcomeOf([&] {
    try {
      input.bytes = std::make_shared<std::string>(surroundings.readInput());
    } catch (const FileError& error) {
      throw unread(error);
    }
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
  if (options.project) return runProjects(options, files, surroundings);
  const InputChoice choice = inputChoice(options);
  Inputs inputs = collectInputs(choice);
  for (Input& input : inputs.modules)
    if (isStandardInput(input)) readStandardInput(input, surroundings);
  if (isOfficeRun(options)) return runOffice(std::move(inputs), options, files, surroundings);
  inputs = withOfficeModules(std::move(inputs), choice);
  if (options.mode == Mode::Classic && options.outputDir.empty()) joinOfficeModules(inputs.modules);
  const std::vector<Task> tasks = planTasks(options, std::move(inputs.modules), files);
  if (options.verbose) tellPassedOver(inputs.passedOver, surroundings);
  if (options.dryRun) {
    const ExitCode code = showPlan(tasks, surroundings);
    writeOfficeIndexes(tasks, options, Language::German, surroundings);
    return code;
  }
  const Settings settings = loadSettings(files, options, surroundings);
  makeOutputFolder(options);
  Report report(inputFiles(tasks), surroundings.write, tellingOf(options, surroundings));
  if (options.mode == Mode::Classic)
    runClassic(tasks, options, settings, surroundings, report);
  else
    runExact(tasks, options, settings, surroundings, report);
  const bool allIndexed = writeOfficeIndexes(tasks, options, settings.language, surroundings);
  return report.close() && allIndexed ? kAllConverted : kSomeFailed;
}

}  // namespace tintline
