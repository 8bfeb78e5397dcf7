// Which input goes where. See plan.h.
// Tested by tests/cli/run.py.
#include "cli/plan.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "base/codepage.h"
#include "cli/messages.h"
#include "cli/office_inputs.h"
#include "cli/office_run.h"

namespace tintline {
namespace {

using FileNames = std::map<std::filesystem::path::string_type, Message>;

constexpr const wchar_t* modeName(Mode mode) { return mode == Mode::Exact ? L"exact" : L"classic"; }

// What only one of the two modes has.
void checkMode(const Options& options) {
  const auto lacks = [](const std::wstring& what, Mode other) {
    throw UsageError(messages::kOnlyInMode(what, modeName(other)));
  };
  const Mode other = options.mode == Mode::Exact ? Mode::Classic : Mode::Exact;
  if (!has(options.mode, options.format))
    lacks(L"--format " + argumentText(formatName(options.format)), other);
  if (options.mode == Mode::Exact && options.pasted) lacks(L"--pasted", other);
  if (options.mode == Mode::Exact) return;
  if (options.links) lacks(L"--links", other);
  if (options.titles) lacks(L"--titles", other);
  if (options.header) lacks(L"--header", other);
  if (options.theme) lacks(L"--theme", other);
  if (options.language) lacks(L"--lang", other);
  if (!options.css.empty()) lacks(L"--css", other);
  if (std::ranges::any_of(options.colors, [](const auto& color) { return color.has_value(); }))
    lacks(L"--color", other);
}

// What whole projects have, and what only modules have.
void checkProject(const Options& options) {
  const auto refuse = [](const std::wstring& what) {
    throw UsageError(messages::kNotWithProject(what));
  };
  const std::wstring format = L"--format " + argumentText(formatName(options.format));
  if (!options.project) {
    if (options.format == Format::Csv) throw UsageError(messages::kOnlyWithProject(format));
    return;
  }
  if (options.mode == Mode::Classic)
    throw UsageError(messages::kOnlyInMode(L"--project", L"exact"));
  const bool isData = options.format == Format::Json || options.format == Format::Csv;
  if (options.format != Format::Page && !isData) refuse(format);
  if (options.style == StyleMode::Inline) refuse(L"--style inline");
  if (!options.lines.empty()) refuse(L"--lines");
  if (options.dryRun) refuse(L"--dry-run");
  if (options.links && options.links != listing::Links::All) refuse(L"--links");
  if (std::ranges::count(options.inputs, kStandardStream) > 0)
    refuse(argumentText(kStandardStream));
  if (options.format != Format::Json && options.outputDir.empty())
    throw UsageError(messages::kProjectNeedsFolder());
}

enum class Name : std::uint8_t { Short, Long };  // Modul1.htm, Modul1.bas.htm

std::filesystem::path targetOf(const Input& input, const Options& options, Name name) {
  if (options.outputDir.empty())
    return options.output == kStandardStream ? std::filesystem::path()
                                             : argumentPath(options.output);
  std::filesystem::path target = argumentPath(options.outputDir) / input.place;
  if (name == Name::Short) target.replace_extension();
  return target += extensionOf(options.format);
}

// The tasks of each target, where case does not count. What does not exist, as a pattern that fits
// no file, has none.
std::map<std::filesystem::path::string_type, std::vector<Task*>> byTarget(
    std::vector<Task>& tasks) {
  std::map<std::filesystem::path::string_type, std::vector<Task*>> result;
  for (Task& task : tasks)
    if (task.input.file.kind != FoundFile::Kind::Nothing)
      result[fileNameKey(task.target)].push_back(&task);
  return result;
}

// Gives all tasks whose targets meet long names, which can meet the short names of others. Each
// gets one once at most, and a chain of such meetings is no longer than a name.
void lengthenNames(std::vector<Task>& tasks, const Options& options) {
  for (bool again = true; again;) {
    again = false;
    for (const auto& [key, meeting] : byTarget(tasks)) {
      if (meeting.size() == 1) continue;
      for (Task* task : meeting) {
        std::filesystem::path target = targetOf(task->input, options, Name::Long);
        again = again || target != task->target;
        task->target = std::move(target);
      }
    }
  }
}

void refuseSameTargets(std::vector<Task>& tasks) {
  for (const auto& [key, meeting] : byTarget(tasks)) {
    if (meeting.size() == 1) continue;
    for (Task* task : meeting) {
      const Task& other = *meeting[task == meeting[0] ? 1 : 0];
      task->input.failure =
          (task->target == other.target ? messages::kSameTarget : messages::kSameTargetButForCase)(
              targetName(*task), inputName(other));
    }
  }
}

}  // namespace

void checkNothingReadIsOverwritten(const std::vector<Task>& tasks, const SettingsFiles& settings) {
  FileNames read;
  for (const Task& task : tasks) read[task.input.file.identity] = inputName(task);
  for (const SettingsFile& file : {settings.settings, settings.keywords, settings.css})
    if (!file.path.empty()) read[findFile(file.path).identity] = valueOf(pathText(file.path));
  read.erase(FileNames::key_type());  // of what is no file
  for (const Task& task : tasks) {
    const auto found = read.find(findFile(task.target).identity);
    if (found != read.end())
      throw UsageError(messages::kOverwritesSource(targetName(task), found->second));
  }
}

void checkOptions(const Options& options) {
  if (options.inputs.empty()) throw UsageError(messages::kNoInput());
  checkMode(options);
  checkProject(options);
  if (!options.output.empty() && !options.outputDir.empty())
    throw UsageError(messages::kFileAndFolder());
  if (isOfficeRun(options) && !options.outputDir.empty())
    throw UsageError(messages::kNoFolderForOfficeRun());
  if (!options.css.empty() &&
      (options.format != Format::Page || options.style == StyleMode::Inline))
    throw UsageError(messages::kStyleSheetNeedsPage());
  const auto standardInputs = std::ranges::count(options.inputs, kStandardStream);
  if (standardInputs > 0 && !options.outputDir.empty())
    throw UsageError(messages::kStandardInputHasNoName());
  if (standardInputs > 1) throw UsageError(messages::kStandardInputOnce());
}

std::vector<Task> planTasks(const Options& options, std::vector<Input> modules,
                            const SettingsFiles& settings) {
  const auto converted =
      std::ranges::count_if(modules, [](const Input& input) { return input.failure.empty(); });
  if (converted > 1 && options.outputDir.empty() && options.mode == Mode::Classic && !options.check)
    throw UsageError(messages::kSeveralNeedFolder());
  std::vector<Task> tasks;
  for (Input& input : modules) {
    std::filesystem::path target = targetOf(input, options, Name::Short);
    tasks.push_back({.input = std::move(input), .target = std::move(target)});
  }
  if (!options.outputDir.empty()) {
    lengthenNames(tasks, options);
    refuseSameTargets(tasks);
  }
  if (!tasks.empty() && !tasks.front().target.empty())
    checkNothingReadIsOverwritten(tasks, settings);
  return tasks;
}

std::wstring inputFile(const Task& task) {
  return isStandardInput(task.input) ? fromUtf8(kStandardStream) : pathText(task.input.path);
}

Message inputName(const Task& task) {
  const Message file =
      isStandardInput(task.input) ? messages::kStandardInput() : valueOf(pathText(task.input.path));
  if (!task.input.module) return file;
  return messages::kAbout(file, task.input.module->name);
}

Message targetName(const Task& task) {
  return task.target.empty() ? messages::kStandardOutput() : valueOf(pathText(task.target));
}

}  // namespace tintline
