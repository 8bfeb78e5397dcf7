// Opening files by wide names. See file_platform.h.
// Tested by tests/unit/base/file_test.cpp.
#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <string>

#include "base/file_platform.h"

namespace tintline::detail {
namespace {

constexpr DWORD kLongestPath = 32768;  // with the closing zero
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;

// The error as errno tells it.
int errorNumber(DWORD error) {
  const std::error_condition condition =
      std::system_category().default_error_condition(static_cast<int>(error));
  return condition.category() == std::generic_category() ? condition.value() : EINVAL;
}

}  // namespace

int openToRead(const std::filesystem::path& path) {
  const int file = ::_wopen(path.c_str(), _O_RDONLY | _O_BINARY);
  if (file < 0 && errno == EINVAL) errno = ENOENT;  // no file can have such a name
  return file;
}

int openToWrite(const std::filesystem::path& path) {
  return ::_wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
}

std::ptrdiff_t readSome(int file, char* bytes, std::size_t size) {
  return ::_read(file, bytes, static_cast<unsigned>(std::min(size, kMostAtOnce)));
}

std::ptrdiff_t writeSome(int file, const char* bytes, std::size_t size) {
  return ::_write(file, bytes, static_cast<unsigned>(std::min(size, kMostAtOnce)));
}

bool closeFile(int file) { return ::_close(file) == 0; }

std::uintmax_t sizeOf(int file) {
  const long long size = ::_filelengthi64(file);
  return size < 0 ? 0 : static_cast<std::uintmax_t>(size);
}

int createNew(const std::filesystem::path& path, std::filesystem::perms, Permissions) {
  const HANDLE handle =
      ::CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    errno = errorNumber(::GetLastError());
    return -1;
  }
  return ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY);
}

unsigned long processNumber() { return GetCurrentProcessId(); }

bool processRuns(unsigned long number) {
  const HANDLE process = ::OpenProcess(SYNCHRONIZE, FALSE, number);
  if (process == nullptr) return ::GetLastError() != ERROR_INVALID_PARAMETER;
  const bool runs = ::WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
  ::CloseHandle(process);
  return runs;
}

void removeUnused(const std::filesystem::path& path) {
  constexpr DWORD kNoSharing = 0;  // fails while someone else has it open
  const HANDLE file =
      ::CreateFileW(path.c_str(), DELETE, kNoSharing, nullptr, OPEN_EXISTING,
                    FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
  if (file != INVALID_HANDLE_VALUE) ::CloseHandle(file);
}

std::error_code writeProtection(const std::filesystem::path& path) {
  constexpr int kWrite = 2;
  const bool allowed = ::_waccess(path.c_str(), kWrite) == 0;
  return allowed ? std::error_code() : std::error_code(errno, std::generic_category());
}

// "NUL" and its like are devices in every folder; only their full names tell.
bool isDevice(const std::filesystem::path& path, std::filesystem::file_status) {
  std::wstring name(kLongestPath, L'\0');
  name.resize(::GetFullPathNameW(path.c_str(), kLongestPath, name.data(), nullptr));
  return name.starts_with(L"\\\\.\\");
}

std::error_code replaceFile(const std::filesystem::path& from, const std::filesystem::path& to) {
  const BOOL done = ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING);
  return done ? std::error_code()
              : std::error_code(static_cast<int>(::GetLastError()), std::system_category());
}

namespace {

std::filesystem::path endOfLinks(const std::filesystem::path& path) {
  const DWORD attributes = ::GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
    return path;
  const HANDLE file =
      ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return path;  // leads nowhere: the link itself is replaced
  std::wstring name(kLongestPath, L'\0');
  name.resize(::GetFinalPathNameByHandleW(file, name.data(), kLongestPath, 0));
  ::CloseHandle(file);
  return name.empty() ? path : std::filesystem::path(name);
}

}  // namespace

Followed followLinks(std::filesystem::path path, std::error_code& error) {
  std::error_code reason;
  const std::filesystem::file_status status = std::filesystem::status(path, reason);
  if (status.type() == std::filesystem::file_type::none) error = reason;
  return {endOfLinks(path), status};
}

}  // namespace tintline::detail
