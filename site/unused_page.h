// What is never used, and the rule that this follows.
//
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#pragma once

#include "site/page.h"

namespace tintline::site {

void writeUnused(SitePage& page);

}  // namespace tintline::site
