// Initialisation files, read and written alike on every platform.
//
// A file is 8-bit text; lines end at CR LF, LF or CR. A line whose first
// character other than a blank is "[" and that holds a "]" opens the section of
// that name. Section names and keys are compared without regard to case; of
// several sections or keys of one name the first counts.
//
// Tested by tests/unit/base/ini_test.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tintline::ini {

// The lines of a section in file order, each as it stands and followed by a NUL.
// Empty lines are skipped, lines beginning with ";" are kept. Of the text at
// most `limit` characters are read; an entry that this cuts is closed by a NUL
// all the same. "" when the section is missing.
std::string sectionText(std::string_view file, std::string_view section, std::size_t limit);

// What stands behind the first "=" of the key's line, blanks and quotes
// included; nothing when section or key are missing. Lines beginning with ";"
// are skipped, blanks around the key do not count.
std::optional<std::string> value(std::string_view file, std::string_view section,
                                 std::string_view key);

// The file with key = value in that section: the key's line changed in place, or
// added behind the section's last line that is not empty, or with its section at
// the end. All other lines stay as they are; added lines end in CR LF.
std::string withValue(std::string_view file, std::string_view section, std::string_view key,
                      std::string_view value);

}  // namespace tintline::ini
