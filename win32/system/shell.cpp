// See shell.h.
#include "win32/system/shell.h"

#include <windows.h>
#include <shellapi.h>

#include "base/codepage.h"
#include "win32/controls/window.h"

namespace tintline {
namespace {

constexpr UINT kDisplayTopic = 0;
constexpr UINT kCloseAll = 18;

using HtmlHelp = HWND(WINAPI*)(HWND caller, LPCSTR file, UINT command, DWORD_PTR data);

// The viewer, or null where there is none. It is loaded at need and stays: it runs
// threads of its own.
HtmlHelp viewer() {
  HMODULE library = LoadLibraryW(L"hhctrl.ocx");
  if (library == nullptr) return nullptr;
  return reinterpret_cast<HtmlHelp>(reinterpret_cast<void*>(GetProcAddress(library, "HtmlHelpA")));
}

}  // namespace

int SystemShell::open(const std::wstring& target) {
  HINSTANCE answer =
      ShellExecuteW(workingWindow(), L"Open", target.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  return static_cast<int>(reinterpret_cast<INT_PTR>(answer));
}

void SystemShell::showHelp(const std::filesystem::path& helpFile, std::string_view topic) {
  HtmlHelp help = viewer();
  if (help == nullptr) {
    dialogs_.message(L"Auf diesem Rechner fehlt das Programm, das die Hilfe anzeigt.",
                     MessageIcon::Information, L"");
    return;
  }
  helpShown_ = true;
  const std::string file = toAnsi(helpFile.native()), data(topic);
  const char* const shown = topic.empty() ? nullptr : data.c_str();
  help(nullptr, file.c_str(), kDisplayTopic, reinterpret_cast<DWORD_PTR>(shown));
}

void SystemShell::closeHelp() {
  if (!helpShown_) return;
  if (HtmlHelp help = viewer()) help(workingWindow(), nullptr, kCloseAll, 0);
}

}  // namespace tintline
