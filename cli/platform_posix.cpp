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
#include <cstdlib>
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

volatile std::sig_atomic_t interruption = 0;

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

void noteInterruptions() {
  struct sigaction note {};
  note.sa_handler = [](int signal) { interruption = signal; };
  note.sa_flags = SA_RESETHAND | SA_RESTART;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction present {};
    const bool ignored =
        ::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
    if (!ignored) ::sigaction(signal, &note, nullptr);
  }
}

bool interrupted() { return interruption != 0; }

void endAsInterrupted() {
  std::signal(interruption, SIG_DFL);
  std::raise(interruption);
  std::_Exit(EXIT_FAILURE);  // not reached
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
