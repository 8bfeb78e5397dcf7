// Streams, console and program folder on Windows. See platform.h.
// Tested by tests/cli/run.py.
#include <windows.h>
#include <fcntl.h>
#include <io.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#include "base/codepage.h"
#include "cli/platform.h"

namespace tintline {
namespace {

// The console behind a standard stream, or nullptr when it is a file or a pipe.
HANDLE consoleOf(DWORD standardHandle) {
  const HANDLE handle = GetStdHandle(standardHandle);
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) ? handle : nullptr;
}

bool writeConsole(HANDLE console, std::wstring_view text) {
  constexpr std::size_t kMaxPerCall = 8192;  // longer texts are refused by old consoles
  while (!text.empty()) {
    const auto run = static_cast<DWORD>(text.size() < kMaxPerCall ? text.size() : kMaxPerCall);
    DWORD written = 0;
    if (!WriteConsoleW(console, text.data(), run, &written, nullptr) || written == 0) return false;
    text.remove_prefix(written);
  }
  return true;
}

std::atomic<void (*)()> lastCall = nullptr;

// Without the end of threads and objects, which can still be at work.
[[noreturn]] void endAtOnce(UINT code) {
  TerminateProcess(GetCurrentProcess(), code);
  std::abort();  // not reached
}

// The system calls it in a thread of its own.
BOOL WINAPI interrupted(DWORD) {
  lastCall.load()();
  endAtOnce(STATUS_CONTROL_C_EXIT);
}

}  // namespace

void prepareStandardStreams() {
  for (std::FILE* const file : {stdin, stdout, stderr}) _setmode(_fileno(file), _O_BINARY);
}

void keepFreedMemory() {}  // the heap of this system keeps it anyway

void onInterruption(void (*last)()) {
  lastCall = last;
  SetConsoleCtrlHandler(interrupted, TRUE);
}

void endAsUnread() { endAtOnce(EXIT_FAILURE); }

bool writeText(StandardStream stream, std::wstring_view text) {
  const bool output = stream == StandardStream::Output;
  if (const HANDLE console = consoleOf(output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE))
    return writeConsole(console, text);
  const std::string bytes = toUtf8(text);
  std::FILE* const file = output ? stdout : stderr;
  return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0;
}

bool errorIsTerminal() { return consoleOf(STD_ERROR_HANDLE) != nullptr; }

std::filesystem::path programFolder() {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
    if (length < name.size()) {
      name.resize(length);
      return std::filesystem::path(name).parent_path();
    }
    name.resize(name.size() * 2);
  }
}

std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path) {
  std::wstring key = path.native();
  CharUpperBuffW(key.data(), static_cast<DWORD>(key.size()));
  return key;
}

ExistingFile existingFile(const std::filesystem::path& path) {
  std::error_code failure;
  const std::filesystem::path name = std::filesystem::canonical(path, failure);
  if (failure || !std::filesystem::is_regular_file(name, failure)) return {};
  const std::uintmax_t size = std::filesystem::file_size(name, failure);
  return {.identity = fileNameKey(name), .size = failure ? 0 : size};
}

}  // namespace tintline
