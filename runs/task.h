// One input of a run and its result: reading, writing, and what failures become.
//
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "base/file.h"
#include "base/message.h"
#include "runs/inputs.h"

namespace tintline {

struct Task {
  Input input;
  std::filesystem::path target;  // empty: the standard output
};

// An input or a target as the user reads it.
Message inputName(const Task& task);
Message targetName(const std::filesystem::path& target);

// An input cannot be converted; the reason is for the user.
class JobError {
 public:
  explicit JobError(Message reason) : reason_(std::move(reason)) {}
  const Message& reason() const { return reason_; }

 private:
  Message reason_;
};

// Why an input could not be read.
JobError unread(const FileError& error);

// The bytes of an input; those of the standard input must be there. Throws JobError.
std::string readInput(const Input& input);

enum class Writing : std::uint8_t {
  Always,
  Changed,  // only where that changes the file
  Check     // not at all, but for seeing whether it could be
};

// Has `write` write a file, and its folder where there is none. It is there whole afterwards, or as
// it was. Throws JobError.
void writeFile(const std::filesystem::path& target, Writing writing,
               const std::function<void(std::ostream&)>& write);

// Has `write` write to a stream, where something is to be written. Throws JobError.
void writeOutput(std::ostream& output, Writing writing,
                 const std::function<void(std::ostream&)>& write);

// What came of the work on one input.
struct Outcome {
  Message failure{};  // empty: the input was converted
  Message warning{};  // what the user should know of one that was converted
  std::size_t sourceLines = 0;
};

// Whatever goes wrong in the work ends here: other inputs still go on.
Outcome outcomeOf(const std::function<Outcome()>& work);

// When a target is a file that is read, as an input or beside them: which one, for the user; else
// empty.
Message overwritten(const std::vector<Task>& tasks,
                    const std::vector<std::filesystem::path>& readBeside);

}  // namespace tintline
