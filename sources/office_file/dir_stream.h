// The list of a project's modules: the decompressed stream "dir", [MS-OVBA] 2.3.4.2.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sources/office_file/fault.h"
#include "vb/text.h"

namespace tintline::office_file {

struct DirModule {
  std::string name;            // in the project's code page
  std::u16string unicodeName;  // the true name; empty when the project has none
  std::string stream;          // likewise the name of the module's stream
  std::u16string unicodeStream;
  std::uint32_t sourceOffset = 0;  // in its stream
  bool isProcedural = true;        // else a class, document or form
};

struct Directory {
  std::string name;  // in the code page
  vb::CodePage codePage = 1252;
  std::vector<DirModule> modules;
  Fault fault = Fault::None;  // what was read in front of it is there
};

Directory readDirectory(std::string_view dir);

}  // namespace tintline::office_file
