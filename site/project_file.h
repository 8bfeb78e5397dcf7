// Project files (.vbp): which modules a program is made of.
//
//     Type=Exe                             also OleDll, OleExe, Control
//     Module=modMain; ..\Shared\Main.bas   Class= likewise
//     Form=frmMain.frm                     UserControl=, PropertyPage=, UserDocument=, Designer=
//     Name="Rechnung"
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tintline::site {

struct ProjectFile {
  struct Entry {
    std::u8string path;    // from the folder of the project file, as written but with "/"
    bool allowed = false;  // whether it may be read
  };
  std::u8string name;  // empty when it does not tell
  bool isLibrary = false;
  std::vector<Entry> modules;
};

// Reads a project file. A path may lead to a neighbour folder ("..\Shared"), but not to another
// machine or drive or a device, and only to what is called like a module: such a file may come from
// somebody who is not trusted, and what it names is published.
ProjectFile readProjectFile(std::u8string_view text);

// Whether a file is called like a module: "Main.bas", "Klasse.CLS".
bool isModuleName(std::u8string_view file);

}  // namespace tintline::site
