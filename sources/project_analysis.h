// What a VBA project holds: components, declarations, procedures, with their lines.
//
// Tested by tests/unit/sources/sources_test.cpp.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "sources/office_project.h"

namespace tintline {

struct ProcedureSummary {
  std::wstring name;
  ProcedureKind kind = ProcedureKind::Procedure;
  std::int32_t lines = 0;
};

struct ComponentSummary {
  std::wstring name;
  std::int32_t type = kStandardModule;
  std::int32_t lines = 0;
  std::int32_t declarationLines = 0;
  std::vector<ProcedureSummary> procedures;  // in the order of the code
};

struct ProjectSummary {
  std::wstring document;
  bool isProtected = false;  // then nothing is known of its components
  std::vector<ComponentSummary> components;
};

// Walks the project from procedure to procedure: at most 3 calls for each and 6 for
// each component. A procedure that stands twice, in two branches of a conditional
// compilation, is listed once: the host knows it by name and kind alone. It costs one call for
// the lines from there on, and one for each of them that may be a head. `goOn` is
// asked between items; when it answers false, nothing is the result. Throws
// OfficeError.
std::optional<ProjectSummary> analyseProject(Project& project, const std::function<bool()>& goOn);

// "Get ", "Let " or "Set " for property procedures, else "".
std::wstring_view kindPrefix(ProcedureKind kind);

}  // namespace tintline
