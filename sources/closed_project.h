// The project of a closed Office file as the objects that a running application gives of an open
// one: what works on these works without Office, too.
//
// Tested by tests/unit/sources/closed_project_test.cpp and tests/app/office_files_test.cpp.
#pragma once

#include <string>

#include "ports/office.h"
#include "sources/office_file/vba_project.h"

namespace tintline {

// Its document is called `title`. A lock does not count: it keeps the editor from showing what the
// file holds for all to read.
OfficeObjectPtr closedProject(office_file::Project project, const std::wstring& title);

}  // namespace tintline
