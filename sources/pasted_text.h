// Source lines from pasted text.
//
// Tested by tests/unit/sources/sources_test.cpp.
#pragma once

#include <string_view>

#include "sources/module_file_reader.h"

namespace tintline {

// The lines of a pasted text: split at carriage returns (line feeds where there
// are none), without tabs, each followed by one blank; with the procedure heads
// among them. An empty text gives no lines.
ModuleSource Einfügen(std::string_view text);

}  // namespace tintline
