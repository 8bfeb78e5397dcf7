// Exact pages (listing/) as text with looks: header and index above the code, line numbers in front
// of its lines.
//
// Tested by tests/unit/output/rendered_page_test.cpp and fuzz/rendered_page_fuzz.cpp.
#pragma once

#include <string_view>

#include "output/rendered_page.h"

namespace tintline {

// Whether a page is one, by how it begins.
bool isExactPage(std::string_view html);

// Any bytes may follow such a beginning.
RenderedPage renderExactPage(std::string_view html);

}  // namespace tintline
