// Fuzzes the wrapping of lines: the input's lines, as a file has them or with a blank behind each,
// keep their meaning, and wrapping them again changes nothing. Its last two bytes choose width,
// unit and blanks.
#include <cassert>
#include <cstdint>
#include <cstdio>

#include "base/text.h"
#include "reformat/wrapping.h"
#include "tests/support/check_wrapping.h"

using namespace tintline;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const int width = kMinLineWidth + data[size - 1] % 64;
  const int unit = data[size - 2] % 8;
  const bool asReadFromFile = data[size - 2] % 16 >= 8;
  std::vector<std::string> lines;
  for (const std::string_view line : Split({reinterpret_cast<const char*>(data), size - 2}, '\n'))
    lines.push_back(std::string(line) + (asReadFromFile ? " " : ""));
  const std::string fault = test::wrappingFault(lines, width, unit);
  if (!fault.empty()) std::fwrite(fault.data(), 1, fault.size(), stderr);
  assert(fault.empty());
  return 0;
}
