// Where the platform keeps the program, its temporary files and what is the user's.
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

  // The folder for what the program keeps for this user. It need not exist yet; empty
  // when the platform has none.
  virtual std::filesystem::path userFolder() = 0;
};

}  // namespace tintline
