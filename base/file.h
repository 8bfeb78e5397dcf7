// Whole files in, whole files out.
//
// Tested by tests/unit/base/file_test.cpp.
#pragma once

#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "base/message.h"

namespace tintline {

// A file could not be read or written.
class FileError : public std::runtime_error {
 public:
  FileError(std::filesystem::path path, std::error_code reason);
  const std::filesystem::path& path() const { return path_; }
  std::error_code reason() const { return reason_; }

 private:
  std::filesystem::path path_;
  std::error_code reason_;
};

// The reason of a failed file operation, without a full stop: "file not found".
Message reasonText(std::error_code reason);

// The bytes of a file. Throws FileError; a directory is an error too, and a file of more than
// `limit` bytes, also when it does not know its size: no more than that is read.
inline constexpr std::uintmax_t kNoLimit = std::numeric_limits<std::uintmax_t>::max();
std::string readFile(const std::filesystem::path& path, std::uintmax_t limit = kNoLimit);

// The same for a stream that is open, by its descriptor; `name` is for the error.
std::string readStream(int stream, const std::filesystem::path& name,
                       std::uintmax_t limit = kNoLimit);

// Throws FileError when the target, or the first folder above it that is there, is nothing that can
// be written. Nothing is written.
void checkWritable(const std::filesystem::path& target);

// A file that appears complete or not at all: it is written under another name
// in the target's folder and takes the target's name in one step. Until then,
// and after any failure, a file that stood there stays whole. A target that is
// no regular file (a device, a pipe) or that this process has open (/dev/stdout) is
// written directly; what a killed process left in the target's folder is removed; a symbolic link
// keeps pointing to the file that is replaced.
class AtomicFile {
 public:
  // Throws FileError when the file cannot be created.
  explicit AtomicFile(const std::filesystem::path& target);
  ~AtomicFile();  // without commit(): removes what was written
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;

  // Where to write; binary, so line ends are written as they are given.
  // Failures show at commit() at the latest.
  std::ostream& stream();

  // Puts the file in place. Throws FileError when anything failed.
  void commit();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// For a process that ends at once, whatever its threads are doing: removes what was written
// without a commit() so far, and stops everyone who wants to begin or commit a file.
void removeUnfinishedFiles();

}  // namespace tintline
