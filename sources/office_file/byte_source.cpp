// See byte_source.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/byte_source.h"

#include <cerrno>
#include <system_error>

#include "base/file.h"

namespace tintline::office_file {
namespace {

constexpr std::size_t kBuffer = 64U << 10;  // directories and small streams lie side by side

std::error_code lastError() { return {errno != 0 ? errno : EIO, std::generic_category()}; }

}  // namespace

FileSource::FileSource(const std::filesystem::path& path) : path_(path) {
  std::error_code failure;
  if (std::filesystem::is_directory(path, failure))
    throw FileError(path, std::make_error_code(std::errc::is_a_directory));
  errno = 0;
  file_.open(path, std::ios::binary | std::ios::ate);
  if (!file_) throw FileError(path, lastError());
  const auto end = file_.tellg();
  if (end < 0) throw FileError(path, lastError());
  size_ = static_cast<std::uint64_t>(end);
}

std::string_view FileSource::view(std::uint64_t offset, std::size_t count) {
  if (offset >= size_) return {};
  count = static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset));
  if (offset < bufferAt_ || offset + count > bufferAt_ + buffer_.size())
    fill(offset, std::max(count, kBuffer));
  return std::string_view(buffer_).substr(static_cast<std::size_t>(offset - bufferAt_), count);
}

void FileSource::fill(std::uint64_t offset, std::size_t count) {
  count = static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset));
  buffer_.resize(count);
  bufferAt_ = offset;
  errno = 0;
  file_.clear();
  file_.seekg(static_cast<std::streamoff>(offset));
  file_.read(buffer_.data(), static_cast<std::streamsize>(count));
  if (file_.bad()) throw FileError(path_, lastError());
  buffer_.resize(static_cast<std::size_t>(file_.gcount()));  // a file that became shorter
}

}  // namespace tintline::office_file
