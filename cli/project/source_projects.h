// Which projects the sources of a run are: those that project files list, and the modules beside
// them.
//
// Tested by tests/cli/project.py.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/options.h"
#include "cli/plan.h"

namespace tintline {

struct SourceProject {
  std::u8string name;          // as the user reads it
  std::u8string declaredName;  // as the code knows it; empty: unknown
  bool isLibrary = false;
  std::vector<std::size_t> tasks;
};

// The pages of all modules are files below one folder, whose names a target holds.
struct SourceProjects {
  std::u8string title;
  std::vector<SourceProject> projects;
  std::vector<Task> tasks;  // a failure where there is nothing to read
};

// Finds them by the arguments: folders, with all that lies below, project files, modules. A module
// that no project file lists belongs to its folder; all of them are one project where there is no
// project file and no two of them have one name. Throws UsageError.
SourceProjects findProjects(const Options& options);

}  // namespace tintline
