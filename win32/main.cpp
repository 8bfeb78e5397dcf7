// The program's entry: ports, forms and their windows are put together, then messages
// are handled until the main window is gone.
//
// Tested by the tests that drive the program.
#include <windows.h>
#include <commctrl.h>
#include <objbase.h>
#include <ole2.h>
#include <shellapi.h>

#include <memory>

#include "app/application.h"
#include "win32/controls/theme.h"
#include "win32/forms/colors_window.h"
#include "win32/forms/main_window.h"
#include "win32/forms/pre_post_window.h"
#include "win32/forms/procedures_window.h"
#include "win32/forms/splash_window.h"
#include "win32/message_pump.h"
#include "win32/office/office.h"
#include "win32/system/clipboard.h"
#include "win32/system/clock.h"
#include "win32/system/dialogs.h"
#include "win32/system/files.h"
#include "win32/system/locale.h"
#include "win32/system/shell.h"
#include "win32/system/text_measure.h"

namespace tintline {
namespace {

// OLE for the length of the program: the browser and drag and drop need it.
class Ole {
 public:
  Ole() : result_(OleInitialize(nullptr)) {}
  Ole(const Ole&) = delete;
  Ole& operator=(const Ole&) = delete;
  ~Ole() {
    if (SUCCEEDED(result_)) OleUninitialize();
  }

 private:
  HRESULT result_;
};

// The single-instance handle. It is never created and stays empty, on purpose: several
// copies of the program may run side by side.
namespace modSync {

HANDLE handle = nullptr;

// Both fail, the handle being empty; that is nobody's concern.
void release() {
  ReleaseMutex(handle);
  CloseHandle(handle);
}

}  // namespace modSync

struct Platform {
  MessagePump pump;
  SystemDialogs dialogs{pump};
  SystemClock clock;
  SystemClipboard clipboard;
  SystemShell shell{dialogs};
  SystemOffice office{pump};
  SystemFiles files;
  SystemLocale locale;
  ListTextMeasure textMeasure;

  Ports ports() {
    return {
        dialogs,
        pump,
        clock,
        clipboard,
        shell,
        office,
        files,
        locale,
        textMeasure,
        [](std::uint32_t index) -> std::uint32_t { return GetSysColor(static_cast<int>(index)); },
        [](Brightness wanted) {
          theme::choose(wanted);
          return theme::isDark();
        },
        modSync::release};
  }
};

void makeWindows(Application& program, Platform& platform) {
  MessagePump& pump = platform.pump;
  program.mainWindow.makeView = [&] {
    return std::make_unique<MainWindow>(pump, program.mainWindow, platform.shell,
                                        platform.textMeasure.widestCharacter());
  };
  program.splash.makeView = [&] { return std::make_unique<SplashWindow>(pump, program.splash); };
  program.farbeinstellung.makeView = [&] {
    return std::make_unique<ColorsWindow>(pump, program.farbeinstellung);
  };
  program.prePostCode.makeView = [&] {
    return std::make_unique<PrePostWindow>(pump, program.prePostCode);
  };
  program.prozeduren.makeView = [&] {
    return std::make_unique<ProceduresWindow>(pump, program.prozeduren,
                                              platform.textMeasure.widestCharacter());
  };
}

void initializeControls() {
  INITCOMMONCONTROLSEX classes{};
  classes.dwSize = sizeof classes;
  classes.dwICC =
      ICC_STANDARD_CLASSES | ICC_BAR_CLASSES | ICC_TREEVIEW_CLASSES | ICC_PROGRESS_CLASS;
  InitCommonControlsEx(&classes);
}

// The file that the command line names, with its folder, or "".
std::filesystem::path fileOfCommandLine() {
  int count = 0;
  const UniqueHandle<LPWSTR*, LocalFree> words(CommandLineToArgvW(GetCommandLineW(), &count));
  return count > 1 ? std::filesystem::absolute(words.get()[1]) : std::filesystem::path();
}

int run(DWORD lastError) {
  const Ole ole;
  initializeControls();
  Platform platform;
  const std::filesystem::path file = fileOfCommandLine();
  // The help viewer looks for the help in the current directory, which is the file's when the
  // program is started by the file's context menu.
  SetCurrentDirectoryW(platform.files.programFolder().c_str());
  Application program(platform.ports());
  makeWindows(program, platform);
  if (!program.Main(lastError)) return 0;
  if (!file.empty() && program.mainWindow.isShown()) program.mainWindow.fileDropped(file);
  return platform.pump.run();
}

}  // namespace
}  // namespace tintline

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  const DWORD lastError = GetLastError();  // first of all, before anything changes it
  return tintline::run(lastError);
}
