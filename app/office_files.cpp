// See office_files.h. Tested by tests/app/office_files_test.cpp.
#include "app/office_files.h"

#include <utility>

#include "base/codepage.h"
#include "convert/exact.h"
#include "convert/office_text.h"
#include "sources/closed_project.h"
#include "vb/fold.h"

namespace tintline {
namespace {

// Titles become names of folders, where case does not count.
std::u8string folded(const std::wstring& title) { return vb::folded(exactText(title)); }

}  // namespace

OfficeError noSuchProject() {
  return {OfficeError::Kind::Failed, 9, L"Index außerhalb des gültigen Bereichs", 0x8002000B};
}

Project& OfficeFiles::project(std::size_t number) {
  const auto found = documents_.find(number);
  if (found == documents_.end()) throw noSuchProject();
  return found->second.project;
}

std::size_t OfficeFiles::add(const std::filesystem::path& file, office_file::Project project,
                             bool several) {
  const std::wstring title = freeTitle(file, fromUtf8(project.name), several);
  titles_.insert(folded(title));
  documents_.emplace(
      ++last_,
      Document{file, title, Project(AutomatedObject(closedProject(std::move(project), title)))});
  return last_;
}

std::vector<std::size_t> OfficeFiles::documentsOf(const std::filesystem::path& file) const {
  std::vector<std::size_t> numbers;
  for (const auto& [number, document] : documents_)
    if (document.file == file) numbers.push_back(number);
  return numbers;
}

std::vector<std::size_t> OfficeFiles::documentsBeside(std::size_t number) const {
  const auto found = documents_.find(number);
  return found == documents_.end() ? std::vector<std::size_t>() : documentsOf(found->second.file);
}

void OfficeFiles::remove(std::size_t number) {
  const auto found = documents_.find(number);
  if (found == documents_.end()) return;
  titles_.erase(folded(found->second.title));
  documents_.erase(found);
}

// The name of the file without its ending, as applications call a document; with what tells it
// from the others where that is taken: two documents exported on one day share no folder then.
std::wstring OfficeFiles::freeTitle(const std::filesystem::path& file, const std::wstring& project,
                                    bool several) {
  const std::wstring rest = several && !project.empty() ? L" - " + project : std::wstring();
  std::wstring title = pathText(file.stem()) + rest;
  if (isTaken(title) || title == L"Project")  // which means that there is no name
    title = pathText(file.filename()) + rest;
  std::wstring free = title;
  while (isTaken(free)) free = title + L"-" + std::to_wstring(++numbers_[title] + 1);
  return free;
}

bool OfficeFiles::isTaken(const std::wstring& title) const {
  return titles_.contains(folded(title));
}

}  // namespace tintline
