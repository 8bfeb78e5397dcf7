// What goes wrong between the running program and Word or Excel: each time the user is told,
// and the program works on.
#include <functional>

#include "base/file.h"
#include "tests/win32/program_office/office_program.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

class office_failures : public OfficeProgramTest {
 protected:
  // Nothing of Word is left, and all can be done again.
  void expectUsable() {
    EXPECT_FALSE(main().offers(Command::mnutrennen));
    EXPECT_TRUE(tree().empty() || tree().front() == L"gel. Datei") << "no document's node";
    main().open(folder().write(L"danach.bas", "Sub Danach()\r\nEnd Sub\r\n"));
    main().convert();
    EXPECT_EQ(main().lineCount(id::kList2), 2U);
    main().run(Command::mnuword);
    EXPECT_EQ(tree().size(), kWordTree.size() + 2);
  }
};

TEST_F(office_failures, refused_access) {
  word().start();
  word().command("refuse");
  const std::wstring refused =
      L"Bitte die Sicherheitseinstellungen für Makros ändern oder Word manuell starten.";
  runIntoMessage(Command::mnuword, refused, L"TINTLINE");
  EXPECT_EQ(word().count("references"), 0);
  EXPECT_TRUE(word().running());
  word().command("");
  expectUsable();

  excel().command("refuse");
  runIntoMessage(Command::mnuexcel, refused, L"TINTLINE");
  EXPECT_TRUE(excel().waitForEnd()) << "what was started for nothing is quit";
  EXPECT_EQ(excel().count("references"), 0);
}

TEST_F(office_failures, busy_for_a_while_is_waited_for) {
  word().start();
  word().command("busy 8 80010001");
  main().run(Command::mnuword);
  EXPECT_EQ(tree().front(), L"Brief (3)");
  EXPECT_EQ(word().count("rejected"), 8);
  word().command("busy 4 8001010A");
  click(L"    Fremd (2 Z.)");
  untilCode({"Sub Fremd() ", "End Sub "});
  EXPECT_EQ(word().count("rejected"), 12);
}

TEST_F(office_failures, busy_for_too_long) {
  word().start();
  main().run(Command::mnuword);
  word().command("busy 100000 80010001");
  click(L"    Fremd (2 Z.)");
  expectMessage(kLost, kLostTitle);
  main().untilIdle();
  EXPECT_EQ(word().count("references"), 0);
  word().command("");
  expectUsable();
}

TEST_F(office_failures, too_busy_to_be_told_to_quit) {
  main().run(Command::mnuword);  // starts it
  word().command("busy 100000 80010001");
  runIntoMessage(Command::mnutrennen, kLost, kLostTitle);
  EXPECT_TRUE(main().offers(Command::mnutrennen));
  EXPECT_TRUE(tree().empty() || tree().front() == L"gel. Datei");
  word().command("");
  main().run(Command::mnutrennen);
  EXPECT_TRUE(word().waitForEnd());
  EXPECT_EQ(word().count("references"), 0);
}

TEST_F(office_failures, a_closed_window_takes_no_command_while_it_waits_for_a_busy_word) {
  main().run(Command::mnuword);  // starts it
  word().command("busy 100000 80010001");
  main().window().post(WM_CLOSE);
  main().window().post(WM_COMMAND, commandId(Command::mnuexcel));
  EXPECT_EQ(app().exitCode(), 0U);
  EXPECT_EQ(excel().status("state"), "") << "nobody started it";
  EXPECT_TRUE(word().running());
  EXPECT_EQ(word().count("references"), 0);
}

TEST_F(office_failures, an_export_that_fails) {
  word().start();
  main().run(Command::mnuword);
  word().command("fail Export Kunde 75 Fehler beim Zugriff");
  chooseFromMenu(L"  Kunde (9 Z.)", 0);
  FolderDialogOf(app()).accept();
  const std::wstring told =
      L"Das Modul \"Kunde\" konnte nicht exportiert werden: \r\nFehler beim Zugriff";
  expectMessage(told);
  main().untilIdle();
  chooseFromMenu(L"Brief (3)", 0);
  FolderDialogOf(app()).accept();
  expectMessage(told);
  expectMessage(L"Alle Module wurden in folgendes Verzeichnis exportiert: \r\n" +
                exportFolder().wstring());
  main().untilIdle();
  EXPECT_FALSE(exists(exportFolder() / L"Brief" / L"Kunde.cls"));
  EXPECT_EQ(readFile(exportFolder() / L"Brief" / L"Grüße.bas"), kGreeting);
  EXPECT_EQ(tree().front(), L"Brief (3)") << "the connection stands";
  remove_all(exportFolder());
}

TEST_F(office_failures, death_in_the_middle_of_a_walk) {
  word().start();
  excel().start();
  main().open(folder().write(L"davor.bas", "Sub Davor()\r\n"));
  main().run(Command::mnuexcel);
  word().command("die ProcCountLines 3");
  runIntoMessage(Command::mnuword, kLost, kLostTitle);
  EXPECT_EQ(word().status("state"), "died");
  std::vector<std::wstring> expected = kExcelTree;
  expected.insert(expected.end(), {L"gel. Datei", L"  davor.bas"});
  EXPECT_EQ(tree(), expected) << "nothing half-built";
  EXPECT_EQ(main().lines(id::kList1), std::vector<std::string>{"Sub Davor() "});
  click(L"    Fremd (2 Z.)");
  untilCode({"Sub Fremd() ", "End Sub "});
  main().run(Command::mnutrennen2);
  word().command("");
  word().start();
  expectUsable();
}

