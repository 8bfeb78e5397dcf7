// See project.h. Tested by the cases in tests/golden/language/links.
#include "vb/project.h"

#include "vb/project_tables.h"
#include "vb/resolver.h"

namespace tintline::vb {

Project::Project(std::u8string name) : tables_(std::make_unique<ProjectTables>(name)) {}
Project::~Project() = default;
Project::Project(Project&&) noexcept = default;
Project& Project::operator=(Project&&) noexcept = default;

std::uint32_t Project::add(const Module& module) { return tables_->add(module); }

void Project::close() { tables_->close(); }

std::vector<Reference> Project::resolve(const Module& module, std::uint32_t index) const {
  return resolveNames(module, index, *tables_);
}

}  // namespace tintline::vb
