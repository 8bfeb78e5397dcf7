// Streams and program folder on POSIX systems. See platform.h.
// Tested by tests/cli/run.py.
#include <fcntl.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <thread>

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

void onInterruption(void (*last)()) {
  sigset_t awaited;
  ::sigemptyset(&awaited);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction present {};
    const bool ignored =
        ::sigaction(signal, nullptr, &present) == 0 && present.sa_handler == SIG_IGN;
    if (!ignored) ::sigaddset(&awaited, signal);
  }
  ::pthread_sigmask(SIG_BLOCK, &awaited, nullptr);  // of the threads to come as well
  std::thread([awaited, last] {
    int signal = 0;
    if (::sigwait(&awaited, &signal) != 0) return;
    ::pthread_sigmask(SIG_UNBLOCK, &awaited, nullptr);  // a second one ends it whatever happens
    last();
    ::kill(::getpid(), signal);
  }).detach();
}

void endAsUnread() {
  std::signal(SIGPIPE, SIG_DFL);
  ::kill(::getpid(), SIGPIPE);
  std::_Exit(EXIT_FAILURE);  // not reached
}

bool writeText(StandardStream stream, std::wstring_view text) {
  const std::string bytes = toUtf8(text);
  std::FILE* const file = stream == StandardStream::Output ? stdout : stderr;
  return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
}

bool inputIsTerminal() { return ::isatty(STDIN_FILENO) == 1; }

bool errorIsTerminal() { return ::isatty(STDERR_FILENO) == 1; }

Language interfaceLanguage() { return Language::English; }

std::filesystem::path environmentPath(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::filesystem::path() : std::filesystem::path(value);
}

// XDG Base Directory Specification 0.8: a path that is not absolute does not count.
std::vector<std::filesystem::path> settingsFolders() {
  std::vector<std::filesystem::path> folders;
  std::filesystem::path configuration = environmentPath("XDG_CONFIG_HOME");
  if (!configuration.is_absolute()) configuration = environmentPath("HOME") / ".config";
  if (configuration.is_absolute()) folders.push_back(configuration / "tintline");
  std::error_code unknown;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unknown);
  if (!unknown) folders.push_back(program.parent_path());
  return folders;
}

}  // namespace tintline
