// The first page: the projects with their modules, and what could not be read.
//
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#pragma once

#include "site/page.h"

namespace tintline::site {

void writeIndex(SitePage& page);

}  // namespace tintline::site
