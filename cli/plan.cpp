// Which input goes where. See plan.h.
// Tested by tests/cli/run.py.
#include "cli/plan.h"

#include <algorithm>
#include <map>

#include "base/codepage.h"

namespace tintline {
namespace {

using FileNames = std::map<std::filesystem::path::string_type, std::wstring>;

constexpr const wchar_t* modeName(Mode mode) { return mode == Mode::Exact ? L"exact" : L"classic"; }

// What only one of the two modes has.
void checkMode(const Options& options) {
  const auto lacks = [](const std::wstring& what, Mode other) {
    throw UsageError(what + L" gibt es nur mit --mode " + modeName(other));
  };
  const Mode other = options.mode == Mode::Exact ? Mode::Classic : Mode::Exact;
  if (!has(options.mode, options.format)) lacks(L"--format " + formatName(options.format), other);
  if (options.mode == Mode::Exact && options.pasted) lacks(L"--pasted", other);
  if (options.mode == Mode::Exact) return;
  if (options.links) lacks(L"--links", other);
  if (options.titles) lacks(L"--titles", other);
  if (options.header) lacks(L"--header", other);
  if (options.theme) lacks(L"--theme", other);
}

void checkCombination(const Options& options) {
  if (options.inputs.empty()) throw UsageError(L"es ist keine Datei angegeben");
  checkMode(options);
  if (!options.output.empty() && !options.outputDir.empty())
    throw UsageError(L"--output und --output-dir gehen nicht zusammen");
  if (options.inputs.size() > 1 && options.outputDir.empty() && options.mode == Mode::Classic)
    throw UsageError(L"mehrere Dateien brauchen mit --mode classic --output-dir");
  const auto standardInputs = std::ranges::count(options.inputs, kStandardStream);
  if (standardInputs > 0 && !options.outputDir.empty())
    throw UsageError(L"die Standardeingabe (-) hat keinen Namen für --output-dir");
  if (standardInputs > 1) throw UsageError(L"die Standardeingabe (-) lässt sich nur einmal lesen");
}

std::filesystem::path targetOf(const std::string& input, const Options& options) {
  if (!options.outputDir.empty())
    return argumentPath(options.outputDir) /
           argumentPath(input).filename().replace_extension(extensionOf(options.format));
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
    if (!options.outputDir.empty()) checkTargetsDiffer(tasks);
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
