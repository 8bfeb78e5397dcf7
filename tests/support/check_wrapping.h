// What must hold for every wrapped source.
#pragma once

#include <string>
#include <vector>

namespace tintline::test {

// Wraps the lines and checks the result; the first fault that was found with the lines, or "".
std::string wrappingFault(const std::vector<std::string>& lines, int width, int unit);

}  // namespace tintline::test
