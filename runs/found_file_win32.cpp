// On Windows. See found_file.h. Tested by tests/cli/run.py.
#include <windows.h>

#include <string>

#include "runs/found_file.h"

namespace tintline {
namespace {

// The full name of an open file; not every file system tells it.
std::filesystem::path finalPath(HANDLE handle, const std::filesystem::path& path) {
  constexpr DWORD kLongest = 32768;  // with the closing zero
  std::wstring name(kLongest, L'\0');
  name.resize(GetFinalPathNameByHandleW(handle, name.data(), kLongest, 0));
  std::error_code none;
  return name.empty() ? std::filesystem::absolute(path, none) : std::filesystem::path(name);
}

}  // namespace

std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path) {
  std::wstring key = path.native();
  CharUpperBuffW(key.data(), static_cast<DWORD>(key.size()));
  return key;
}

std::filesystem::path::string_type nameIdentity(const std::filesystem::path& name) {
  return fileNameKey(name);
}

FoundFile findFile(const std::filesystem::path& path) {
  using enum FoundFile::Kind;
  constexpr DWORD kAnySharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const HANDLE handle = CreateFileW(path.c_str(), 0, kAnySharing, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE)
    return {.failure = std::error_code(static_cast<int>(GetLastError()), std::system_category())};
  BY_HANDLE_FILE_INFORMATION known;
  FoundFile found{.kind = Other};
  if (GetFileType(handle) == FILE_TYPE_DISK && GetFileInformationByHandle(handle, &known) != 0) {
    const bool isFolder = (known.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    found.kind = isFolder ? Folder : File;
    found.identity = fileNameKey(finalPath(handle, path));
    if (!isFolder) found.size = std::uintmax_t{known.nFileSizeHigh} << 32 | known.nFileSizeLow;
  }
  CloseHandle(handle);
  return found;
}

bool isHidden(const std::filesystem::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return path.filename().native().starts_with(L'.') ||
         (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_HIDDEN) != 0);
}

// Not every reparse point leads elsewhere: folders that are kept in a cloud are some as well.
bool isFolderLink(const std::filesystem::path& path) {
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirstFileW(path.c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return false;
  FindClose(search);
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         IsReparseTagNameSurrogate(entry.dwReserved0);
}

}  // namespace tintline
