// A copy of the program in a folder of its own, so that the files beside it are the test's.
//
// Tested by every test in tests/win32/program/.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "tests/support/temp_folder.h"

namespace tintline::test {

class ProgramFolder {
 public:
  // `name`: of the folder.
  explicit ProgramFolder(const std::wstring& name = L"programm");

  std::filesystem::path program() const { return path_ / L"TINTLINE.exe"; }
  std::filesystem::path operator/(const std::wstring& name) const { return path_ / name; }
  bool has(const std::wstring& name) const { return exists(path_ / name); }

  // A file in the folder, byte for byte.
  std::filesystem::path write(const std::wstring& name, std::string_view content) const;
  std::string read(const std::wstring& name) const;

  // What the command line makes of a module, by the files beside the program.
  std::string convert(const std::filesystem::path& module, const std::wstring& options) const;

 private:
  TempFolder scratch_;
  std::filesystem::path path_;
};

// The sample module that everyone has.
std::filesystem::path sampleModule();

// A module with that many lines.
std::string longModule(int lines);

// A module whose conversion takes so long that something can happen meanwhile.
std::string heavyModule();

}  // namespace tintline::test
