// The projects that a site shows, with all that its pages tell of them.
//
//     Site site;
//     Project& project = site.projects.emplace_back(...);
//     project.add(module, factsOf(module, words), page, site.names);   // each module
//     project.close();
//     project.addUses(module, 0, site.names);                          // each module once more
//     project.finish();
//
// After `finish` nothing changes any more, and several threads may write pages.
//
// Tested by tests/unit/site/site_test.cpp.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "listing/options.h"
#include "listing/targets.h"
#include "site/facts.h"
#include "site/names.h"
#include "site/uses.h"
#include "vb/project.h"

namespace tintline::site {

class Project {
 public:
  // `name` as the user reads it; `declaredName` is that in the code, where it is known.
  // `isLibrary`: other programs use what its classes show. The options must live as long as the
  // project.
  Project(std::u8string name, std::u8string declaredName, bool isLibrary,
          const listing::Options& options)
      : name_(std::move(name)),
        isLibrary_(isLibrary),
        bound_(std::move(declaredName)),
        targets_(options, listing::Place::OwnPages) {}

  // Adds a module and returns its index. `page` is its address from the folder of all module
  // pages.
  std::uint32_t add(const vb::Module& module, ModuleFacts facts, std::u8string_view page,
                    Names& names);
  void close();

  std::vector<vb::Reference> resolve(const vb::Module& module, std::uint32_t index) const {
    return bound_.resolve(module, index);
  }

  // Notes the uses in a module. May be called by several threads, for different modules.
  void addUses(const vb::Module& module, std::uint32_t index, Names& names);
  void finish();

  const std::u8string& name() const { return name_; }
  bool isLibrary() const { return isLibrary_; }
  const std::deque<ModuleFacts>& modules() const { return modules_; }
  const std::vector<Use>& uses(std::uint32_t module) const { return uses_[module]; }
  const Callers& callers() const { return *callers_; }
  const listing::Targets& targets() const { return targets_; }

  // The indices of the modules, by kind and name.
  std::vector<std::uint32_t> modulesInOrder() const;

 private:
  std::u8string name_;
  bool isLibrary_;
  vb::Project bound_;
  listing::Targets targets_;
  std::deque<ModuleFacts> modules_;
  std::vector<std::vector<Use>> uses_;  // by module
  std::optional<Callers> callers_;
};

// What could not be read, and why, as the user reads it.
struct Failure {
  std::u8string file, reason;
};

struct Site {
  std::u8string title;
  std::deque<Project> projects{};
  std::vector<Failure> failures{};
  Names names{};
};

}  // namespace tintline::site
