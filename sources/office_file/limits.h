// What reading one Office file may cost. The files come from anywhere: a size that a file announces
// is never believed, and each loop ends by one of these bounds or by the length of the input.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

namespace tintline::office_file {

inline constexpr std::size_t kMebibyte = std::size_t{1} << 20;

// The largest public modules have some 2 MiB: nobody wrote a longer text.
inline constexpr std::size_t kMaxModule = 64 * kMebibyte;
// A part of a package, or a stream. Real ones with a project have at most 20 MiB.
inline constexpr std::size_t kMaxPart = 256 * kMebibyte;
// The texts of all modules of a file, which lie in memory together.
inline constexpr std::size_t kMaxProject = 256 * kMebibyte;
// Everything that is read, inflated and decompressed for one file: some seconds. What is read
// twice, because a damaged file names it twice, counts twice.
inline constexpr std::size_t kMaxWork = 1024 * kMebibyte;
// Files in files: an embedded workbook in a presentation in a document has 3.
inline constexpr int kMaxDepth = 4;
// Projects of one file: each embedded document may have one.
inline constexpr std::size_t kMaxProjects = 1000;
// The directory of a package or compound file, which is held in memory.
inline constexpr std::size_t kMaxDirectory = 16 * kMebibyte;

// Asked now and then while a file is read: whether to go on.
using GoOn = std::function<bool()>;

// What may still be spent on a file.
class Budget {
 public:
  explicit Budget(GoOn goOn = {}) : goOn_(std::move(goOn)) {}

  // Whether so many bytes of work may be done; they are spent then.
  bool spend(std::size_t bytes) {
    if (bytes > work_) return false;
    work_ -= bytes;
    unasked_ += bytes;
    if (goOn_ && unasked_ >= kMebibyte / 4) {
      unasked_ = 0;
      if (!goOn_()) work_ = 0;
    }
    return work_ > 0;
  }
  // How much text may still be kept, and keeping some.
  std::size_t room() const { return room_; }
  void keep(std::size_t bytes) { room_ -= bytes < room_ ? bytes : room_; }

 private:
  GoOn goOn_;
  std::size_t unasked_ = 0;  // bytes since it was asked
  std::size_t work_ = kMaxWork;
  std::size_t room_ = kMaxProject;
};

}  // namespace tintline::office_file
