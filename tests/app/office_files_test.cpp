// Office files in the main window without Office. What the user sees is in tests/app/expected.
#include "tests/app/program_fixture.h"
#include "tests/support/office_fixture.h"

namespace tintline::test {
namespace {

class office_files : public ProgramTest {
 protected:
  void SetUp() override { begin(); }

  static std::string workbook(bool locked = false) {
    FixtureProject project = sampleProject();
    project.locked = locked;
    return macroPackage(projectFile(project));
  }
  void drop(const std::filesystem::path& name, std::string_view bytes) {
    const auto path = moduleFile(name, bytes);
    step("drop " + toUtf8(pathText(name)), [&] { form.fileDropped(path); });
  }
  void exportTo(const std::string& what, Command command) {
    ports.dialogs.answerFolder(ports.files.folder.path());
    ports.dialogs.expectMessage();
    execute(what, command);
  }
};

TEST_F(office_files, are_read_converted_and_exported_as_the_documents_of_an_application) {
  openFile("a.bas", "x\r\n");
  openFile("Mappe.xlsm", workbook());
  click(L"Datei_1_3_Declaration");
  click(L"Datei_1_3_1");
  convert();
  execute("convert the module", Command::mnuModul);
  step("select a line", [&] { form.List1.userSelected({false, false, true}, 2); });
  execute("convert the selection", Command::mnuAuswahl);
  rightClick(L"Datei_1_3");
  exportTo("export the module", Command::mnuexport);
  rightClick(L"Datei_1");
  execute("convert all modules", Command::mnuconvertall);
  exportTo("export all modules", Command::mnuexportall);
  execute("close the file", Command::mnuSchliessen);
  convert();
}

TEST_F(office_files, are_told_apart_and_stand_beside_running_applications) {
  ports.office.excel.running = ports.office.excel.visible = true;
  ports.office.excel.projects = {{.file = L"C:\\Mappe.xls", .components = {{.name = L"Modul1"}}}};
  const auto file = [](bool locked) {
    return projectFile({.modules = {{.name = u"Modul1", .code = "x\r\n"}}, .locked = locked});
  };
  drop("Mappe.xlsm", macroPackage(file(false)));
  execute("analyse Excel", Command::mnuexcel);
  drop("Mappe.docm",
       package({{"word/embeddings/a.bin", file(false)}, {"word/embeddings/b.bin", file(true)}}));
  drop("Project.xlsm", macroPackage(file(true)));
  drop("Mappe.xlsm", macroPackage(file(false)));
  execute("part from Excel", Command::mnutrennen2);
}

TEST_F(office_files, tell_what_cannot_be_read_and_Esc_ends_the_reading) {
  const std::string project = projectFile(sampleProject());
  const std::pair<const char*, std::string> files[] = {
      {"leer.xlsx", macroPackage("").substr(0, 40)},
      {"teils.xlsm", package({{"xl/embeddings/a.bin", project},
                              {"xl/embeddings/b.bin", project.substr(0, 3000)}})},
  };
  for (const auto& [name, bytes] : files) {
    ports.dialogs.expectMessage();
    drop(name, bytes);
  }
  drop("Mappe.bas", "PK\3\4");  // called like a module, it is one
  FixtureProject large = sampleProject();
  large.modules[2].code.append(1 << 20, 'x');
  const std::string two =
      package({{"xl/embeddings/a.bin", project}, {"xl/embeddings/b.bin", projectFile(large)}});
  for (const int yields : {1, 14}) {  // in reading, in analysing the second project
    ports.messageLoop.at(ports.messageLoop.yields + yields,
                         [&] { form.execute(Command::mnuAbbrechen); });
    drop("zwei.xlsm", two);
  }
}

}  // namespace
}  // namespace tintline::test
