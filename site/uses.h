// Who uses what: the references of each module, and from what is declared back to them.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "site/facts.h"
#include "site/names.h"
#include "vb/module.h"
#include "vb/project.h"

namespace tintline::site {

// A reference, but those to parameters, locals and labels.
struct Use {
  std::uint32_t token;
  std::uint32_t module;       // what it means
  std::uint32_t declaration;  // of it; kNone: the module itself
  std::uint32_t procedure;    // in which it stands, a declaration; kNone: in none
  std::uint32_t line;
};

// The uses in a module, in the order of the text. Marks which locals are used in `facts` and, in
// `names`, what the code and its strings hold beside.
std::vector<Use> usesIn(const vb::Module& module, std::uint32_t index,
                        std::span<const vb::Reference> references, ModuleFacts& facts,
                        Names& names);

// The way back, for all modules of a project.
class Callers {
 public:
  struct Place {
    std::uint32_t module;
    std::uint32_t use;  // index among the uses of that module
  };

  // `uses` by module; `names` is how many declarations each module has.
  Callers(const std::vector<std::vector<Use>>& uses, const std::vector<std::uint32_t>& names);

  // In the order of the modules and of their texts.
  std::span<const Place> of(std::uint32_t module, std::uint32_t declaration) const {
    const std::size_t at = first_[module] + declaration;
    return std::span(places_).subspan(begins_[at], begins_[at + 1] - begins_[at]);
  }

 private:
  std::vector<std::size_t> first_;  // by module: of its declarations in begins_
  std::vector<std::uint32_t> begins_;
  std::vector<Place> places_;
};

}  // namespace tintline::site
