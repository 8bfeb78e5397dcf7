// Damage for a small file: a whole one gets further with a fuzzer than bytes from nowhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tintline {

// The file with the input's triples put into it: a place (16 bits) and the byte for it. A last
// triple that is not whole cuts the file there.
inline std::string patched(std::string file, const std::uint8_t* data, std::size_t size) {
  for (; size >= 3; data += 3, size -= 3) {
    const std::size_t place = data[0] | data[1] << 8U;
    if (place < file.size()) file[place] = static_cast<char>(data[2]);
  }
  if (size == 2) file.resize(file.size() * (data[0] | data[1] << 8U) / 0x10000);
  return file;
}

}  // namespace tintline
