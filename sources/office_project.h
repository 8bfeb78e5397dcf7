// The VBA projects of an Office application, by the members that the program asks for.
// Indexes count from 1. Every call is one across processes. All members throw
// OfficeError.
//
// Tested by tests/unit/sources/sources_test.cpp.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sources/automated_object.h"

namespace tintline {

// The hosts' numbers. Others exist.
enum ComponentType : std::int32_t {
  kStandardModule = 1,
  kClassModule = 2,
  kFormModule = 3,
  kDocumentModule = 100
};

// What a procedure is: Sub and Function are one kind.
enum class ProcedureKind : std::int32_t { Procedure = 0, Let = 1, Set = 2, Get = 3 };

class CodeModule {
 public:
  explicit CodeModule(AutomatedObject object) : object_(std::move(object)) {}

  std::int32_t CountOfLines() const { return object_.number(L"CountOfLines"); }
  std::int32_t CountOfDeclarationLines() const {
    return object_.number(L"CountOfDeclarationLines");
  }

  // `count` lines from line `start` on, with CR LF between them.
  std::wstring Lines(std::int32_t start, std::int32_t count) const {
    return object_.get<std::wstring>(L"Lines", start, count);
  }

  // The name of the procedure that the line belongs to, and its kind; "" for none.
  std::wstring ProcOfLine(std::int32_t line, ProcedureKind& kind) const;

  // The first line of a procedure, comments in front of it included, and the number of
  // its lines.
  std::int32_t ProcStartLine(const std::wstring& name, ProcedureKind kind) const {
    return object_.get<std::int32_t>(L"ProcStartLine", name, static_cast<std::int32_t>(kind));
  }
  std::int32_t ProcCountLines(const std::wstring& name, ProcedureKind kind) const {
    return object_.get<std::int32_t>(L"ProcCountLines", name, static_cast<std::int32_t>(kind));
  }

 private:
  AutomatedObject object_;
};

class Component {
 public:
  explicit Component(AutomatedObject object) : object_(std::move(object)) {}

  std::wstring Name() const { return object_.text(L"Name"); }
  std::int32_t Type() const { return object_.number(L"Type"); }
  tintline::CodeModule CodeModule() const {
    return tintline::CodeModule(object_.object(L"CodeModule"));
  }

  // The host writes the component as a module file of that path.
  void Export(const std::filesystem::path& file) const;

 private:
  AutomatedObject object_;
};

class Components {
 public:
  explicit Components(AutomatedObject object) : object_(std::move(object)) {}

  std::int32_t Count() const { return object_.number(L"Count"); }
  Component Item(std::int32_t index) const { return item(index); }
  Component Item(const std::wstring& name) const { return item(name); }

 private:
  template <class Index>
  Component item(Index index) const {
    return Component(AutomatedObject(object_.get<OfficeObjectPtr>(L"Item", std::move(index))));
  }

  AutomatedObject object_;
};

// Asks for its components once and keeps them.
class Project {
 public:
  explicit Project(AutomatedObject object) : object_(std::move(object)) {}

  // Locked with a password: its components cannot be asked for.
  bool isProtected() const { return object_.number(L"Protection") != 0; }

  // The path of the project's document; its name where the host knows no path.
  std::wstring BuildFileName() const;

  const Components& VBComponents();

 private:
  AutomatedObject object_;
  std::optional<Components> components_;
};

// The projects of the documents and templates that the application holds open.
std::vector<Project> projectsOf(const OfficeObjectPtr& application);

// What a document is called in the tree: the file name in the path, cut at its last ".";
// "Dokument" for the name "Project", which a document has that was never saved.
std::wstring documentTitle(std::wstring_view buildFileName);

// What its folder is called in an export: the file name less its last 4 characters,
// with the same exception.
std::wstring documentFolder(std::wstring_view buildFileName);

}  // namespace tintline
