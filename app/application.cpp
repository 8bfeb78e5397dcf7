// See application.h. Tested by tests/app/start_test.cpp.
#include "app/application.h"

#include <utility>

#include "app/HTMLHelp.h"
#include "settings/modIniSave.h"

namespace tintline {

Application::Application(Ports platform)
    : ports(std::move(platform)),
      settingsFile(
          modIniSave::chooseSettingsFile(ports.files.programFolder(), ports.files.userFolder())),
      splash(ports.shell),
      farbeinstellung(colors, settingsFile, ports.dialogs, ports.shell, ports.systemColor),
      prePostCode(settingsFile),
      mainWindow(*this) {}

// The named object is never created: a second start opens a second main window, on
// purpose.
bool Application::Main(unsigned long lastError) {
  constexpr unsigned long kAlreadyExists = 183;
  if (lastError == kAlreadyExists) {
    ports.releaseSingleInstance();
    return false;
  }
  mainWindow.Show();
  return true;
}

void Application::ProgrammBeenden() {
  for (Form* form : {static_cast<Form*>(&splash), static_cast<Form*>(&farbeinstellung),
                     static_cast<Form*>(&prePostCode), static_cast<Form*>(&prozeduren),
                     static_cast<Form*>(&mainWindow)})
    form->Unload();
  HTMLHelp::CloseHelp(ports.shell);
  ports.releaseSingleInstance();
}

}  // namespace tintline
