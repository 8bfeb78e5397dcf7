// What the comments and attributes of a module say of its procedures, and of itself.
//
//     '@Description "Sums up."           also ("...") or without quotes
//     '@param Amount  without tax        '@return the sum, '@returns
//     Attribute Sum.VB_Description = "Sums up."
//
// A comment block stands above the head or first in the body. Lines of nothing but marks
// ("'------") are left out, and what frames a line ("'* Sums up. *").
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "listing/sections.h"
#include "vb/module.h"

namespace tintline::site {

struct Documentation {
  std::u8string text;  // lines, each but the last closed by LF
  std::vector<std::pair<std::u8string, std::u8string>> parameters;  // name, text
  std::u8string returns;
  // Whether it says more than the comments that can be read in the code.
  bool structured = false;

  bool empty() const { return text.empty() && parameters.empty() && returns.empty(); }
};

Documentation documentationOf(const vb::Module& module, const listing::Section& section);

// VB_Description, else the first comment block in front of the first procedure.
std::u8string descriptionOf(const vb::Module& module,
                            const std::vector<listing::Section>& sections);

}  // namespace tintline::site
