// Where links can lead: the addresses (ids) of all that the modules of a project declare.
//
// An id is `Name`, `Name.Get|Let|Set`, `Type.Field` or `Procedure.Label`; one that stands there
// already, compared without case, gets ".2". It depends on nothing but the module, so links from
// elsewhere last.
//
// Tested by tests/golden/exact.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "listing/options.h"
#include "vb/module.h"

namespace tintline::listing {

// Where the modules are shown.
enum class Place : std::uint8_t {
  OwnPages,  // each in a page of its own
  OnePage,   // all in one document: ids begin with the module's name
};

class ModuleTargets;

// The address of a file in links, by its name in UTF-8 with "/": what must not stand there is
// encoded.
std::u8string addressOf(std::u8string_view file);

// The modules of a project, in the order of vb::Project::add. A module alone is one as well.
class Targets {
 public:
  Targets(const Options& options, Place place);
  ~Targets();
  Targets(Targets&&) noexcept;
  Targets& operator=(Targets&&) noexcept;

  // Adds a module and returns its index. `page` is the name of the file that shows it
  // ("Modul1.htm", "folder/Modul1.htm"), for links from other pages; empty: they cannot lead
  // there. Needs about what
  // the heads of the module need as text.
  std::uint32_t add(const vb::Module& module, std::u8string_view page = {});

  std::size_t size() const;
  // Stays there until the next one is added.
  const ModuleTargets& operator[](std::uint32_t module) const;
  Place place() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace tintline::listing
