// A journey through the running program with an Office file, without Office.
#include "base/file.h"
#include "tests/support/office_fixture.h"
#include "tests/win32/program/program_test.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;
using program = ProgramTest;

// What the command line makes of the same file is the measure.
TEST_F(program, opens_an_office_file_converts_and_exports_its_modules) {
  FixtureProject project = sampleProject();
  project.locked = true;
  const fs::path file = folder.write(L"Größe.xlsm", macroPackage(projectFile(project)));
  start(L"\"" + file.wstring() + L"\"");
  app().until([&] { return !tree().empty(); }, "the document");
  const std::vector<std::wstring> shown = tree();
  ASSERT_GT(shown.size(), 5U);
  EXPECT_EQ(shown[0], L"Größe (5, geschützt)");
  EXPECT_EQ(shown[2], L"  Tabelle1 (3 Z.)");
  chooseFromNodeMenu(0, 1);
  app().until([&] { return main().lineCount(id::kList2) > 20; }, "the result of all modules");
  main().clickNode(2);
  main().run(Command::mnuModul);
  exportTo(folder / L"Tabelle1.htm");
  untilOpened(L"Tabelle1.htm");
  EXPECT_EQ(folder.read(L"Tabelle1.htm"), page(file, L"--module Tabelle1"));
  EXPECT_EQ(main().close(), 0U);
}

}  // namespace
}  // namespace tintline::test
