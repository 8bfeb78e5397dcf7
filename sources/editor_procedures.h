// The procedures of a module with their lines, as the editor of Office counts them.
//
// Tested by tests/unit/sources/closed_project_test.cpp.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sources/office_project.h"

namespace tintline {

// Comments and empty lines belong to the procedure behind them, those at the end of the module to
// the last one.
struct EditorProcedure {
  std::wstring name;
  ProcedureKind kind = ProcedureKind::Procedure;
  std::int32_t start = 0;  // from 1
  std::int32_t lines = 0;
};

struct EditorProcedures {
  std::int32_t declarationLines = 0;  // all lines, where there is no procedure
  std::vector<EditorProcedure> procedures;
};

// Of a text of so many lines, each closed by CR LF.
EditorProcedures editorProcedures(std::u8string text, std::int32_t lines);

}  // namespace tintline
