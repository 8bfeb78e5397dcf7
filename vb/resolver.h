// Binds the names of one module to what declares them, in one pass over its tokens.
//
// Tested by the cases in tests/golden/language/links.
#pragma once

#include <cstdint>
#include <vector>

#include "vb/project.h"
#include "vb/project_tables.h"

namespace tintline::vb {

std::vector<Reference> resolveNames(const Module& module, std::uint32_t index,
                                    const ProjectTables& tables);

}  // namespace tintline::vb
