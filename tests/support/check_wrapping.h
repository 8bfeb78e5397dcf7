// What must hold for every wrapped source, whatever it is.
#pragma once

#include <string>
#include <vector>

namespace tintline::test {

// Wraps the lines and checks the result: its tokens are the same, no statement has too many lines,
// and wrapping it again changes nothing. The first fault that was found with the lines, or
// "".
std::string wrappingFault(const std::vector<std::string>& lines, int width, int unit);

}  // namespace tintline::test