TEST_F(office_failures, a_closed_document_is_told_as_lost_and_the_others_stay) {
  main().run(Command::mnuword);  // starts it
  const std::vector<std::wstring> before = tree();
  word().command("busy 1 80010108");  // a disconnected object answers so, too
  click(L"    Fremd (2 Z.)");
  expectMessage(kLost, kLostTitle);
  main().untilIdle();
  EXPECT_EQ(tree(), before);
  click(L"    Get Wert (3 Z.)");
  untilCode({"Property Get Wert() As Long ", "    Wert = mWert ", "End Property "});
  main().run(Command::mnutrennen);
  EXPECT_TRUE(word().waitForEnd()) << "it is known as started";
}

TEST_F(office_failures, an_end_behind_our_back_is_told_by_the_next_command) {
  const auto byCommand = [this](Command command) {
    return [this, command] { runIntoMessage(command, kLost, kLostTitle); };
  };
  const auto byTree = [this](const std::function<void()>& action) {
    return [this, action] {
      action();
      expectMessage(kLost, kLostTitle);
      main().untilIdle();
    };
  };
  const std::function<void()> steps[] = {
      byCommand(Command::mnuMakro),
      byCommand(Command::mnuModul),
      byCommand(Command::mnuAlleModule),
      byCommand(Command::mnu2word),
      byTree([this] { click(L"    Fremd (2 Z.)"); }),
      byTree([this] { chooseFromMenu(L"  Kunde (9 Z.)", 0); }),
      byTree([this] { chooseFromMenu(L"Brief (3)", 0); }),
  };
  word().start();
  for (const auto& step : steps) {
    SCOPED_TRACE(&step - steps);
    analyseAndClick(L"    Zählen (5 Z.)");
    word().command("quit");
    EXPECT_TRUE(word().waitForEnd());
    step();
    EXPECT_FALSE(main().offers(Command::mnutrennen));
    EXPECT_TRUE(tree().empty() || tree().front() == L"gel. Datei");
    word().command("");
    word().start();
  }
  EXPECT_FALSE(fs::exists(exportFolder()));
  expectUsable();
}

TEST_F(office_failures, an_application_that_is_not_installed) {
  ControlledServer::unregister();
  const Started analysing = main().start(Command::mnuword);
  const MessageBoxOf box(app());
  const std::wstring told = box.text();
  box.answer(IDOK);
  analysing.finish();
  EXPECT_TRUE(told.starts_with(L"Error 429 (")) << fs::path(told).string();
  EXPECT_TRUE(told.ends_with(L") in procedure Wordanalyse of Modul modWord"));
  ControlledServer::registerAt(word().folder().parent_path());
  expectUsable();
}

TEST_F(office_failures, a_page_that_word_does_not_take) {
  main().open(folder().write(L"senden.bas", kGreeting));
  main().convert();
  word().start();
  word().command("fail InsertFile * 5174 Datei nicht gefunden");
  runIntoMessage(Command::mnu2word,
                 L"Error 5174 (Datei nicht gefunden) in procedure cmdWord_Click of Formular "
                 L"frmVBACode",
                 L"TINTLINE");
  EXPECT_NE(word().read(L"log.txt").find("Document1.Close(0)"), std::string::npos);
  EXPECT_FALSE(fs::exists(temporaryFolder() / L"TINTLINE-Word.htm"));
  EXPECT_EQ(word().count("references"), 0);
  word().command("");
  main().pressAndWait(id::kCmdWord);
  EXPECT_FALSE(MessageBoxOf::find(app()));
}

TEST_F(office_failures, a_slow_host_is_waited_for_while_the_window_gets_messages) {
  main().open(folder().write(L"davor.bas", "Sub Davor()\r\n"));
  word().start();
  word().command("slow 40");
  const Started analysing = main().start(Command::mnuword);
  app().until([this] { return word().count("calls") > 0; }, "the walk");
  EXPECT_NE(GetWindowLongPtrW(main().window().handle(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
  const auto isDone = [&] {
    main().window().post(WM_NULL);
    return analysing.done();
  };
  app().until(isDone, "the end of a slow walk", MainWindow::kRunTime);
  std::vector<std::wstring> expected = kWordTree;
  expected.insert(expected.end(), {L"gel. Datei", L"  davor.bas"});
  EXPECT_EQ(tree(), expected);
  click(L"    Set Quelle (2 Z.)");
  untilCode({"Property Set Quelle(o As Object) ", "End Property "});
  EXPECT_FALSE(MessageBoxOf::find(app()));
}

TEST_F(office_failures, escape_ends_a_slow_walk_between_documents) {
  word().start();
  word().command("slow 60");
  const Started analysing = main().start(Command::mnuword);
  app().until([this] { return word().count("calls.ProcOfLine") > 0; }, "the walk");
  main().window().pressKey(VK_ESCAPE);
  analysing.finish();
  EXPECT_TRUE(tree().empty() || tree().front() == L"gel. Datei") << "nothing half-built";
  EXPECT_FALSE(MessageBoxOf::find(app()));
  word().command("");
  main().run(Command::mnuword);
  EXPECT_EQ(tree().front(), L"Brief (3)");
}

}  // namespace
}  // namespace tintline::test
