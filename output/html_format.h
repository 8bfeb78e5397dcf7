// The format in which programs hand HTML over by the clipboard ("HTML Format"): a head with the
// places of what follows, a page, and in it the fragment that is pasted.
// Source: https://learn.microsoft.com/windows/win32/dataxchg/html-clipboard-format
//
// Tested by tests/unit/output/output_test.cpp.
#pragma once

#include <string>
#include <string_view>

namespace tintline {

// `fragment` is UTF-8, and so is the result, without the NUL that ends it on the clipboard.
std::string htmlFormat(std::string_view fragment);

}  // namespace tintline
