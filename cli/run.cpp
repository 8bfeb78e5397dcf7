// A whole run of the command line. See run.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/run.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <numeric>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <vector>

#include "app/settings/modIniSave.h"
#include "base/codepage.h"
#include "base/file.h"
#include "base/resources.h"
#include "cli/job.h"
#include "cli/plan.h"
#include "cli/report.h"

namespace tintline {
namespace {

constexpr std::string_view kKeywordsFile = "vb.ini";

// The file that an option names, else the one beside the program; empty when
// there is none.
std::filesystem::path settingsPath(const std::string& argument, std::string_view name,
                                   const Surroundings& surroundings) {
  if (!argument.empty()) return argumentPath(argument);
  std::error_code missing;
  const std::filesystem::path path = surroundings.programFolder / name;
  return std::filesystem::exists(path, missing) ? path : std::filesystem::path();
}

// The bytes of a file without which the run makes no sense. To name one that cannot be read is
// wrong usage; one beside the program throws FileError.
std::string readNeeded(const std::filesystem::path& path, const std::string& argument) {
  try {
    return readFile(path);
  } catch (const FileError& error) {
    if (argument.empty()) throw;
    throw UsageError(pathText(path) + L": " + reasonText(error.reason()));
  }
}

KeywordTable loadKeywords(const Options& options, const Surroundings& surroundings) {
  const auto path = settingsPath(options.keywords, kKeywordsFile, surroundings);
  if (path.empty()) return StandardSchluesselworteLaden(programResource(101), programResource(102));
  KeywordLoad load = SchluesselworteLaden(readNeeded(path, options.keywords));
  const auto warn = [&](std::wstring_view text) {
    surroundings.tell(L"tintline: " + pathText(path) + L": " + std::wstring(text) + L'\n');
  };
  if (load.outcome == KeywordOutcome::Keywords1Missing)
    warn(
        L"Die Steuerdatei mit den Schlüsselworten wurde nicht gefunden! "
        L"Bitte ins aktuelle Verzeichnis kopieren. (Abschnitt \"Keywords 1\" ist leer)");
  if (load.outcome == KeywordOutcome::Keywords2Missing)
    warn(L"Nichts gefunden (Abschnitt \"Keywords 2\" ist leer)");
  return std::move(load.table);
}

// As at the start of the program, but nothing is ever written.
ColorScheme loadColors(const std::filesystem::path& path) {
  ColorScheme scheme;
  const bool complete = !path.empty() && modIniSave::readColors(path, scheme);
  if (!complete) modIniSave::setMissingColors(scheme);
  return scheme;
}

JobSettings loadSettings(const Options& options, const Surroundings& surroundings) {
  const auto settings = settingsPath(options.settings, modIniSave::kSettingsFile, surroundings);
  if (!settings.empty())
    readNeeded(settings, options.settings);  // else it would silently count as empty
  const auto stored = [&settings](std::string_view key) {
    return settings.empty() ? std::string() : modIniSave::fkt_IniWertLesen(settings, key);
  };
  return {.options = options,
          .keywords = loadKeywords(options, surroundings),
          .frame = DocumentFrame(loadColors(settings), options.style),
          .clipboard = {.PreCode = stored("PreCode"), .PostCode = stored("PostCode")}};
}

std::string readInput(const Task& task, const Surroundings& surroundings) {
  try {
    return task.input == kStandardStream ? surroundings.readInput()
                                         : readFile(argumentPath(task.input));
  } catch (const FileError& error) {
    throw JobError(reasonText(error.reason()));
  }
}

void writeTarget(const Task& task, const Converted& converted, const JobSettings& settings,
                 const Surroundings& surroundings) {
  try {
    if (task.target.empty()) {
      writeConverted(converted, settings, surroundings.output);
      surroundings.output.flush();
      return;
    }
    AtomicFile file(task.target);
    writeConverted(converted, settings, file.stream());
    file.commit();
  } catch (const FileError& error) {
    throw JobError(targetName(task) + L" kann nicht geschrieben werden: " +
                   reasonText(error.reason()));
  }
}

std::wstring replacedText(std::size_t replaced) {
  if (replaced == 0) return {};
  return std::to_wstring(replaced) +
         (replaced == 1 ? L" Zeichen passt nicht in die Codepage und wurde"
                        : L" Zeichen passen nicht in die Codepage und wurden") +
         L" zu \"?\"";
}

// Whatever goes wrong with one input ends there: the others still go on.
Outcome convert(const Task& task, const JobSettings& settings, const Surroundings& surroundings) {
  constexpr const wchar_t* kTooLarge = L"das Ergebnis wird zu groß";
  try {
    const Converted converted = convertSource(readInput(task, surroundings), settings);
    writeTarget(task, converted, settings, surroundings);
    return {.failure = {},
            .warning = replacedText(converted.replaced),
            .sourceLines = converted.sourceLines};
  } catch (const JobError& error) {
    return {.failure = error.reason()};
  } catch (const std::bad_alloc&) {
    return {.failure = L"der Speicher reicht nicht"};
  } catch (const std::length_error&) {
    return {.failure = kTooLarge};
  } catch (const std::overflow_error&) {
    return {.failure = kTooLarge};
  } catch (const std::exception& error) {
    return {.failure = L"unerwarteter Fehler: " + fromUtf8(error.what())};
  }
}

// Calls work(0) to work(count - 1), in this order, on up to `jobs` threads.
void inParallel(std::size_t count, std::size_t jobs, const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> next = 0;
  const auto worker = [&] {
    for (std::size_t index = next++; index < count; index = next++) work(index);
  };
  std::vector<std::jthread> others;
  try {
    while (others.size() + 1 < std::min(jobs, count)) others.emplace_back(worker);
  } catch (const std::system_error&) {
    // No more threads to be had: those that run do all the work.
  }
  worker();
}

std::size_t jobsOf(const Options& options) {
  return options.jobs != 0 ? options.jobs : std::max(1U, std::thread::hardware_concurrency());
}

// The order in which the tasks are done. With several threads the largest inputs come first: one
// of them at the end would leave the other threads idle.
std::vector<std::size_t> workOrder(const std::vector<Task>& tasks, std::size_t jobs) {
  std::vector<std::size_t> order(tasks.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (jobs > 1)
    std::stable_sort(order.begin(), order.end(), [&tasks](std::size_t left, std::size_t right) {
      return tasks[left].source.size > tasks[right].source.size;
    });
  return order;
}

std::vector<std::wstring> inputNames(const std::vector<Task>& tasks) {
  std::vector<std::wstring> names;
  names.reserve(tasks.size());
  for (const Task& task : tasks) names.push_back(inputName(task));
  return names;
}

}  // namespace

ExitCode run(const Options& options, const Surroundings& surroundings) {
  const std::vector<Task> tasks = planTasks(options);
  const JobSettings settings = loadSettings(options, surroundings);
  if (!options.outputDir.empty()) {
    std::error_code failure;
    std::filesystem::create_directories(argumentPath(options.outputDir), failure);
    if (failure) throw FileError(argumentPath(options.outputDir), failure);
  }
  Report report(inputNames(tasks), surroundings.tell, surroundings.terminal && !options.quiet);
  const std::size_t jobs = tasks.size() == 1 ? 1 : jobsOf(options);
  const std::vector<std::size_t> order = workOrder(tasks, jobs);
  inParallel(order.size(), jobs, [&](std::size_t place) {
    const std::size_t index = order[place];
    report.finished(index, convert(tasks[index], settings, surroundings));
  });
  return report.close() ? kAllConverted : kSomeFailed;
}

}  // namespace tintline
