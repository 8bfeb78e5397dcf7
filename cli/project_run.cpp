// See project_run.h. Tested by tests/cli/project.py.
#include "cli/project_run.h"

#include <string>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "cli/exact_run.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "cli/plan.h"
#include "cli/report.h"
#include "runs/project_run.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

class Observer final : public ProjectObserver {
 public:
  Observer(Report& report, const Surroundings& surroundings)
      : report_(report), surroundings_(surroundings) {}

  void read() override { report_.noteRead(); }
  void finished(std::size_t input, Outcome outcome) override {
    report_.finished(input, std::move(outcome));
  }
  void unwritten(const Message& failure) override {
    surroundings_.tell({.severity = Notice::Severity::Error, .message = failure});
  }
  void stale(const fs::path& page) override {
    surroundings_.tell({.severity = Notice::Severity::Note,
                        .file = pathText(page),
                        .message = messages::kPageOfNoModule()});
  }

 private:
  Report& report_;
  const Surroundings& surroundings_;
};

ProjectOrder orderOf(const Options& options, const Surroundings& surroundings) {
  using enum ProjectOrder::Form;
  ProjectOrder order{.form = options.format == Format::Csv    ? Tables
                             : options.format == Format::Json ? Data
                                                              : Site,
                     .folder = argumentPath(options.outputDir),
                     .writing = options.check ? Writing::Check : Writing::Changed};
  if (options.outputDir.empty() && options.output != kStandardStream)
    order.dataFile = argumentPath(options.output);
  if (order.folder.empty() && order.dataFile.empty()) order.stream = &surroundings.output;
  return order;
}

// What is read, and what becomes of it. What is made of all inputs stands by what was named.
std::vector<Task> planOf(const ProjectInputs& inputs, const ProjectOrder& order,
                         const Options& options) {
  const std::vector<fs::path> results = resultsOf(order);
  std::vector<Task> plan;
  for (const Task& task : inputs.tasks) {
    if (order.form == ProjectOrder::Form::Site)
      plan.push_back({.input = task.input, .target = pageOf(task, order)});
    else if (order.stream != nullptr)
      plan.push_back({.input = task.input, .target = {}});
    else
      for (const fs::path& file : results) plan.push_back({.input = task.input, .target = file});
  }
  if (order.form != ProjectOrder::Form::Site) return plan;
  const fs::path named = argumentPath(options.inputs.front());
  for (const fs::path& file : results)
    plan.push_back({.input = {.path = named, .place = {}, .file = findFile(named), .folder = {}},
                    .target = file});
  return plan;
}

}  // namespace

ExitCode runProjects(const Options& options, const SettingsFiles& files,
                     const Surroundings& surroundings) {
  const ProjectInputs inputs = findProjects(inputChoice(options));
  ProjectOrder order = orderOf(options, surroundings);
  const std::vector<Task> plan = planOf(inputs, order, options);
  checkNothingReadIsOverwritten(plan, files);
  if (options.verbose) tellPassedOver(inputs.passedOver, surroundings);
  if (options.dryRun) return showPlan(plan, surroundings);
  const Settings settings = loadSettings(files, options, surroundings);
  order.reading = readingOf(options, settings);
  order.listing = listingOptions(options, settings);
  order.jobs = jobsOf(options, inputs.tasks.size());
  makeOutputFolder(options);
  Report report(inputFiles(inputs.tasks), surroundings.write, tellingOf(options, surroundings));
  Observer observer(report, surroundings);
  const bool complete = documentProjects(inputs, order, observer);
  return report.close() && complete ? kAllConverted : kSomeFailed;
}

}  // namespace tintline
