// Fuzzes vb/module.h and vb/project.h: any source is read, and its names are bound.
#include <cassert>
#include <cstdint>

#include "tests/support/check_module.h"
#include "vb/text.h"

using namespace tintline;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const vb::WordLists kWords;
  const std::u8string text = vb::decode({reinterpret_cast<const char*>(data), size}).text;
  assert(vb::moduleFault(text, kWords) == nullptr);
  return 0;
}
