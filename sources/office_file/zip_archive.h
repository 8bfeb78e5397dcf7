// Zip packages: their directory, and the parts that are wanted. The rest is not touched.
//
// The format is that of PKWARE's APPNOTE.TXT, of which Office packages use stored and deflated
// parts (ISO/IEC 29500-2). Names of parts are never used as paths.
//
// Tested by tests/unit/sources/office_file_test.cpp and fuzz/zip_fuzz.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "sources/office_file/byte_source.h"
#include "sources/office_file/fault.h"
#include "sources/office_file/limits.h"

namespace tintline::office_file {

class ZipArchive {
 public:
  struct Part {
    std::string_view name;  // in the directory: lives as long as the archive
    std::uint64_t header;   // where its local header begins
    std::uint64_t compressedSize;
    std::uint64_t size;
    std::uint32_t checksum;
    std::uint16_t method;
    std::uint16_t flags;
  };

  // The source must live as long as the archive. `fault` says why there is none, or that only a
  // part of the directory could be read.
  static std::optional<ZipArchive> open(ByteSource& source, Fault& fault);

  // Calls `visit` for each part, in the order of the directory, until it answers false. Returns
  // false when a part of the directory is none.
  bool forEach(const std::function<bool(const Part&)>& visit) const;

  // The part of that name, without regard to the case of ASCII letters and to a "/" in front.
  std::optional<Part> find(std::string_view name) const;

  // The bytes of a part, at most `limit`. A wrong checksum is told with all of them.
  Bytes read(const Part& part, Budget& budget, std::size_t limit = kMaxPart) const;

 private:
  ZipArchive(ByteSource& source, std::string directory, std::uint64_t shift)
      : source_(&source), directory_(std::move(directory)), shift_(shift) {}

  std::optional<std::uint64_t> dataOf(const Part& part) const;

  ByteSource* source_;
  std::string directory_;
  std::uint64_t shift_;  // what stands in front of the package in its file
};

}  // namespace tintline::office_file
