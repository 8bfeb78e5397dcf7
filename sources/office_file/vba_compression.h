// The compression of VBA projects, [MS-OVBA] 2.4.1.
//
// Tested by tests/unit/sources/office_file_test.cpp and fuzz/vba_compression_fuzz.cpp.
#pragma once

#include <cstddef>
#include <string_view>

#include "sources/office_file/fault.h"

namespace tintline::office_file {

// What a compressed container gives, at most `limit` bytes. What was read in front of damage is
// given with the fault.
Bytes decompressed(std::string_view container, std::size_t limit);

// Where the source of a module begins in its stream when the place that the project says is wrong:
// its text begins with "Attribute". npos when there is none.
std::size_t findSource(std::string_view stream);

}  // namespace tintline::office_file
