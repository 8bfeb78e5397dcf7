// The program: its forms and what they share, its entry and its end.
//
// Tested by tests/app/start_test.cpp.
#pragma once

#include <filesystem>

#include "app/frmFarbeinstellung/frmFarbeinstellung.h"
#include "app/frmPrePostCode/frmPrePostCode.h"
#include "app/frmProzeduren/frmProzeduren.h"
#include "app/frmSplash/frmSplash.h"
#include "app/frmVBACode/frmVBACode.h"
#include "app/ports.h"
#include "engine/color_scheme.h"

namespace tintline {

class Application {
 public:
  explicit Application(Ports platform);

  const Ports ports;
  const std::filesystem::path settingsFile;  // the one in use, chosen once
  ColorScheme colors;                        // the colour table
  std::filesystem::path HelpFile;            // the entry for context help; set at start-up
  frmSplash splash;
  frmFarbeinstellung farbeinstellung;
  frmPrePostCode prePostCode;
  frmProzeduren prozeduren;
  frmVBACode mainWindow;

  // The entry: shows the main window and returns. `lastError` is the platform's last
  // error code at process start; when it says that a named object existed already,
  // nothing is shown and the result is false.
  bool Main(unsigned long lastError);

  // Unloads every form and releases the single-instance handle.
  void ProgrammBeenden();
};

}  // namespace tintline
