// Tests of sources/office_project.h and sources/automated_object.h.
#include "sources/office_project.h"

#include <gtest/gtest.h>

#include "base/codepage.h"
#include "tests/support/fake_office.h"

namespace tintline::test {
namespace {

TEST(OfficeProject, DocumentsAreNamedAfterTheirFiles) {
  const struct {
    const wchar_t* file;
    const wchar_t* title;   // in the tree
    const wchar_t* folder;  // in an export
  } rows[] = {
      {L"C:\\Vorlagen\\Normal.DLL", L"Normal", L"Normal"},
      {L"Brief.dot", L"Brief", L"Brief"},
      {L"C:\\a\\Rechnung 1.2.DLL", L"Rechnung 1.2", L"Rechnung 1.2"},
      {L"C:\\a\\Mappe.xlsm", L"Mappe", L"Mappe."},  // four characters, whatever they are
      {L"C:\\a\\Project.DLL", L"Dokument", L"Dokument"},
      {L"C:\\a\\project.DLL", L"project", L"project"},
      {L"Project", L"Dokument", L"Pro"},
      {L"abc", L"abc", L"Dokument"},
      {L"C:\\a\\.dot", L"Dokument", L"Dokument"},
      {L"", L"Dokument", L"Dokument"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(documentTitle(row.file), row.title) << toUtf8(row.file);
    EXPECT_EQ(documentFolder(row.file), row.folder) << toUtf8(row.file);
  }
}

TEST(OfficeProject, AProjectWithoutAPathIsKnownByItsName) {
  FakeOffice office;
  office.word.projects = {{.file = L"", .name = L"Neues"}, {.file = L"C:\\a.dot", .name = L"X"}};
  std::vector<Project> projects = projectsOf(office.connect(L"Word.Application").object);
  ASSERT_EQ(projects.size(), 2U);
  EXPECT_EQ(documentTitle(projects[0].BuildFileName()), L"Neues");
  EXPECT_EQ(documentFolder(projects[0].BuildFileName()), L"Neues");
  EXPECT_EQ(projects[1].BuildFileName(), L"C:\\a.dot");
  office.word.end();
  EXPECT_THROW(projects[1].BuildFileName(), OfficeError) << "a lost host has no names at all";
}

TEST(OfficeProject, ComponentsAreFoundByIndexAndName) {
  FakeOffice office;
  office.word.projects = {
      {.file = L"a", .components = {{.name = L"A"}, {.name = L"B", .type = 3}}}};
  std::vector<Project> projects = projectsOf(office.connect(L"Word.Application").object);
  const Components& components = projects[0].VBComponents();
  EXPECT_EQ(components.Count(), 2);
  EXPECT_EQ(components.Item(1).Name(), L"A");
  EXPECT_EQ(components.Item(L"B").Type(), kFormModule);
  EXPECT_THROW(components.Item(3), OfficeError);
  EXPECT_EQ(office.word.callsOf[L"VBComponents"], 1);
}

TEST(OfficeProject, AValueOfAnotherTypeIsAFailure) {
  FakeOffice office;
  const AutomatedObject application(office.connect(L"Word.Application").object);
  try {
    application.text(L"Visible");
    FAIL();
  } catch (const OfficeError& error) {
    EXPECT_EQ(error.kind(), OfficeError::Kind::Failed);
    EXPECT_EQ(error.number(), 13);
  }
}

}  // namespace
}  // namespace tintline::test
