// Who calls whom.
//
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#pragma once

#include "site/page.h"

namespace tintline::site {

void writeCalls(SitePage& page);

}  // namespace tintline::site
