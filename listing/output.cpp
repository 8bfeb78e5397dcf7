// See output.h. Tested by tests/golden/exact.
#include "listing/output.h"

namespace tintline::listing {
namespace {

constexpr std::size_t kBuffer = 64 * 1024;  // stays in the processor's cache

}  // namespace

Output::Output(std::ostream& stream)
    : stream_(stream),
      buffer_(std::make_unique_for_overwrite<char[]>(kBuffer)),
      next_(buffer_.get()),
      end_(next_ + kBuffer) {}

void Output::flush() {
  stream_.write(buffer_.get(), next_ - buffer_.get());
  next_ = buffer_.get();
}

Output& Output::putLong(std::string_view text) {
  if (text.size() <= static_cast<std::size_t>(end_ - next_)) {
    std::memcpy(next_, text.data(), text.size());
    advance(text.size());
    return *this;
  }
  flush();
  stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
  return *this;
}

}  // namespace tintline::listing
