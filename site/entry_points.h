// Which declarations can be used without being named in any code: handlers of events, what a host
// starts by its name, members of an interface, default members.
//
// In doubt a declaration is one of them: to call something unused that is used would be worse
// than to miss it.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <vector>

#include "vb/module.h"

namespace tintline::site {

// By declaration. Also true where nothing can be told: for what no page lists as unused.
std::vector<bool> entryPointsOf(const vb::Module& module);

}  // namespace tintline::site
