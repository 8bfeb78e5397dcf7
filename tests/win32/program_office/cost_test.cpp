// What the running program asks of Word, counted by the server: calls across processes take the
// time that reading large projects takes. docs/office.md promises these numbers.
#include <windows.h>
#include <commctrl.h>

#include <string>

#include "tests/win32/program_office/office_program.h"

namespace tintline::test {
namespace {

// A project of 50,000 lines.
constexpr int kModules = 200, kProcedures = 4;  // in each module
constexpr int kDeclarationLines = 10, kProcedureLines = 60;

std::string repeated(std::string_view line, int count) {
  std::string lines;
  for (int i = 0; i < count; ++i) lines += line;
  return lines;
}

std::string moduleCode() {
  std::string code = repeated("Dim a As Long\r\n", kDeclarationLines);
  for (int i = 0; i < kProcedures; ++i)
    code += "Sub Nummer" + std::to_string(i) + "()\r\n" +
            repeated("    a = a + 1\r\n", kProcedureLines - 2) + "End Sub\r\n";
  return code;
}

class office_costs : public OfficeProgramTest {
 protected:
  // Calls of members and questions for the numbers of their names so far.
  long asked() { return word().count("calls") + word().count("names"); }

  // A tree of this size is not read text by text.
  LRESULT nodes() const { return main().control(id::kTreeView1).send(TVM_GETCOUNT); }
};

TEST_F(office_costs, an_analysis_asks_three_times_a_procedure_and_six_times_a_component) {
  word().write(L"modul.bas", moduleCode());
  std::string projects = "project Projekt\nfile C:\\Gross.dot\n";
  for (int i = 1; i <= kModules; ++i)
    projects += "component 1 modul.bas Modul" + std::to_string(i) + "\n";
  word().write(L"projects.txt", projects);
  word().start();
  const long askedBefore = asked();
  const LRESULT nodesBefore = nodes();
  main().run(Command::mnuword);
  constexpr long kEach = kModules * (6 + 3 * kProcedures);
  constexpr long kOnce = 8 + 17;  // what the project is, and the numbers of all names
  EXPECT_LE(asked() - askedBefore, kEach + kOnce);
  constexpr LRESULT kNodes = 1 + kModules * (2 + kProcedures);
  EXPECT_EQ(nodes() - nodesBefore, kNodes) << "all of it was asked";
}

TEST_F(office_costs, code_is_read_with_few_questions_however_long_it_is) {
  word().write(L"lang.bas", "Dim a As Long\r\nSub Lang()\r\n" +
                                repeated("    a = a + 1\r\n", 9'997) + "End Sub\r\n");
  word().write(L"projects.txt", "project Projekt\ncomponent 1 lang.bas Modul\n");
  word().start();
  const auto readModule = [this] {
    const long before = asked();
    main().pressAndWait(id::kCmdModul);
    EXPECT_EQ(main().lineCount(id::kList1), 10'000U);
    return asked() - before;
  };
  const auto readProcedure = [this] {
    const long before = asked();
    click(L"    Lang (9999 Z.)");
    main().untilShown(id::kLabel9, L"9999 Zeilen eingelesen");
    main().untilIdle();
    return asked() - before;
  };
  main().run(Command::mnuword);
  click(L"  Modul (10000 Z.)");
  app().until([this] { return main().control(id::kCmdModul).enabled(); }, "the module's button");
  EXPECT_LE(readModule(), 4 + 1) << "asks for the number of Lines, too";
  EXPECT_LE(readProcedure(), 5);
  EXPECT_LE(readModule(), 4);
  main().run(Command::mnutrennen);
  main().run(Command::mnuword);
  EXPECT_LE(readProcedure(), 5 + 1) << "the first of a connection";
}

}  // namespace
}  // namespace tintline::test
