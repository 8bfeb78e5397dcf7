// Modules that know each other: binds the names of a module to what declares them.
//
// Tested by the cases in tests/golden/language/links.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "vb/module.h"

namespace tintline::vb {

class ProjectTables;

// Name token `token` of a module means declaration `declaration` (kNone: the module itself) of
// the project's module `module`.
struct Reference {
  std::uint32_t token;
  std::uint32_t module;
  std::uint32_t declaration;
};

// What each module of a project shows to the others. It holds no texts, tokens or bodies: those
// of a module are needed only while its own names are bound.
class Project {
 public:
  // `name` is that of the project where it is known.
  explicit Project(std::u8string name = {});
  ~Project();
  Project(Project&&) noexcept;
  Project& operator=(Project&&) noexcept;

  // Adds what the module declares and returns its index. Modules of one name see only
  // themselves, and the others see none of them.
  std::uint32_t add(const Module& module);

  // To be called once when all modules are added, before the first `resolve`.
  void close();

  // The references of a module that was added as `index`, in the order of their tokens:
  // of names in code to procedures, Declares, events, module variables, constants, enums with
  // members, types with fields, controls, modules and labels. Parameters and locals are resolved
  // as well, with their own kinds; whoever makes links leaves them out. May be called by several
  // threads at once.
  std::vector<Reference> resolve(const Module& module, std::uint32_t index) const;

 private:
  std::unique_ptr<ProjectTables> tables_;
};

}  // namespace tintline::vb
