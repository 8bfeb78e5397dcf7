// Streams and program folder on POSIX systems. See platform.h.
// Tested by tests/cli/run.py.
#include <fcntl.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>

#include "base/codepage.h"
#include "cli/platform.h"

namespace tintline {
namespace {

// Opens the wrong way round, so that every use of the stream still fails.
void reserve(int descriptor, int mode) {
  if (::fcntl(descriptor, F_GETFD) == -1 && errno == EBADF) {
    // The lowest free descriptor is taken, which is this one.
    [[maybe_unused]] const int opened = ::open("/dev/null", mode);
  }
}

}  // namespace

void prepareStandardStreams() {
  reserve(STDIN_FILENO, O_WRONLY);
  reserve(STDOUT_FILENO, O_RDONLY);
  reserve(STDERR_FILENO, O_RDONLY);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

void keepFreedMemory() {
#ifdef __GLIBC__
  constexpr int kKept = 64 << 20;
  ::mallopt(M_TRIM_THRESHOLD, kKept);
  ::mallopt(M_MMAP_THRESHOLD, kKept);
#endif
}

bool writeText(StandardStream stream, std::wstring_view text) {
  const std::string bytes = toUtf8(text);
  std::FILE* const file = stream == StandardStream::Output ? stdout : stderr;
  return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
}

bool errorIsTerminal() { return ::isatty(STDERR_FILENO) == 1; }

std::filesystem::path programFolder() {
  std::error_code unknown;
  return std::filesystem::read_symlink("/proc/self/exe", unknown).parent_path();
}

std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path) {
  return path.native();
}

ExistingFile existingFile(const std::filesystem::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return {.identity = std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino),
          .size = static_cast<std::uintmax_t>(status.st_size)};
}

}  // namespace tintline
