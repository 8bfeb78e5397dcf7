// What is declared and never used.
//
// A name counts as used when code means it, or when code holds the same name and it is not known
// what it means there: late bound calls, names of two modules. A use in the body of a procedure
// itself is none. What can be reached without being named (site/entry_points.h) is left out, also
// members of interfaces, of classes that are created by a text, and of those that a
// library shows to other programs.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <cstdint>
#include <vector>

#include "site/site.h"

namespace tintline::site {

enum class Unused : std::uint8_t {
  Private,      // procedures, variables, constants, Declares, types that only their module sees
  Public,       // the same for all modules
  Local,        // variables and constants of procedures
  OnlyInTexts,  // a string holds its name
};
inline constexpr std::size_t kUnusedGroups = 4;

struct UnusedName {
  std::uint32_t module;
  std::uint32_t declaration;
  Unused group;
};

// In the order of the modules and their declarations.
std::vector<UnusedName> unusedIn(const Project& project, const Names& names);

}  // namespace tintline::site
