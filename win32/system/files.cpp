// See files.h.
#include "win32/system/files.h"

#include <windows.h>
#include <shlobj.h>

#include <memory>
#include <string>

namespace tintline {

std::filesystem::path SystemFiles::programFolder() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return std::filesystem::path(path).parent_path();
    }
    path.resize(path.size() * 2);
  }
}

std::filesystem::path SystemFiles::temporaryFolder() {
  if (const wchar_t* const temp = _wgetenv(L"TEMP")) return temp;
  std::wstring path(GetTempPathW(0, nullptr), L'\0');
  path.resize(GetTempPathW(static_cast<DWORD>(path.size()), path.data()));
  return path;
}

std::filesystem::path SystemFiles::userFolder() {
  wchar_t* path = nullptr;
  const HRESULT result =
      SHGetKnownFolderPath(FOLDERID_RoamingAppData, KF_FLAG_DEFAULT, nullptr, &path);
  const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> owner(path, &CoTaskMemFree);
  return SUCCEEDED(result) ? std::filesystem::path(path) / "TINTLINE" : std::filesystem::path();
}

}  // namespace tintline
