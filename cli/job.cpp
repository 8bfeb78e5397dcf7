// See job.h. Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/job.h"

#include <algorithm>
#include <numeric>
#include <thread>

#include "base/codepage.h"
#include "cli/messages.h"

namespace tintline {

InputChoice inputChoice(const Options& options) {
  InputChoice choice{.paths = {},
                     .results = argumentPath(options.outputDir),
                     .module = argumentText(options.module),
                     .all = options.all,
                     .inEditor = options.mode == Mode::Classic};
  for (const std::string& argument : options.inputs)
    choice.paths.push_back(argument == kStandardStream ? std::filesystem::path()
                                                       : argumentPath(argument));
  return choice;
}

Writing writingOf(const Options& options) {
  if (options.check) return Writing::Check;
  return options.skipUnchanged ? Writing::Changed : Writing::Always;
}

void writeTarget(const Task& task, const Options& options, const Surroundings& surroundings,
                 const std::function<void(std::ostream&)>& write) {
  if (task.target.empty())
    writeOutput(surroundings.output, writingOf(options), write);
  else
    writeFile(task.target, writingOf(options), write);
}

std::vector<std::wstring> inputFiles(const std::vector<Task>& tasks) {
  std::vector<std::wstring> files;
  files.reserve(tasks.size());
  for (const Task& task : tasks) files.push_back(inputFile(task));
  return files;
}

Telling tellingOf(const Options& options, const Surroundings& surroundings) {
  return {.progress =
              surroundings.terminal && !options.quiet && surroundings.format == NoticeFormat::Text,
          .summary = options.verbose,
          .format = surroundings.format,
          .language = surroundings.language};
}

std::size_t jobsOf(const Options& options, std::size_t tasks) {
  if (tasks == 1) return 1;
  return options.jobs != 0 ? options.jobs : std::max(1U, std::thread::hardware_concurrency());
}

std::vector<std::size_t> workOrder(const std::vector<Task>& tasks, std::size_t jobs) {
  std::vector<std::size_t> order(tasks.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (jobs > 1)
    std::stable_sort(order.begin(), order.end(), [&tasks](std::size_t left, std::size_t right) {
      return tasks[left].input.file.size > tasks[right].input.file.size;
    });
  return order;
}

std::vector<Reformatting> passesOf(const Options& options) {
  using enum Reformatting::Pass;
  std::vector<Reformatting> passes;
  if (options.indent != 0) passes.push_back({.pass = Formatieren, .unit = options.indent});
  if (options.wrap != 0)
    passes.push_back({.pass = Umbruch, .unit = options.indent, .width = options.wrap});
  return passes;
}

void checkLines(const std::vector<LineRange>& ranges, std::size_t count) {
  for (const LineRange& range : ranges)
    if (range.last > count) throw JobError(atLine(count, messages::kBeyondLastLine(count)));
}

}  // namespace tintline
