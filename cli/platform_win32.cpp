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
#include "settings/modIniSave.h"

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

// Whether the file is there and this user may not write it.
bool isWriteProtected(const std::filesystem::path& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return GetLastError() == ERROR_ACCESS_DENIED;
  CloseHandle(file);
  return false;
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

bool inputIsTerminal() { return consoleOf(STD_INPUT_HANDLE) != nullptr; }

bool errorIsTerminal() { return consoleOf(STD_ERROR_HANDLE) != nullptr; }

Language interfaceLanguage() {
  return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_GERMAN ? Language::German
                                                                  : Language::English;
}

std::filesystem::path environmentPath(const char* name) {
  const wchar_t* const value = ::_wgetenv(fromUtf8(name).c_str());
  return value == nullptr ? std::filesystem::path() : std::filesystem::path(value);
}

// As the window, which uses the file beside the program where it may write it.
std::vector<std::filesystem::path> settingsFolders() {
  std::vector<std::filesystem::path> folders{programFolder()};
  const std::filesystem::path own = environmentPath("APPDATA");
  if (own.empty()) return folders;
  folders.insert(isWriteProtected(folders.front() / modIniSave::kSettingsFile) ? folders.begin()
                                                                               : folders.end(),
                 own / "TINTLINE");
  return folders;
}

}  // namespace tintline
