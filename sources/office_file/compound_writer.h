// Writes compound files of version 3, [MS-CFB]. The same storage gives the same bytes.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <string>

#include "sources/office_file/designer.h"

namespace tintline::office_file {

// The file with that storage as its root. Throws std::length_error beyond 2 GiB.
std::string compoundFileOf(const Storage& root);

}  // namespace tintline::office_file
