// A folder of its own for one test; gone when the test ends.
#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace tintline::test {

class TempFolder {
 public:
  TempFolder()
      : path_(std::filesystem::temp_directory_path() /
              ("tintline-test-" + std::to_string(std::random_device{}()))) {
    std::filesystem::create_directory(path_);
  }
  ~TempFolder() {
    std::error_code none;
    std::filesystem::remove_all(path_, none);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

  // How many entries the folder holds.
  std::ptrdiff_t entries() const {
    return std::distance(std::filesystem::directory_iterator(path_), {});
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tintline::test
