// The three comment lines in front of every module when several modules are
// converted as one document; the conversion opens a frame at each.
//
// Tested by tests/unit/sources/sources_test.cpp.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tintline {

// A rule as long as the name, "' Modul:" with the name, the same rule.
std::array<std::string, 3> Modulkopf(std::string_view moduleName);

}  // namespace tintline
