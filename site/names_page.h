// All names from A to Z, but labels, parameters and locals.
//
// Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#pragma once

#include "site/page.h"

namespace tintline::site {

// Whether the list has declarations of that kind.
bool isNamed(vb::DeclarationKind kind);

void writeNames(SitePage& page);

}  // namespace tintline::site
