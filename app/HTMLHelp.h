// The program's help: one compiled file, shown by the system's help viewer.
//
// Tested by tests/app/start_test.cpp.
#pragma once

#include <string_view>

#include "ports/shell.h"

namespace tintline::HTMLHelp {

inline constexpr int kHelpFile = 1;
inline constexpr std::string_view kOverview = "./htm/funktions.bersicht.htm";
inline constexpr std::string_view kColors = "./htm/farbeinstellungen.htm";

// The name of a help file by its number: "TINTLINE2.chm" for 1, else "".
std::string_view fileName(int number);

// Shows a topic of that help file.
void showTopic(Shell& shell, int number, std::string_view topic);

// Closes all help windows.
void CloseHelp(Shell& shell);

}  // namespace tintline::HTMLHelp
