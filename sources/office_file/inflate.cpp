// See inflate.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/inflate.h"

#include <zlib.h>

#include <algorithm>
#include <new>

namespace tintline::office_file {
namespace {

constexpr std::size_t kPiece = 64U << 10;  // of the input, and of what the result grows by at least

class Inflater {
 public:
  explicit Inflater(Wrapping wrapping) {
    if (inflateInit2(&stream_, wrapping == Wrapping::Raw ? -MAX_WBITS : MAX_WBITS) != Z_OK)
      throw std::bad_alloc();
  }
  ~Inflater() { inflateEnd(&stream_); }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  void give(std::string_view input) {
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
    stream_.avail_in = static_cast<uInt>(input.size());
  }
  bool isHungry() const { return stream_.avail_in == 0; }

  // Appends to the result, at most up to `limit` bytes of it; gives zlib's answer.
  int run(std::string& result, std::size_t limit) {
    const std::size_t before = result.size();
    const std::size_t wanted = std::max(kPiece, result.capacity() - before);
    const std::size_t room = std::min(wanted, limit - before);
    result.resize(before + room);
    stream_.next_out = reinterpret_cast<Bytef*>(result.data() + before);
    stream_.avail_out = static_cast<uInt>(room);
    const int answer = inflate(&stream_, Z_NO_FLUSH);
    result.erase(result.size() - stream_.avail_out);  // what it did not fill
    return answer;
  }

 private:
  z_stream stream_{};
};

}  // namespace

Bytes inflated(ByteSource& source, std::uint64_t offset, std::uint64_t end, Wrapping wrapping,
               std::size_t limit, Budget& budget) {
  Bytes result;
  Inflater inflater(wrapping);
  int answer = Z_OK;
  end = std::min(end, source.size());
  while (answer == Z_OK || answer == Z_BUF_ERROR) {
    if (inflater.isHungry()) {
      const std::uint64_t left = offset < end ? end - offset : 0;
      const std::string_view input =
          source.view(offset, static_cast<std::size_t>(std::min<std::uint64_t>(left, kPiece)));
      if (input.empty()) {
        result.fault = Fault::Truncated;
        break;
      }
      inflater.give(input);
      offset += input.size();
    }
    const std::size_t before = result.bytes.size();
    if (before == limit) return result;
    answer = inflater.run(result.bytes, limit);
    if (!budget.spend(result.bytes.size() - before + 1)) {
      result.fault = Fault::TooLarge;
      return result;
    }
  }
  if (answer != Z_OK && answer != Z_STREAM_END && answer != Z_BUF_ERROR)
    result.fault = Fault::Damaged;
  return result;
}

std::uint32_t crc32Of(std::string_view bytes) {
  return static_cast<std::uint32_t>(
      crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

}  // namespace tintline::office_file
