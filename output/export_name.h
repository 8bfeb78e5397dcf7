// Names for exported files.
//
// Tested by tests/unit/output/output_test.cpp.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tintline {

// The file name that the save dialog offers, from the parts of the chosen node's
// full path, root first (for a loaded file the file's name alone): "\" becomes
// "_", "(…)" parts and blanks go, a closing ".bas", ".frm" or ".cls" goes, the
// parts are joined with "_".
std::wstring defaultExportName(const std::vector<std::wstring>& parts);

// The chosen name with its extension (from the last "." of the file name on)
// replaced by that of the chosen filter: 1 gives ".htm", 2 gives ".html".
std::wstring forceExtension(std::wstring_view chosenName, int filterIndex);

}  // namespace tintline
