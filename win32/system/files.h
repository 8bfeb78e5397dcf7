// Folders of the system.
//
// Tested by tests/win32/system/ports_test.cpp.
#pragma once

#include "ports/files.h"

namespace tintline {

class SystemFiles final : public Files {
 public:
  std::filesystem::path programFolder() override;
  std::filesystem::path temporaryFolder() override;
  std::filesystem::path userFolder() override;
};

}  // namespace tintline
