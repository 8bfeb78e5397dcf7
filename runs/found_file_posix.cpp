// On POSIX systems. See found_file.h. Tested by tests/cli/run.py.
#include <sys/stat.h>

#include <cerrno>
#include <string>

#include "runs/found_file.h"
#include "vb/fold.h"

namespace tintline {

std::filesystem::path::string_type fileNameKey(const std::filesystem::path& path) {
  const std::u8string key = vb::folded(path.u8string());
  return {key.begin(), key.end()};
}

std::filesystem::path::string_type nameIdentity(const std::filesystem::path& name) {
  return name.native();
}

FoundFile findFile(const std::filesystem::path& path) {
  using enum FoundFile::Kind;
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0)
    return {.failure = std::error_code(errno, std::generic_category())};
  const bool isFile = S_ISREG(status.st_mode), isFolder = S_ISDIR(status.st_mode);
  if (!isFile && !isFolder) return {.kind = Other};
  return {.kind = isFile ? File : Folder,
          .identity = std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino),
          .size = isFile ? static_cast<std::uintmax_t>(status.st_size) : 0};
}

bool isHidden(const std::filesystem::path& path) {
  return path.filename().native().starts_with('.');
}

bool isFolderLink(const std::filesystem::path& path) {
  std::error_code none;
  return std::filesystem::is_symlink(std::filesystem::symlink_status(path, none));
}

}  // namespace tintline
