// The VBA projects in a closed Office file, read without Office.
//
// Packages (.xlsm, .docm, .pptm ...), compound files (.xls, .doc, .ppt ...), flat XML packages, the
// XML forms of 2003, web archives, a bare vbaProject.bin, and documents embedded in all of them.
// What a file is decides its content, never its name. The formats are those of [MS-OVBA], [MS-CFB],
// [MS-PPT], [MS-OSHARED] and ISO/IEC 29500.
//
// Tested by tests/unit/sources/office_file_test.cpp and fuzz/office_file_fuzz.cpp.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <vector>

#include "sources/office_file/byte_source.h"
#include "sources/office_file/limits.h"
#include "sources/office_file/vba_project.h"

namespace tintline::office_file {

// How much of a file tells its kind.
inline constexpr std::size_t kBeginning = 4096;

// Whether a file that begins so is one of Office's, or of a program whose projects are not read.
bool isOfficeFile(std::string_view beginning);

// The same of a file; false for one that cannot be read.
bool isOfficeFileAt(const std::filesystem::path& file);

struct OfficeFile {
  std::vector<Project> projects;
  std::vector<Problem> problems;
};

// Everything that can be read of it; for each thing that cannot, a problem. A file with neither
// projects nor problems does not exist. When `goOn` answers false, what comes back is of no use.
// Throws FileError when the source cannot be read.
OfficeFile readOfficeFile(ByteSource& source, const GoOn& goOn = {});

}  // namespace tintline::office_file
