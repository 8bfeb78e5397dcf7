// Where the documents in the tree have their projects from: a running application, or files.
//
// Tested by tests/app/office_test.cpp and tests/app/office_files_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "sources/office_project.h"

namespace tintline {

class ProjectSource {
 public:
  virtual ~ProjectSource() = default;

  virtual std::wstring_view name() const = 0;

  // What the keys of its documents in the tree begin with; the key of that document.
  std::wstring keyPrefix() const { return std::wstring(name()) + L"_"; }
  std::wstring keyOf(std::size_t number) const { return keyPrefix() + std::to_wstring(number); }

  // By the number that the document's node has; throws OfficeError when there is none.
  virtual Project& project(std::size_t number) = 0;
  virtual std::size_t projectCount() const = 0;

  // Lets go what cannot be used any more behind that failure.
  virtual void giveUp(const OfficeError& error) = 0;
};

// The failure of a number that no project has.
OfficeError noSuchProject();

}  // namespace tintline
