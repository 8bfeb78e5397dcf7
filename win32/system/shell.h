// The system's shell and its viewer for compiled help.
//
// Tested by the tests that drive the program.
#pragma once

#include "ports/dialogs.h"
#include "ports/shell.h"

namespace tintline {

class SystemShell final : public Shell {
 public:
  // Says through `dialogs` when there is no help viewer.
  explicit SystemShell(Dialogs& dialogs) : dialogs_(dialogs) {}

  int open(const std::wstring& target) override;
  void showHelp(const std::filesystem::path& helpFile, std::string_view topic) override;
  void closeHelp() override;

 private:
  Dialogs& dialogs_;
  bool helpShown_ = false;  // only then is there something to close
};

}  // namespace tintline
