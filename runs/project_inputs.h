// Which projects the inputs of a run are: those that project files list, and the modules beside
// them.
//
// Tested by tests/cli/project.py.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "runs/inputs.h"
#include "runs/task.h"

namespace tintline {

struct SourceProject {
  std::u8string name;          // as the user reads it
  std::u8string declaredName;  // as the code knows it; empty: unknown
  bool isLibrary = false;
  std::vector<std::size_t> tasks;
};

// The pages of all modules are files below one folder, whose names a target holds.
struct ProjectInputs {
  std::u8string title;
  std::vector<SourceProject> projects;
  std::vector<Task> tasks;  // a failure where there is nothing to read
  std::vector<PassedOver> passedOver{};
};

// Finds them by what is wanted: folders, with all that lies below, project files, Office files,
// modules. A module that no project file lists belongs to its folder; all of them are one project
// where there is no project file and no two of them have one name.
ProjectInputs findProjects(InputChoice choice);

}  // namespace tintline
