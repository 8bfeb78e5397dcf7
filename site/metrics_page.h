// The figures of modules and procedures, by name and by size.
//
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#pragma once

#include "site/page.h"

namespace tintline::site {

void writeMetrics(SitePage& page);

}  // namespace tintline::site
