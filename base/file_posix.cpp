// Opening files by POSIX calls. See file_platform.h.
// Tested by tests/unit/base/file_test.cpp.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string>
#include <utility>

#include "base/file_platform.h"

namespace tintline::detail {

namespace {

// Whether it is the name of a file that this process has open, as /dev/stdout leads to. Such a
// link must not be followed: what is behind the name belongs to who opened it.
bool isOpenFile(const std::filesystem::path& path) {
  if (path.native().find("fd/") == std::string::npos) return false;  // the usual path, cheaply told
  std::error_code none;
  const std::filesystem::path folder = path.parent_path();
  return folder.filename() == "fd" && std::filesystem::equivalent(folder, "/proc/self/fd", none);
}

}  // namespace

int openToRead(const std::filesystem::path& path) {
  return ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
}

int openToWrite(const std::filesystem::path& path) {
  if (isOpenFile(path)) return ::dup(std::atoi(path.filename().c_str()));
  return ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
}

std::ptrdiff_t readSome(int file, char* bytes, std::size_t size) {
  std::ptrdiff_t got;
  while ((got = ::read(file, bytes, size)) < 0 && errno == EINTR) {
  }
  return got;
}

std::ptrdiff_t writeSome(int file, const char* bytes, std::size_t size) {
  std::ptrdiff_t written;
  while ((written = ::write(file, bytes, size)) < 0 && errno == EINTR) {
  }
  return written;
}

bool closeFile(int file) { return ::close(file) == 0; }

std::uintmax_t sizeOf(int file) {
  struct stat status {};
  return ::fstat(file, &status) == 0 ? static_cast<std::uintmax_t>(status.st_size) : 0;
}

int createNew(const std::filesystem::path& path, std::filesystem::perms permissions,
              Permissions how) {
  const auto mode = static_cast<mode_t>(permissions & std::filesystem::perms::all);
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  if (file < 0) return file;
  if (how == Permissions::Exact) ::fchmod(file, mode);  // a file system without them says no
  ::flock(file, LOCK_EX | LOCK_NB);                     // for removeUnused, as far as it can
  return file;
}

unsigned long processNumber() {
  static const auto number = static_cast<unsigned long>(::getpid());
  return number;
}

bool processRuns(unsigned long number) {
  return ::kill(static_cast<pid_t>(number), 0) == 0 || errno != ESRCH;
}

void removeUnused(const std::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return;
  struct stat status {};
  if (::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
      ::flock(file, LOCK_EX | LOCK_NB) == 0)
    ::unlink(path.c_str());
  ::close(file);
}

std::error_code writeProtection(const std::filesystem::path& path) {
  const bool allowed = ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
  return allowed ? std::error_code() : std::error_code(errno, std::generic_category());
}

bool isDevice(const std::filesystem::path& path, std::filesystem::file_status status) {
  return isOpenFile(path) ||
         (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status));
}

std::error_code replaceFile(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  return error;
}

Followed followLinks(std::filesystem::path path, std::error_code& error) {
  constexpr int kMaxLinks = 40;
  for (int links = 0; links < kMaxLinks; ++links) {
    std::error_code reason;
    const std::filesystem::file_status status = std::filesystem::symlink_status(path, reason);
    if (status.type() == std::filesystem::file_type::none) error = reason;
    if (!std::filesystem::is_symlink(status)) return {std::move(path), status};
    if (isOpenFile(path)) return {path, std::filesystem::status(path, reason)};
    const std::filesystem::path next = std::filesystem::read_symlink(path, error);
    if (error) return {};
    path = path.parent_path() / next;
  }
  error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
  return {};
}

}  // namespace tintline::detail
