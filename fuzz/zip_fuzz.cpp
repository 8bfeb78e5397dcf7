// Fuzzes sources/office_file/zip_archive.h: a package with damage, or the input as it is.
#include <cassert>

#include "fuzz/patches.h"
#include "sources/office_file/zip_archive.h"
#include "tests/support/office_fixture.h"

using namespace tintline;
using namespace tintline::office_file;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string kPackage = test::macroPackage("some bytes, some bytes");
  if (size == 0) return 0;
  const std::string file = (data[0] & 1) != 0
                               ? patched(kPackage, data + 1, size - 1)
                               : std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
  MemorySource source(file);
  Fault fault = Fault::None;
  const auto archive = ZipArchive::open(source, fault);
  assert(archive || fault != Fault::None);
  if (!archive) return 0;
  Budget budget;
  archive->forEach([&](const ZipArchive::Part& part) {
    constexpr std::size_t kLimit = 1U << 20;
    const Bytes bytes = archive->read(part, budget, kLimit);
    assert(bytes.bytes.size() <= kLimit);
    assert(bytes.fault != Fault::None ||
           bytes.bytes.size() == std::min<std::uint64_t>(part.size, kLimit));
    return true;
  });
  return 0;
}
