// What the user reads about an Office file.
//
// Tested by tests/cli/run.py.
#pragma once

#include "base/message.h"
#include "sources/office_file/vba_project.h"

namespace tintline {

// What could not be read, where, and why.
Message problemText(const office_file::Problem& problem);

// "standard", "class", "document", "form": the same in each language, for data; and as a word.
std::string_view kindName(vb::ModuleKind kind);
Message kindText(vb::ModuleKind kind);

}  // namespace tintline
