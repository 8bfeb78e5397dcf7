// The shell's folder picker.
//
// Tested by the tests that drive the program.
#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>

namespace tintline::modBrowseForFolder {

// The folder of the file system that the user chose; nothing when he chose none. The
// dialog opens on `startFolder`.
std::optional<std::filesystem::path> fkt_OrdnerWaehlen(HWND owner, const std::wstring& title,
                                                       const std::filesystem::path& startFolder,
                                                       bool files);

}  // namespace tintline::modBrowseForFolder
