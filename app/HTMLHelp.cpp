// See HTMLHelp.h. Tested by tests/app/start_test.cpp.
#include "app/HTMLHelp.h"

namespace tintline::HTMLHelp {

std::string_view fileName(int number) { return number == kHelpFile ? "TINTLINE2.chm" : ""; }

void showTopic(Shell& shell, int number, std::string_view topic) {
  // Without a folder, on purpose: the viewer looks in the current directory.
  shell.showHelp(fileName(number), topic);
}

void CloseHelp(Shell& shell) { shell.closeHelp(); }

}  // namespace tintline::HTMLHelp
