// A VBA project in a compound file, [MS-OVBA].
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sources/office_file/compound_file.h"
#include "sources/office_file/designer.h"
#include "sources/office_file/fault.h"
#include "sources/office_file/limits.h"
#include "vb/module.h"
#include "vb/text.h"

namespace tintline::office_file {

struct Module {
  std::u8string name;
  vb::ModuleKind kind{};            // Standard, Class, Document or Form
  std::string source;               // as it is stored: in the project's code page
  std::optional<Storage> designer;  // of a form
};

struct Project {
  std::u8string name;
  std::u8string place;  // where in the file: the part of the package, the storage
  vb::CodePage codePage = 1252;
  bool locked = false;
  bool isSigned = false;
  std::vector<Module> modules;  // in the order of the project
};

struct Problem {
  Fault fault = Fault::None;
  std::u8string place;   // empty: the file
  std::u8string module;  // empty: the place as a whole
};

// Whether a storage is that of a project's code, which holds "dir" and "_VBA_PROJECT".
bool isCodeStorage(const CompoundFile& file, std::uint32_t storage);

// Reads the project of a code storage; `parent` is the storage that holds it. What cannot be read
// is added to the problems.
Project readProject(const CompoundFile& file, std::uint32_t code, std::uint32_t parent,
                    const std::u8string& place, Budget& budget, std::vector<Problem>& problems);

}  // namespace tintline::office_file
