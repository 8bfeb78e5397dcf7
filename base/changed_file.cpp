// See changed_file.h. Tested by tests/cli/run.py.
#include "base/changed_file.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tintline {

ChangedFile::Buffer::Buffer(std::filesystem::path target)
    : target_(std::move(target)), piece_(0x10000) {
  if (std::error_code none; std::filesystem::is_regular_file(target_, none))  // no device
    present_.open(target_, std::ios::binary);
}

bool ChangedFile::Buffer::isNext(const char* text, std::streamsize size) {
  while (size > 0 && present_) {
    const auto part = std::min(size, static_cast<std::streamsize>(piece_.size()));
    present_.read(piece_.data(), part);
    if (present_.gcount() != part || !std::equal(text, text + part, piece_.data())) return false;
    text += part;
    size -= part;
  }
  return size == 0;
}

// What was the same is read once more.
void ChangedFile::Buffer::beginNew() {
  changed_.emplace(target_);
  present_.clear();
  present_.seekg(0);
  for (std::uintmax_t left = same_; left > 0;) {
    const auto part = static_cast<std::streamsize>(std::min<std::uintmax_t>(left, piece_.size()));
    if (!present_.read(piece_.data(), part))
      throw FileError(target_, std::make_error_code(std::errc::io_error));
    changed_->stream().write(piece_.data(), part);
    left -= static_cast<std::uintmax_t>(part);
  }
  present_.close();
}

std::streamsize ChangedFile::Buffer::xsputn(const char* text, std::streamsize size) {
  if (!changed_) {
    if (present_.is_open() && isNext(text, size)) {
      same_ += static_cast<std::uintmax_t>(size);
      return size;
    }
    beginNew();
  }
  changed_->stream().write(text, size);
  return size;
}

ChangedFile::Buffer::int_type ChangedFile::Buffer::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(0);
  const char text = traits_type::to_char_type(character);
  xsputn(&text, 1);
  return character;
}

void ChangedFile::Buffer::finish() {
  const bool same = !changed_ && present_.is_open() && present_.peek() == traits_type::eof();
  if (same) return;
  if (!changed_) beginNew();
  changed_->commit();
}

ChangedFile::ChangedFile(std::filesystem::path target)
    : buffer_(std::move(target)), stream_(&buffer_) {
  stream_.exceptions(std::ios::badbit);  // hands those of the buffer on
}

void ChangedFile::commit() { buffer_.finish(); }

}  // namespace tintline
