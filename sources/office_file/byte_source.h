// Bytes that are read where they are wanted: of a file, or in memory.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace tintline::office_file {

class ByteSource {
 public:
  virtual ~ByteSource() = default;
  virtual std::uint64_t size() const = 0;

  // Up to `count` bytes from `offset` on: fewer where the source ends. The view lives until the
  // next call. Throws FileError when a file cannot be read.
  virtual std::string_view view(std::uint64_t offset, std::size_t count) = 0;
};

class MemorySource final : public ByteSource {
 public:
  // The bytes must live as long as this object.
  explicit MemorySource(std::string_view bytes) : bytes_(bytes) {}
  std::uint64_t size() const override { return bytes_.size(); }
  std::string_view view(std::uint64_t offset, std::size_t count) override {
    return offset < bytes_.size() ? bytes_.substr(static_cast<std::size_t>(offset), count)
                                  : std::string_view();
  }

 private:
  std::string_view bytes_;
};

class FileSource final : public ByteSource {
 public:
  // Throws FileError.
  explicit FileSource(const std::filesystem::path& path);
  std::uint64_t size() const override { return size_; }
  std::string_view view(std::uint64_t offset, std::size_t count) override;

 private:
  void fill(std::uint64_t offset, std::size_t count);

  const std::filesystem::path path_;
  std::ifstream file_;
  std::uint64_t size_ = 0;
  std::string buffer_;  // what lies at bufferAt_ in the file
  std::uint64_t bufferAt_ = 0;
};

// Little-endian numbers; 0 where the bytes end before them.
inline std::uint64_t numberAt(std::string_view bytes, std::size_t offset, std::size_t width) {
  std::uint64_t number = 0;
  if (offset > bytes.size() || bytes.size() - offset < width) return 0;
  for (std::size_t i = width; i > 0; --i)
    number = number << 8 | static_cast<unsigned char>(bytes[offset + i - 1]);
  return number;
}
inline std::uint16_t u16(std::string_view bytes, std::size_t offset) {
  return static_cast<std::uint16_t>(numberAt(bytes, offset, 2));
}
inline std::uint32_t u32(std::string_view bytes, std::size_t offset) {
  return static_cast<std::uint32_t>(numberAt(bytes, offset, 4));
}
inline std::uint64_t u64(std::string_view bytes, std::size_t offset) {
  return numberAt(bytes, offset, 8);
}

}  // namespace tintline::office_file
