// The Office files that the user opened, read without Office, until they are closed.
//
// Tested by tests/app/office_files_test.cpp.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "app/project_source.h"
#include "sources/office_file/vba_project.h"

namespace tintline {

class OfficeFiles final : public ProjectSource {
 public:
  std::wstring_view name() const override { return L"Datei"; }
  Project& project(std::size_t number) override;
  std::size_t projectCount() const override { return documents_.size(); }
  void giveUp(const OfficeError&) override {}  // what was read stays

  // Adds a project of that file; `several`: the file has others. Returns its number.
  std::size_t add(const std::filesystem::path& file, office_file::Project project, bool several);

  // The numbers of the documents of a file; of the file of a document.
  std::vector<std::size_t> documentsOf(const std::filesystem::path& file) const;
  std::vector<std::size_t> documentsBeside(std::size_t number) const;

  void remove(std::size_t number);

 private:
  struct Document {
    std::filesystem::path file;
    std::wstring title;
    Project project;
  };

  std::wstring freeTitle(const std::filesystem::path& file, const std::wstring& project,
                         bool several);
  bool isTaken(const std::wstring& title) const;

  std::map<std::size_t, Document> documents_;
  std::set<std::u8string> titles_;               // theirs, folded
  std::map<std::wstring, std::size_t> numbers_;  // the last behind a title that was taken
  std::size_t last_ = 0;                         // number
};

}  // namespace tintline
