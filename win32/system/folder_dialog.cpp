// See folder_dialog.h.
#include "win32/system/folder_dialog.h"

#include <objbase.h>
#include <shlobj.h>

#include <array>

#include "win32/handle.h"

namespace tintline::modBrowseForFolder {
namespace {

using UniqueItemList = UniqueHandle<LPITEMIDLIST, CoTaskMemFree>;

// Opens the dialog on the start folder, which is its parameter.
int CALLBACK OrdnerDialogRueckruf(HWND dialog, UINT message, LPARAM, LPARAM startFolder) {
  constexpr WPARAM kIsPath = 1;
  if (message == BFFM_INITIALIZED) SendMessageW(dialog, BFFM_SETSELECTIONW, kIsPath, startFolder);
  return 0;
}

}  // namespace

std::optional<std::filesystem::path> fkt_OrdnerWaehlen(HWND owner, const std::wstring& title,
                                                       const std::filesystem::path& startFolder,
                                                       bool files) {
  BROWSEINFOW request{};
  request.hwndOwner = owner;
  request.lpszTitle = title.c_str();
  request.ulFlags = files ? BIF_BROWSEINCLUDEFILES : BIF_RETURNONLYFSDIRS;
  request.lpfn = OrdnerDialogRueckruf;
  request.lParam = reinterpret_cast<LPARAM>(startFolder.c_str());
  const UniqueItemList chosen(SHBrowseForFolderW(&request));
  std::array<wchar_t, MAX_PATH + 1> path{};
  if (!chosen || !SHGetPathFromIDListW(chosen.get(), path.data())) return std::nullopt;
  return path.data();
}

}  // namespace tintline::modBrowseForFolder
