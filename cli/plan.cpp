// Which input goes where. See plan.h.
// Tested by tests/cli/run.py.
#include "cli/plan.h"

#include <algorithm>
#include <map>

#include "base/codepage.h"

namespace tintline {
namespace {

using FileNames = std::map<std::filesystem::path::string_type, std::wstring>;

void checkCombination(const Options& options) {
  if (options.inputs.empty()) throw UsageError(L"es ist keine Datei angegeben");
  if (!options.output.empty() && !options.outputDir.empty())
    throw UsageError(L"--output und --output-dir gehen nicht zusammen");
  if (options.inputs.size() > 1 && options.outputDir.empty())
    throw UsageError(L"mehrere Dateien brauchen --output-dir");
  const bool standardInput = std::find(options.inputs.begin(), options.inputs.end(),
                                       kStandardStream) != options.inputs.end();
  if (standardInput && !options.outputDir.empty())
    throw UsageError(L"die Standardeingabe (-) hat keinen Namen für --output-dir");
}

std::filesystem::path targetOf(const std::string& input, const Options& options) {
  if (!options.outputDir.empty())
    return argumentPath(options.outputDir) /
           argumentPath(input).filename().replace_extension(".htm");
  return options.output == kStandardStream ? std::filesystem::path() : argumentPath(options.output);
}

// What does not exist, as a pattern that fits no file, fails by itself.
void checkTargetsDiffer(const std::vector<Task>& tasks) {
  std::map<std::filesystem::path::string_type, const Task*> known;
  std::error_code none;
  for (const Task& task : tasks) {
    if (!std::filesystem::exists(argumentPath(task.input), none)) continue;
    const auto [other, isNew] = known.emplace(fileNameKey(task.target), &task);
    if (!isNew)
      throw UsageError(inputName(*other->second) + L" und " + inputName(task) + L" ergäben beide " +
                       targetName(task) +
                       (task.target == other->second->target
                            ? L""
                            : L", wo Groß- und Kleinschreibung nicht zählt"));
  }
}

// The file that an argument names; none for an argument that is not given.
ExistingFile sourceOf(const std::string& argument) {
  if (argument.empty() || argument == kStandardStream) return {};
  return existingFile(argumentPath(argument));
}

void checkNothingReadIsOverwritten(const std::vector<Task>& tasks, const Options& options) {
  FileNames read;
  for (const Task& task : tasks) read[task.source.identity] = inputName(task);
  for (const std::string& argument : {options.keywords, options.settings})
    read[sourceOf(argument).identity] = argumentText(argument);
  read.erase(FileNames::key_type());  // of what is no file
  for (const Task& task : tasks) {
    const auto found = read.find(existingFile(task.target).identity);
    if (found != read.end())
      throw UsageError(L"die Ausgabe " + targetName(task) + L" würde " + found->second +
                       L" überschreiben");
  }
}

}  // namespace

std::vector<Task> planTasks(const Options& options) {
  checkCombination(options);
  std::vector<Task> tasks;
  for (const std::string& input : options.inputs)
    tasks.push_back(
        {.input = input, .source = sourceOf(input), .target = targetOf(input, options)});
  if (!tasks.front().target.empty()) {
    checkTargetsDiffer(tasks);
    checkNothingReadIsOverwritten(tasks, options);
  }
  return tasks;
}

std::wstring inputName(const Task& task) {
  return task.input == kStandardStream ? L"Standardeingabe" : argumentText(task.input);
}

std::wstring targetName(const Task& task) {
  return task.target.empty() ? L"Standardausgabe" : pathText(task.target);
}

}  // namespace tintline
