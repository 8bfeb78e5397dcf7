// Texts that the program carries inside itself.
//
// Tested by tests/unit/engine/engine_test.cpp.
#pragma once

#include <string_view>

namespace tintline {

// The built-in keyword list of that resource number, as 8-bit text with CR LF
// line ends: 101 holds the reserved words, 102 the constants and object-model
// names. Lives as long as the program. Throws std::out_of_range for any other
// number.
std::string_view programResource(int number);

}  // namespace tintline
