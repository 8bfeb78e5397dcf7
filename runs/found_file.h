// What paths lead to, and when two of them lead to the same file.
//
// Tested by tests/cli/run.py.
#pragma once

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace tintline {

// A text that is equal for names that a file system which disregards case takes for the same
// file.
std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path);

// The same for names that the system's own file systems take for the same file.
std::filesystem::path::string_type nameIdentity(const std::filesystem::path& name);

struct FoundFile {
  enum class Kind : std::uint8_t { Nothing, File, Folder, Other };  // (a device, a pipe)
  Kind kind = Kind::Nothing;
  std::filesystem::path::string_type identity{};  // of files and folders: equal for all ways there
  std::uintmax_t size = 0;                        // of a file, in bytes
  std::error_code failure{};                      // why nothing is found
};

// What a path leads to.
FoundFile findFile(const std::filesystem::path& path);

// Whether a file or folder is one that its user does not see everywhere (".git").
bool isHidden(const std::filesystem::path& path);

// Whether a path that leads to a folder is a link to it, which can lead in a circle.
bool isFolderLink(const std::filesystem::path& path);

}  // namespace tintline
