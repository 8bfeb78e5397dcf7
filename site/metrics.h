// The figures of procedures and modules.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <cstdint>
#include <vector>

#include "vb/module.h"

namespace tintline::site {

struct LineCounts {
  std::uint32_t lines = 0;
  std::uint32_t commented = 0;  // with a comment in them
  std::uint32_t empty = 0;      // with nothing but blanks
};

// The share of lines with comments among those that are not empty, in percent, rounded.
std::uint32_t commentShare(const LineCounts& counts);

struct Metrics {
  LineCounts counts{};  // from the head to the End
  std::uint32_t parameters = 0;
  std::uint32_t nesting = 0;   // of If, Select Case, For, Do and While; 0: none
  std::uint32_t branches = 1;  // the cyclomatic number: 1 and one more for each If, ElseIf, Case
                               // (but Case Else), For, Do and While
};

struct ModuleMetrics {
  LineCounts counts;
  std::vector<Metrics> procedures;  // as given
};

// `procedures` are declarations of the module, in their order.
ModuleMetrics measure(const vb::Module& module, const std::vector<std::uint32_t>& procedures);

}  // namespace tintline::site
