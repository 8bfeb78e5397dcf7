// A file that is written only when that changes it.
//
// Tested by tests/cli/run.py.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <streambuf>
#include <vector>

#include "base/file.h"

namespace tintline {

// Compares what is written with what stands in the file. From the first difference on it is an
// AtomicFile that begins with what was the same; without any the file is not touched.
class ChangedFile {
 public:
  explicit ChangedFile(std::filesystem::path target);

  // As those of AtomicFile.
  std::ostream& stream() { return stream_; }
  void commit();

 private:
  class Buffer final : public std::streambuf {
   public:
    explicit Buffer(std::filesystem::path target);
    void finish();

   protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int_type overflow(int_type character) override;

   private:
    bool isNext(const char* text, std::streamsize size);
    void beginNew();

    std::filesystem::path target_;
    std::ifstream present_;
    std::uintmax_t same_ = 0;  // bytes
    std::vector<char> piece_;
    std::optional<AtomicFile> changed_;  // once there is a difference
  };

  Buffer buffer_;
  std::ostream stream_;
};

}  // namespace tintline
