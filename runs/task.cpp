// See task.h. Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#include "runs/task.h"

#include <memory>
#include <new>
#include <stdexcept>
#include <system_error>
#include <unordered_map>

#include "base/changed_file.h"
#include "base/codepage.h"
#include "runs/messages.h"
#include "runs/office_inputs.h"

namespace tintline {
namespace {

namespace fs = std::filesystem;

void makeFolderOf(const fs::path& target) {
  if (!target.has_parent_path()) return;
  std::error_code failure;
  fs::create_directories(target.parent_path(), failure);
  if (failure) throw FileError(target, failure);
}

// The file, in a folder that nearly always is there.
std::unique_ptr<AtomicFile> newFile(const fs::path& target) {
  try {
    return std::make_unique<AtomicFile>(target);
  } catch (const FileError& error) {
    if (error.reason() != std::errc::not_a_directory) throw;
    makeFolderOf(target);
    return std::make_unique<AtomicFile>(target);
  }
}

void writeTo(auto& file, const std::function<void(std::ostream&)>& write) {
  write(file.stream());
  file.commit();
}

}  // namespace

Message inputName(const Task& task) {
  const Message file =
      isStandardInput(task.input) ? messages::kStandardInput() : valueOf(pathText(task.input.path));
  if (!task.input.module) return file;
  return messages::kAbout(file, task.input.module->name);
}

Message targetName(const fs::path& target) {
  return target.empty() ? messages::kStandardOutput() : valueOf(pathText(target));
}

JobError unread(const FileError& error) {
  if (error.reason() == std::errc::file_too_large)
    return JobError(messages::kTooLarge(kLargestInput >> 20));
  return JobError(reasonText(error.reason()));
}

std::string readInput(const Input& input) {
  if (!input.failure.empty()) throw JobError(input.failure);
  if (input.module) return input.module->text;
  if (input.bytes) return *input.bytes;
  try {
    return readFile(input.path, kLargestInput);
  } catch (const FileError& error) {
    throw unread(error);
  }
}

void writeFile(const fs::path& target, Writing writing,
               const std::function<void(std::ostream&)>& write) {
  try {
    if (writing == Writing::Check) {
      std::ostream nowhere(nullptr);
      write(nowhere);
      return checkWritable(target);
    }
    if (writing == Writing::Always) return writeTo(*newFile(target), write);
    makeFolderOf(target);
    ChangedFile file(target);
    writeTo(file, write);
  } catch (const FileError& error) {
    throw JobError(messages::kUnwritable(targetName(target), reasonText(error.reason())));
  }
}

void writeOutput(std::ostream& output, Writing writing,
                 const std::function<void(std::ostream&)>& write) {
  try {
    std::ostream nowhere(nullptr);
    write(writing == Writing::Check ? nowhere : output);
    output.flush();
  } catch (const FileError& error) {
    throw JobError(messages::kUnwritable(targetName({}), reasonText(error.reason())));
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

Message overwritten(const std::vector<Task>& tasks, const std::vector<fs::path>& readBeside) {
  std::unordered_map<fs::path::string_type, std::function<Message()>> read;  // their names
  for (const Task& task : tasks)
    read[task.input.file.identity] = [&task] { return inputName(task); };
  for (const fs::path& file : readBeside)
    if (!file.empty()) read[findFile(file).identity] = [&file] { return valueOf(pathText(file)); };
  read.erase(fs::path::string_type());  // of what is no file
  for (const Task& task : tasks) {
    const auto found = read.find(findFile(task.target).identity);
    if (found != read.end())
      return messages::kOverwritesSource(targetName(task.target), found->second());
  }
  return {};
}

}  // namespace tintline
