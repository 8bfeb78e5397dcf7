// The program's folders inside a temporary folder of the test's own. The user's is
// not there yet.
#pragma once

#include <filesystem>

#include "ports/files.h"
#include "tests/support/temp_folder.h"

namespace tintline::test {

class FakeFiles final : public Files {
 public:
  FakeFiles() {
    std::filesystem::create_directory(program);
    std::filesystem::create_directory(temporary);
  }

  std::filesystem::path programFolder() override { return program; }
  std::filesystem::path temporaryFolder() override { return temporary; }
  std::filesystem::path userFolder() override { return user; }

  TempFolder folder;
  std::filesystem::path program = folder / "program";
  std::filesystem::path temporary = folder / "temporary";
  std::filesystem::path user = folder / "roaming" / "TINTLINE";
};

}  // namespace tintline::test
