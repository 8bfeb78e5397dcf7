// Which input goes where. See plan.h.
// Tested by tests/cli/run.py.
#include "cli/plan.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "base/codepage.h"
#include "cli/forms.h"
#include "cli/messages.h"
#include "cli/office_run.h"

namespace tintline {
namespace {

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
  if (options.list) refuse(L"--list");
  if (!options.exportModules.empty()) refuse(L"--export-modules");
  if (options.links && options.links != listing::Links::All) refuse(L"--links");
  if (std::ranges::count(options.inputs, kStandardStream) > 0)
    refuse(argumentText(kStandardStream));
  if (options.format != Format::Json && options.outputDir.empty())
    throw UsageError(messages::kProjectNeedsFolder());
}

// It converts nothing, so nothing can be said of results.
void checkLinkCheck(const Options& options) {
  if (!options.checkLinks) return;
  if (options.project) throw UsageError(messages::kNotWithLinkCheck(L"--project"));
  if (!options.outputDir.empty()) throw UsageError(messages::kNotWithLinkCheck(L"--output-dir"));
  if (!options.output.empty()) throw UsageError(messages::kNotWithLinkCheck(L"--output"));
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
using TasksByTarget = std::unordered_map<std::filesystem::path::string_type, std::vector<Task*>>;

TasksByTarget byTarget(std::vector<Task>& tasks) {
  TasksByTarget result;
  for (Task& task : tasks)
    if (task.input.file.kind != FoundFile::Kind::Nothing)
      result[fileNameKey(task.target)].push_back(&task);
  return result;
}

// Gives all tasks whose targets meet long names, which can meet the short names of others. Each
// gets one once at most, and a chain of such meetings is no longer than a name. Returns who still
// meets.
TasksByTarget lengthenNames(std::vector<Task>& tasks, const Options& options) {
  for (;;) {
    bool again = false;
    TasksByTarget all = byTarget(tasks);
    for (const auto& [key, meeting] : all) {
      if (meeting.size() == 1) continue;
      for (Task* task : meeting) {
        std::filesystem::path target = targetOf(task->input, options, Name::Long);
        again = again || target != task->target;
        task->target = std::move(target);
      }
    }
    if (!again) return all;
  }
}

void refuseSameTargets(const TasksByTarget& tasks) {
  for (const auto& [key, meeting] : tasks) {
    if (meeting.size() == 1) continue;
    for (Task* task : meeting) {
      const Task& other = *meeting[task == meeting[0] ? 1 : 0];
      task->input.failure =
          (task->target == other.target ? messages::kSameTarget : messages::kSameTargetButForCase)(
              targetName(task->target), inputName(other));
    }
  }
}

}  // namespace

void checkNothingReadIsOverwritten(const std::vector<Task>& tasks, const SettingsFiles& settings) {
  Message failure =
      overwritten(tasks, {settings.settings.path, settings.keywords.path, settings.css.path});
  if (!failure.empty()) throw UsageError(std::move(failure));
}

void checkOptions(const Options& options) {
  if (options.inputs.empty()) throw UsageError(messages::kNoInput());
  checkForms(options);
  checkProject(options);
  checkLinkCheck(options);
  if (!options.output.empty() && !options.outputDir.empty())
    throw UsageError(messages::kFileAndFolder());
  if (isOfficeRun(options) && !options.outputDir.empty())
    throw UsageError(messages::kNoFolderForOfficeRun());
  if (!options.exportModules.empty() && !hasText(options) && !options.output.empty())
    throw UsageError(messages::kNoFileForExport());
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
  tasks.reserve(modules.size());
  for (Input& input : modules) {
    std::filesystem::path target = targetOf(input, options, Name::Short);
    tasks.push_back({.input = std::move(input), .target = std::move(target)});
  }
  if (!options.outputDir.empty()) refuseSameTargets(lengthenNames(tasks, options));
  if (!tasks.empty() && !tasks.front().target.empty())
    checkNothingReadIsOverwritten(tasks, settings);
  return tasks;
}

std::wstring inputFile(const Task& task) {
  return isStandardInput(task.input) ? fromUtf8(kStandardStream) : pathText(task.input.path);
}

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
      const Message line = messages::kWouldBecome(inputName(task), targetName(task.target));
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

void makeOutputFolder(const Options& options) {
  if (options.outputDir.empty() || options.check) return;
  std::error_code failure;
  std::filesystem::create_directories(argumentPath(options.outputDir), failure);
  if (failure) throw FileError(argumentPath(options.outputDir), failure);
}

}  // namespace tintline
