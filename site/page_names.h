// Names for the pages of modules: files below one folder, of which no two are the same file on any
// system, and none lies outside of it.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tintline::site {

// The files of the pages of modules, with "/", by the paths of the modules from the folder of all
// sources (also with "/", and ".." for what lies beside it): "src/Main.bas" gives "src/Main.htm",
// "../Shared/Main.bas" gives "_/Shared/Main.htm". Where two would have the same name, without
// regard to case, the module's ending stays: "Main.cls.htm"; what still has gets ".2".
std::vector<std::u8string> pageNames(const std::vector<std::u8string>& modules);

}  // namespace tintline::site
