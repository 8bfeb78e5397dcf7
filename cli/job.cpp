// What the work on inputs is made of. See job.h.
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "cli/job.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <numeric>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "base/codepage.h"
#include "base/file.h"
#include "cli/changed_file.h"
#include "cli/messages.h"
#include "cli/office_inputs.h"

namespace tintline {
namespace {

void makeFolderOf(const std::filesystem::path& target) {
  if (!target.has_parent_path()) return;
  std::error_code failure;
  std::filesystem::create_directories(target.parent_path(), failure);
  if (failure) throw FileError(target, failure);
}

template <class File>
void writeTo(const std::filesystem::path& target, const std::function<void(std::ostream&)>& write) {
  File file(target);
  write(file.stream());
  file.commit();
}

}  // namespace

std::string readInput(const Task& task, const Surroundings& surroundings) {
  if (!task.input.failure.empty()) throw JobError(task.input.failure);
  try {
    if (task.input.module) return task.input.module->file;
    if (task.input.bytes) return *task.input.bytes;
    return isStandardInput(task.input) ? surroundings.readInput()
                                       : readFile(task.input.path, kLargestInput);
  } catch (const FileError& error) {
    if (error.reason() == std::errc::file_too_large)
      throw JobError(messages::kTooLarge(kLargestInput >> 20));
    throw JobError(reasonText(error.reason()));
  }
}

void writeTarget(const Task& task, const Options& options, const Surroundings& surroundings,
                 const std::function<void(std::ostream&)>& write) {
  try {
    if (options.check) {
      std::ostream nowhere(nullptr);
      write(nowhere);
      if (!task.target.empty()) checkWritable(task.target);
    } else if (task.target.empty()) {
      write(surroundings.output);
      surroundings.output.flush();
    } else {
      makeFolderOf(task.target);
      if (options.skipUnchanged)
        writeTo<ChangedFile>(task.target, write);
      else
        writeTo<AtomicFile>(task.target, write);
    }
  } catch (const FileError& error) {
    throw JobError(messages::kUnwritable(targetName(task), reasonText(error.reason())));
  }
}

Outcome outcomeOf(const std::function<Outcome()>& work) {
  try {
    return work();
  } catch (const JobError& error) {
    return {.failure = error.reason()};
  } catch (const std::bad_alloc&) {
    return {.failure = messages::kNotEnoughMemory()};
  } catch (const std::length_error&) {
    return {.failure = messages::kResultTooLarge()};
  } catch (const std::overflow_error&) {
    return {.failure = messages::kResultTooLarge()};
  } catch (const std::exception& error) {
    return {.failure = messages::kUnexpected(fromUtf8(error.what()))};
  }
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
