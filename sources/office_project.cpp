// See office_project.h. Tested by tests/unit/sources/sources_test.cpp.
#include "sources/office_project.h"

#include <algorithm>

#include "base/codepage.h"

namespace tintline {
namespace {

std::wstring_view lastPart(std::wstring_view path) {
  return path.substr(path.find_last_of(L'\\') + 1);  // npos + 1 is 0
}

std::wstring documentName(std::wstring_view name) {
  return name.empty() || name == L"Project" ? L"Dokument" : std::wstring(name);
}

}  // namespace

OfficeError wrongType() {
  return {OfficeError::Kind::Failed, 13, L"Typen unverträglich", 0x80020005};
}

std::wstring CodeModule::ProcOfLine(std::int32_t line, ProcedureKind& kind) const {
  std::int32_t number = 0;
  auto name = object_.getWithOut<std::wstring>(L"ProcOfLine", line, number);
  kind = static_cast<ProcedureKind>(number);
  return name;
}

void Component::Export(const std::filesystem::path& file) const {
  object_.call(L"Export", pathText(file));
}

std::wstring Project::BuildFileName() const {
  try {
    if (std::wstring path = object_.text(L"BuildFileName"); !path.empty()) return path;
  } catch (const OfficeError& error) {
    if (error.kind() != OfficeError::Kind::Failed) throw;
  }
  return object_.text(L"Name") + L".DLL";  // as a path ends
}

const Components& Project::VBComponents() {
  if (!components_) components_.emplace(object_.object(L"VBComponents"));
  return *components_;
}

std::vector<Project> projectsOf(const OfficeObjectPtr& application) {
  const AutomatedObject all = AutomatedObject(application).object(L"VBE").object(L"VBProjects");
  std::vector<Project> projects;
  const std::int32_t count = all.number(L"Count");
  for (std::int32_t index = 1; index <= count; ++index)
    projects.emplace_back(AutomatedObject(all.get<OfficeObjectPtr>(L"Item", index)));
  return projects;
}

std::wstring documentTitle(std::wstring_view buildFileName) {
  const std::wstring_view name = lastPart(buildFileName);
  return documentName(name.substr(0, name.find_last_of(L'.')));
}

std::wstring documentFolder(std::wstring_view buildFileName) {
  const std::wstring_view name = lastPart(buildFileName);
  constexpr std::size_t kExtension = 4;
  return documentName(name.substr(0, name.size() - std::min(name.size(), kExtension)));
}

}  // namespace tintline
