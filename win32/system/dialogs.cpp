// See dialogs.h.
#include "win32/system/dialogs.h"

#include <algorithm>

#include "win32/controls/window.h"
#include "win32/forms/input_box.h"
#include "win32/system/folder_dialog.h"

namespace tintline {
namespace {

constexpr wchar_t kProgramName[] = L"TINTLINE";
constexpr std::size_t kLongestPath = 32768;

// "a|b" as the dialogs want it: a NUL behind every part and one more at the end.
std::wstring filterOf(std::wstring_view filter) {
  std::wstring parts(filter);
  std::replace(parts.begin(), parts.end(), L'|', L'\0');
  return parts + L'\0';
}

// A name that the dialogs accept: they refuse one with signs that no name may hold.
std::wstring offeredName(std::wstring name) {
  for (wchar_t& c : name)
    if (c < L' ' || wcschr(L"<>:\"/\\|?*", c) != nullptr) c = L'_';
  return name;
}

}  // namespace

SystemDialogs::SystemDialogs(MessagePump& pump) : pump_(pump) {
  customColors_.fill(RGB(255, 255, 255));
}

FileChoice SystemDialogs::showOpen(const FileDialog& dialog) {
  return show(dialog, OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY, GetOpenFileNameW);
}

FileChoice SystemDialogs::showSave(const FileDialog& dialog) {
  return show(dialog, OFN_PATHMUSTEXIST | OFN_HIDEREADONLY, GetSaveFileNameW);
}

FileChoice SystemDialogs::show(const FileDialog& dialog, DWORD flags,
                               BOOL(WINAPI* ask)(LPOPENFILENAMEW)) {
  const std::wstring filter = filterOf(dialog.filter);
  std::wstring path = offeredName(dialog.fileName);
  path.resize(kLongestPath);
  OPENFILENAMEW request{};
  request.lStructSize = sizeof request;
  request.hwndOwner = owner();
  request.lpstrFilter = filter.c_str();
  request.nFilterIndex = 1;
  request.lpstrFile = path.data();
  request.nMaxFile = static_cast<DWORD>(path.size());
  request.lpstrTitle = dialog.title.empty() ? nullptr : dialog.title.c_str();
  request.lpstrInitialDir = dialog.folder.empty() ? nullptr : dialog.folder.c_str();
  request.Flags = flags | OFN_EXPLORER | OFN_NOCHANGEDIR;
  FileChoice choice;
  if (ask(&request)) {
    choice.path = path.c_str();
    choice.filterIndex = static_cast<int>(request.nFilterIndex);
  } else {
    const auto error = static_cast<long>(CommDlgExtendedError());
    choice.error = error != 0 ? error : FileChoice::kCancelled;
  }
  return choice;
}

void SystemDialogs::message(const std::wstring& text, MessageIcon icon, const std::wstring& title) {
  const UINT look = icon == MessageIcon::Critical      ? MB_ICONERROR
                    : icon == MessageIcon::Information ? MB_ICONINFORMATION
                                                       : 0U;
  MessageBoxW(owner(), text.c_str(), title.empty() ? kProgramName : title.c_str(), MB_OK | look);
}

bool SystemDialogs::confirm(const std::wstring& text) {
  constexpr UINT kLook = MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2;
  return MessageBoxW(owner(), text.c_str(), kProgramName, kLook) == IDYES;
}

std::optional<std::wstring> SystemDialogs::input(const std::wstring& prompt,
                                                 const std::wstring& value) {
  return askForText(pump_, kProgramName, prompt, value);
}

std::optional<std::uint32_t> SystemDialogs::chooseColor(std::uint32_t color) {
  CHOOSECOLORW request{};
  request.lStructSize = sizeof request;
  request.hwndOwner = owner();
  request.rgbResult = color;
  request.lpCustColors = customColors_.data();
  request.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR;
  if (!ChooseColorW(&request)) return std::nullopt;
  return request.rgbResult;
}

std::optional<std::filesystem::path> SystemDialogs::chooseFolder(
    const std::wstring& title, const std::filesystem::path& startFolder) {
  return modBrowseForFolder::fkt_OrdnerWaehlen(owner(), title, startFolder, false);
}

std::optional<std::filesystem::path> SystemDialogs::chooseFolderOrFile(
    const std::wstring& title, const std::filesystem::path& startFolder) {
  return modBrowseForFolder::fkt_OrdnerWaehlen(owner(), title, startFolder, true);
}

HWND SystemDialogs::owner() {
  pump_.flush();
  return workingWindow();
}

}  // namespace tintline
