// Where the platform keeps the program and its temporary files.
#pragma once

#include <filesystem>

namespace tintline {

class Files {
 public:
  virtual ~Files() = default;

  // The folder that holds the program.
  virtual std::filesystem::path programFolder() = 0;

  // The user's folder for temporary files.
  virtual std::filesystem::path temporaryFolder() = 0;
};

}  // namespace tintline
