// Streams and program folder on POSIX systems. See platform.h.
// Tested by tests/cli/run.py.
#include <fcntl.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
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

bool errorIsTerminal() { return ::isatty(STDERR_FILENO) == 1; }

std::filesystem::path programFolder() {
  std::error_code unknown;
  return std::filesystem::read_symlink("/proc/self/exe", unknown).parent_path();
}

std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path) {
  constexpr auto upper = [](wchar_t c) {
    const bool latin = c >= L'à' && c <= L'þ' && c != L'÷';
    return latin || (c >= L'a' && c <= L'z') ? static_cast<wchar_t>(c - 0x20)
                                             : static_cast<wchar_t>(std::towupper(c));
  };
  std::wstring key = fromUtf8(path.native());
  if (toUtf8(key) != path.native()) return path.native();  // no text
  std::ranges::transform(key, key.begin(), upper);
  return toUtf8(key);
}

ExistingFile existingFile(const std::filesystem::path& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return {.identity = std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino),
          .size = static_cast<std::uintmax_t>(status.st_size)};
}

}  // namespace tintline
