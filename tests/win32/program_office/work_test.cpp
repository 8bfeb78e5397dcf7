// Word and Excel in the running program, when all goes well.
#include <algorithm>

#include "base/file.h"
#include "tests/win32/program_office/office_program.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

using word_and_excel = OfficeProgramTest;

std::size_t countOf(std::string_view part, std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string_view::npos; ++at) ++count;
  return count;
}

TEST_F(word_and_excel, documents_of_both_stand_side_by_side_above_the_file) {
  word().start();
  excel().start();
  main().open(folder().write(L"datei.bas", "Sub Datei()\r\n"));
  main().run(Command::mnuword);
  main().run(Command::mnuexcel);
  std::vector<std::wstring> expected = kWordTree;
  expected.insert(expected.end(), kExcelTree.begin(), kExcelTree.end());
  expected.insert(expected.end(), {L"gel. Datei", L"  datei.bas"});
  EXPECT_EQ(tree(), expected);
  EXPECT_EQ(main().lines(id::kList1), std::vector<std::string>{"Sub Datei() "}) << "stays loaded";
  EXPECT_TRUE(main().offers(Command::mnutrennen));
  EXPECT_EQ(GetWindowLongPtrW(main().window().handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);

  main().run(Command::mnutrennen);
  EXPECT_EQ(tree().front(), L"Mappe (2)");
  EXPECT_FALSE(main().offers(Command::mnutrennen));
  EXPECT_EQ(word().count("references"), 0);
  EXPECT_GT(excel().count("references"), 0) << "the other connection stands";
  main().run(Command::mnutrennen2);
  EXPECT_EQ(tree(), (std::vector<std::wstring>{L"gel. Datei", L"  datei.bas"}));
  EXPECT_TRUE(word().running() && excel().running()) << "found, not started: left alone";
}

TEST_F(word_and_excel, one_that_does_not_run_is_started_shown_and_quit) {
  main().run(Command::mnuword);
  EXPECT_EQ(tree().front(), L"Brief (3)");
  EXPECT_EQ(word().status("visible"), "1");
  main().run(Command::mnutrennen);
  EXPECT_TRUE(word().waitForEnd());
  EXPECT_EQ(word().status("state"), "ended");
}

TEST_F(word_and_excel, every_kind_of_node_gives_its_code) {
  word().start();
  excel().start();
  main().run(Command::mnuword);
  main().run(Command::mnuexcel);
  const struct {
    const wchar_t* node;
    std::size_t skip;
    std::vector<std::string> code;
    bool module, procedure;  // may be converted
  } rows[] = {
      {L"    Declaration (1 Z.)", 0, {"Option Explicit "}, true, true},
      {L"    Grüßen (5 Z.)",
       0,
       {" ", "' Gr\xFC\xDFt. ", "Public Sub Gr\xFC\xDF\x65n() ",
        "    Call Z\xE4hlen(3)   ' weiter unten ", "End Sub "},
       true,
       true},
      {L"    Get Wert (3 Z.)",
       0,
       {"Property Get Wert() As Long ", "    Wert = mWert ", "End Property "},
       true,
       true},
      {L"    Let Wert (3 Z.)",
       0,
       {"Property Let Wert(ByVal x As Long) ", "    mWert = x ", "End Property "},
       true,
       true},
      {L"    Set Quelle (2 Z.)",
       0,
       {"Property Set Quelle(o As Object) ", "End Property "},
       true,
       true},
      {L"Brief (3)", 0, {}, false, true},
      {L"  ThisDocument (0 Z.)", 0, {}, true, true},
      {L"    Fremd (2 Z.)", 0, {"Sub Fremd() ", "End Sub "}, true, true},
      {L"    Declaration (1 Z.)", 1, {"Private mWert As Long "}, true, true},
      {L"Geheim (geschützt)", 0, {}, false, false},
      {L"  Kunde (9 Z.)", 0, {}, true, true},
      {L"    Declaration (1 Z.)", 2, {"Dim y "}, true, true},
      {L"    Fremd (2 Z.)", 1, {"Sub Fremd() ", "End Sub "}, true, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(fs::path(row.node).string());
    click(row.node, row.skip);
    untilCode(row.code);
    // The program shows its buttons one after the other.
    const auto areAsExpected = [&] {
      return main().control(id::kCmdModul).enabled() == row.module &&
             main().control(id::kCmdMakro).enabled() == row.procedure;
    };
    app().until(areAsExpected, "the buttons of " + fs::path(row.node).string());
    EXPECT_EQ(main().text(id::kCmdMakro), L"Makro");
  }
}

TEST_F(word_and_excel, a_module_is_the_page_of_the_same_code_in_a_file) {
  word().start();
  main().setChecked(id::kOptClass, true);
  for (const auto& [module, node, code] :
       {std::tuple{L"Grüße", L"    Grüßen (5 Z.)", kGreeting},
        std::tuple{L"Kunde", L"    Let Wert (3 Z.)", kCustomer}}) {
    for (const bool numbered : {false, true}) {
      main().setChecked(id::kCheck1, numbered);
      const fs::path file = folder().write(std::wstring(module) + L".bas", code);
      main().open(file);
      main().convert();
      const std::string fromFile = exportedPage();
      EXPECT_TRUE(sameText(fromFile, folder().convert(file, numbered ? L"-n" : L"")));
      analyseAndClick(node);
      main().pressAndWait(id::kCmdModul);
      EXPECT_TRUE(sameText(exportedPage(), fromFile));
    }
  }
  main().setChecked(id::kCheck1, false);
}

TEST_F(word_and_excel, a_procedure_is_converted_alone) {
  word().start();
  analyseAndClick(L"    Zählen (5 Z.)");
  main().convert();
  EXPECT_EQ(main().lineCount(id::kList2), 5U);
  const std::string page = exportedPage();
  EXPECT_NE(page.find("<a HREF='#Index' name='Z\xE4hlen'"), std::string::npos) << page;
  EXPECT_EQ(page.find("Option"), std::string::npos);
}

TEST_F(word_and_excel, all_modules_become_one_page_with_a_frame_each) {
  word().start();
  main().run(Command::mnuword);
  chooseFromMenu(L"Brief (3)", 1);
  main().untilShown(id::kLabel9, L"s verarbeitet");
  main().untilIdle();
  const std::vector<std::string> code = main().lines(id::kList1);
  EXPECT_EQ(code.size(), 3U * 3 + 11 + 9) << "three lines say which module follows";
  EXPECT_EQ(main().lineCount(id::kList2), code.size());
  EXPECT_EQ(std::ranges::count(code, "' Modul:Kunde"), 1);
  const std::string page = exportedPage();
  EXPECT_EQ(countOf("<div style='border", page), 4U) << "the list of procedures has one, too";
  EXPECT_EQ(countOf("Modul:", page), 3U);
}

TEST_F(word_and_excel, modules_are_exported_below_the_folder_for_temporary_files) {
  word().start();
  main().run(Command::mnuword);
  const auto exported = [this](const wchar_t* node, const std::wstring& what) {
    chooseFromMenu(node, 0);
    const FolderDialogOf dialog(app());
    EXPECT_EQ(dialog.prompt(), L"Export-Ordner auswählen");
    dialog.accept();
    expectMessage(what + L" in folgendes Verzeichnis exportiert: \r\n" + exportFolder().wstring());
    main().untilIdle();
  };
  const fs::path target = exportFolder() / L"Brief";
  exported(L"  Kunde (9 Z.)", L"Das Modul \"Kunde\" wurde");
  EXPECT_EQ(readFile(target / L"Kunde.cls"), kCustomer);
  EXPECT_FALSE(exists(target / L"Grüße.bas"));
  exported(L"Brief (3)", L"Alle Module wurden");
  EXPECT_EQ(readFile(target / L"Grüße.bas"), kGreeting);
  EXPECT_TRUE(exists(target / L"ThisDocument.cls"));
  remove_all(exportFolder());
  chooseFromMenu(L"Brief (3)", 0);
  FolderDialogOf(app()).cancel();
  main().untilIdle();
  EXPECT_FALSE(exists(exportFolder()));
}

TEST_F(word_and_excel, the_result_goes_to_word_as_a_page_with_colors) {
  main().open(folder().write(L"senden.bas", kGreeting));
  main().convert();
  word().start();
  main().pressAndWait(id::kCmdWord);
  const std::string page = word().read(L"inserted.htm");
  EXPECT_NE(page.find("\">Call</span>"), std::string::npos) << page;
  EXPECT_EQ(page.find("class="), std::string::npos) << page;
  const std::string file = (temporaryFolder() / L"TINTLINE-Word.htm").string();
  const std::string log = word().read(L"log.txt");
  for (const std::string& line : {std::string("Application.Visible = True"),
                                  "Document1.Content.InsertFile(" + file + ", , False)",
                                  std::string("Document1.Content.Font.Name = Courier New"),
                                  std::string("Document1.Content.NoProofing = True")})
    EXPECT_NE(log.find(line), std::string::npos) << line << " in\n" << log;
  EXPECT_EQ(log.find("Close"), std::string::npos);
  EXPECT_FALSE(fs::exists(file));
  EXPECT_EQ(word().count("references"), 0);
  EXPECT_FALSE(main().offers(Command::mnutrennen)) << "no connection stays";

  main().clickLine(id::kList2, 3);
  main().run(Command::mnu2word);
  const std::string line = word().read(L"inserted.htm");
  EXPECT_NE(line.find("Public Sub Gr&#252;&#223;en()"), std::string::npos) << line;
  EXPECT_EQ(line.find("Call"), std::string::npos) << "only what is selected";
}

TEST_F(word_and_excel, closing_the_program_lets_go_of_both) {
  word().start();
  main().run(Command::mnuword);
  main().run(Command::mnuexcel);
  EXPECT_EQ(main().close(), 0U);
  EXPECT_EQ(word().count("references"), 0);
  EXPECT_TRUE(word().running());
  EXPECT_TRUE(excel().waitForEnd()) << "it was started for the connection";
  EXPECT_EQ(excel().status("state"), "ended");
  EXPECT_EQ(excel().count("references"), 0);
}

}  // namespace
}  // namespace tintline::test
