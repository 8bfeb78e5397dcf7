// Texts and tables that the program carries inside itself.
//
// Tested by tests/unit/engine/engine_test.cpp.
#pragma once

#include <string_view>

namespace tintline {

// What is built in under that resource number. 101 and 102 are keyword lists, as
// 8-bit text with CR LF line ends: the reserved words, and the constants and
// object-model names. 103 has the code pages (data/make_codepages.py says how).
// Lives as long as the program. Throws std::out_of_range for any other number.
std::string_view programResource(int number);

}  // namespace tintline
