// A module of a project as the file that the editor exports: .bas, .cls, .frm with its .frx.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sources/office_file/vba_project.h"

namespace tintline::office_file {

// ".bas", ".cls" (also of a document) or ".frm".
std::string_view extensionOf(vb::ModuleKind kind);

// The text of the file in the project's code page, lines closed by CR LF: a class with other line
// ends is imported as a standard module.
std::string moduleFile(const Module& module);

// The .frx that a form's file names: 24 bytes and a compound file. Nothing for other modules.
std::optional<std::string> formResource(const Module& module);

// Whether two .frx hold the same: they may be written in different ways.
bool holdSame(std::string_view resource, std::string_view other);

}  // namespace tintline::office_file
