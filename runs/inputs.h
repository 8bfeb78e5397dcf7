// The modules that a user means: files, the standard input, and the module files in folders.
//
// Tested by tests/cli/run.py.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/message.h"
#include "runs/found_file.h"

namespace tintline {

// Bytes. Larger ones are refused before they are read, or where they do not know their size, as
// soon as that shows.
inline constexpr std::uintmax_t kLargestInput = std::uintmax_t{256} << 20;

struct OfficeModule;

// A module to be converted, or an Office file with modules.
struct Input {
  std::filesystem::path path;   // of its file; empty: the standard input
  std::filesystem::path place;  // its name, behind the folders that lead to it from a named one
  FoundFile file;               // what the path leads to
  std::filesystem::path::string_type folder;     // identity: modules of one folder are a project
  Message failure{};                             // why there is nothing to convert, for the user
  bool inFolder = false;                         // found there, not named
  bool isOffice = false;                         // an Office file
  std::shared_ptr<const std::string> bytes{};    // of the standard input, once it is read
  std::shared_ptr<const OfficeModule> module{};  // of an Office file
};

// What is wanted.
struct InputChoice {
  std::vector<std::filesystem::path> paths;  // of files and folders; empty: the standard input
  std::filesystem::path results{};           // the folder that takes them and is not looked into
  bool projectFiles = false;                 // these, too
  std::wstring module{};                     // of Office files only that one; empty: all
  bool all = false;                          // of Office files empty document modules, too
  bool inEditor = false;                     // of Office files modules as the editor shows them
  std::function<void()> watch{};  // called while it is looked for; what it throws comes out
};

struct PassedOver {
  std::filesystem::path path;
  Message reason;
};

struct Inputs {
  std::vector<Input> modules;  // in the order of the choice; those of a folder by their names
  std::vector<Input> projectFiles;
  std::vector<PassedOver> passedOver;
};

// Looks for everything that is wanted. A module that is named in several ways is there
// once, in its first place. What lies beside modules (forms' pictures, project files) and folders
// without modules are passed over, unless nothing else is named: then they are failures, as is a
// folder that cannot be read.
Inputs collectInputs(const InputChoice& choice);

// Why an input cannot be converted, as far as that shows without reading it; else empty.
Message knownFailure(const Input& input);

// Where the user reads that he named the standard input.
bool isStandardInput(const Input& input);

}  // namespace tintline
