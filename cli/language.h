// The language in which the command line talks to its user.
//
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#pragma once

#include "base/message.h"

namespace tintline {

// That of the locale: of LC_ALL, LC_MESSAGES or LANG, of which the first counts that is neither
// missing nor empty (POSIX, "Environment Variables"); without any, that of the system's own user
// interface.
Language userLanguage();

}  // namespace tintline
