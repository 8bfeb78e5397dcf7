// Compound files: storages and streams in one file, as [MS-CFB] has them (versions 3 and 4).
//
// Tested by tests/unit/sources/office_file_test.cpp and fuzz/compound_file_fuzz.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sources/office_file/byte_source.h"
#include "sources/office_file/fault.h"
#include "sources/office_file/limits.h"

namespace tintline::office_file {

inline constexpr std::string_view kCompoundSignature("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);

using ClassId = std::array<char, 16>;  // as it is stored

class CompoundFile {
 public:
  static constexpr std::uint32_t kRoot = 0;

  struct Entry {
    std::u16string name;
    bool isStorage = false;
    ClassId classId{};
    std::uint32_t start = 0;              // of a stream: its first sector
    std::uint64_t size = 0;               // of a stream, as the file says
    std::vector<std::uint32_t> children;  // of a storage; each entry has at most one parent
  };

  // The source must live as long as the file. `fault` says why there is none.
  static std::optional<CompoundFile> open(ByteSource& source, Fault& fault);

  // By their numbers; kRoot is the first. Those that no storage holds have neither name nor size.
  const std::vector<Entry>& entries() const { return entries_; }

  // What the storage holds under that name, without regard to the case of ASCII letters.
  std::optional<std::uint32_t> child(std::uint32_t storage, std::u16string_view name) const;

  // The bytes of a stream, at most `limit`; as many as there are where its sectors end too early.
  Bytes read(std::uint32_t stream, Budget& budget, std::size_t limit = kMaxPart) const;

 private:
  CompoundFile(ByteSource& source, unsigned sectorShift)
      : source_(&source), sectorShift_(sectorShift) {}

  std::uint64_t placeOf(std::uint32_t sector) const {
    return (std::uint64_t{sector} + 1) << sectorShift_;
  }
  std::size_t sectorSize() const { return std::size_t{1} << sectorShift_; }

  void readTable(std::string_view header);
  void appendTable(std::uint32_t sector);
  std::vector<std::uint32_t> chain(std::uint32_t first, std::size_t most) const;
  std::string readSectors(const std::vector<std::uint32_t>& sectors) const;
  void readMiniTable(std::string_view header);
  Fault readDirectory(std::uint32_t first, bool longSizes);
  void link(const std::string& directory);
  bool appendRun(std::uint64_t place, std::size_t count, std::string& bytes) const;
  void readLong(const Entry& entry, std::size_t size, std::string& bytes) const;
  void readMini(const Entry& entry, std::size_t size, std::string& bytes) const;

  ByteSource* source_;
  unsigned sectorShift_;
  unsigned miniShift_ = 6;
  std::uint32_t cutoff_ = 0;               // smaller streams lie in the mini stream
  std::size_t sectors_ = 0;                // that the file has
  std::vector<std::uint32_t> table_;       // of each sector the next of its chain
  std::vector<std::uint32_t> miniTable_;   // the same in the mini stream
  std::vector<std::uint32_t> miniStream_;  // the sectors of the mini stream
  std::vector<Entry> entries_;
};

// A name as it is in a compound file, for the user.
std::u8string nameText(std::u16string_view name);

}  // namespace tintline::office_file
