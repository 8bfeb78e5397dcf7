// The system's shell: opening files and links, and the help viewer.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tintline {

class Shell {
 public:
  virtual ~Shell() = default;

  // Performs the verb "Open" on a file or a link, in a normal window. A value above
  // 32 is success; below stands what the shell answered.
  virtual int open(const std::wstring& target) = 0;

  // Shows a topic of a compiled help file ("": the one that the file's name brings
  // along); failures are the viewer's own.
  virtual void showHelp(const std::filesystem::path& helpFile, std::string_view topic) = 0;

  // Closes all help windows.
  virtual void closeHelp() = 0;
};

}  // namespace tintline
