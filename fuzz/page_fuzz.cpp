// Fuzzes the exact listings of one or two modules: whatever the text is, a page shows it, its ids
// are unique, its links land, and it has no element of its own.
//
// The input's first four bytes decide about options.
#include <cassert>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "tests/support/listing_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::uint32_t choices = 0;
  if (size < sizeof choices) return 0;
  std::memcpy(&choices, data, sizeof choices);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  assert(tintline::test::faultOfListings(text.substr(sizeof choices), choices).empty());
  return 0;
}
