// What the streams "PROJECT" and "PROJECTwm" say of a project: the kinds of its modules, their
// names and whether it is locked. [MS-OVBA] 2.3.1 to 2.3.3 and 2.4.3.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "vb/module.h"
#include "vb/text.h"

namespace tintline::office_file {

struct ProjectProperties {
  std::u8string name;
  // By name, folded.
  std::map<std::u8string, vb::ModuleKind> kinds;
  bool locked = false;  // its code is shown in the editor for a password only
};

// The names in the code page with the true ones, from the stream "PROJECTwm".
using TrueNames = std::map<std::string, std::u8string, std::less<>>;
TrueNames readTrueNames(std::string_view stream);

ProjectProperties readProperties(std::string_view stream, vb::CodePage page,
                                 const TrueNames& trueNames);

}  // namespace tintline::office_file
