// The text of --help.
//
// Tested by tests/cli/run.py.
#pragma once

#include <string>

#include "base/message.h"

namespace tintline {

// Closed by a line feed, no line longer than 80 characters.
std::wstring helpText(Language language);

}  // namespace tintline
