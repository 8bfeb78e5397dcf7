// Fuzzes sources/office_file/compound_file.h: a compound file with damage, or its header with the
// input behind it.
#include <cassert>

#include "fuzz/patches.h"
#include "sources/office_file/compound_file.h"
#include "tests/support/office_fixture.h"

using namespace tintline;
using namespace tintline::office_file;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string kFile = test::projectFile(test::sampleProject());
  constexpr std::size_t kHeader = 512;
  if (size == 0) return 0;
  const std::string file = (data[0] & 1) != 0
                               ? patched(kFile, data + 1, size - 1)
                               : kFile.substr(0, kHeader) +
                                     std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
  MemorySource source(file);
  Fault fault = Fault::None;
  const auto compound = CompoundFile::open(source, fault);
  assert(compound || fault != Fault::None);
  if (!compound) return 0;
  Budget budget;
  std::size_t children = 0;
  for (std::uint32_t i = 0; i < compound->entries().size(); ++i) {
    const CompoundFile::Entry& entry = compound->entries()[i];
    children += entry.children.size();
    const Bytes bytes = compound->read(i, budget);
    assert(bytes.bytes.size() <= file.size());
    assert(bytes.fault != Fault::None || bytes.bytes.size() == entry.size);
  }
  assert(children < compound->entries().size());  // each has one parent, the root has none
  return 0;
}
