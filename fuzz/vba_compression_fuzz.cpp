// Fuzzes sources/office_file/vba_compression.h: the input as a container, and as a text that must
// come back.
#include <cassert>

#include "sources/office_file/limits.h"
#include "sources/office_file/vba_compression.h"
#include "tests/support/office_fixture.h"

using namespace tintline;
using namespace tintline::office_file;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  constexpr std::size_t kLimit = 10000;
  assert(decompressed(input, kLimit).bytes.size() <= kLimit);
  assert(decompressed("\x01" + std::string(input), kLimit).bytes.size() <= kLimit);
  const Bytes back = decompressed(test::vbaCompressed(input), kMebibyte);
  assert(back.bytes == input && back.fault == Fault::None);
  const std::size_t found = findSource(input);
  assert(found == input.npos || input[found] == '\x01');
  return 0;
}
