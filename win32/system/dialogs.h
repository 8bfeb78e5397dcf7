// The system's dialogs, owned by the window that is active.
//
// Tested by the tests that drive the program.
#pragma once

#include <windows.h>
#include <commdlg.h>

#include <array>

#include "ports/dialogs.h"
#include "win32/message_pump.h"

namespace tintline {

class SystemDialogs final : public Dialogs {
 public:
  explicit SystemDialogs(MessagePump& pump);

  FileChoice showOpen(const FileDialog& dialog) override;
  FileChoice showSave(const FileDialog& dialog) override;
  void message(const std::wstring& text, MessageIcon icon, const std::wstring& title) override;
  bool confirm(const std::wstring& text) override;
  std::optional<std::wstring> input(const std::wstring& prompt, const std::wstring& value) override;
  std::optional<std::uint32_t> chooseColor(std::uint32_t color) override;
  std::optional<std::filesystem::path> chooseFolder(
      const std::wstring& title, const std::filesystem::path& startFolder) override;
  std::optional<std::filesystem::path> chooseFolderOrFile(
      const std::wstring& title, const std::filesystem::path& startFolder) override;

 private:
  FileChoice show(const FileDialog& dialog, DWORD flags, BOOL(WINAPI* ask)(LPOPENFILENAMEW));
  HWND owner();  // what changed so far is shown first: the dialogs fetch messages themselves

  MessagePump& pump_;
  std::array<COLORREF, 16> customColors_;  // what the user mixed, until the program ends
};

}  // namespace tintline
