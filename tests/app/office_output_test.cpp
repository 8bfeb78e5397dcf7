// What goes out of and into Word and Excel: exported modules, the result in a new document.
#include <string>
#include <vector>

#include "tests/app/office_fixture.h"

namespace tintline::test {
namespace {

using office_output = OfficeTest;

// ------------------------------------------------------------------------------- export
TEST_F(office_output, right_click_offers_what_fits_the_node) {
  openFile(moduleFile("a.bas", "x\r\n"));
  form.execute(Command::mnuword);
  for (const wchar_t* key :
       {L"Dateien", L"a.bas", L"Word_1_1", L"Word_2", L"Word_1_2_1", L"Word_1_2_Declaration"})
    rightClick(key);
  EXPECT_TRUE(popups.empty());
  rightClick(L"Word_1_2");
  rightClick(L"Word_1");
  ASSERT_EQ(popups.size(), 2U);
  ASSERT_EQ(popups[0].size(), 1U);
  EXPECT_EQ(popups[0][0].caption, L"Modul exportieren");
  ASSERT_EQ(popups[1].size(), 2U);
  EXPECT_EQ(popups[1][0].caption, L"Alle Module exportieren");
  EXPECT_EQ(popups[1][1].caption, L"Alle Module konvertieren");
  form.execute(popups[1][1].command);
  EXPECT_EQ(form.List1.ListCount(), 3U * 3 + 8 + 5);
  EXPECT_EQ(form.TreeView1.SelectedItem(), &node(L"Word_1"));
  EXPECT_FALSE(form.cmdModul.Enabled) << "a document is no module";
  form.execute(Command::mnuword);  // the file is selected then
  ports.dialogs.answerSave({.error = FileChoice::kCancelled, .path = {}});
  form.execute(Command::cmdExport);
  EXPECT_EQ(ports.dialogs.asked.back().value, L"a");
}

TEST_F(office_output, a_module_is_exported_into_the_folder_of_day_and_document) {
  form.execute(Command::mnuword);
  rightClick(L"Word_1_2");
  ports.dialogs.answerFolder(ports.files.folder.path());
  ports.dialogs.expectMessage();
  form.execute(Command::mnuexport);
  const auto& question = *(ports.dialogs.asked.end() - 2);
  EXPECT_EQ(question.text, L"Export-Ordner auswählen");
  EXPECT_EQ(question.value, pathText(ports.files.temporary));
  const std::filesystem::path day = ports.files.folder / "VBA-20250131";
  EXPECT_EQ(told(), "Das Modul \"Modul1\" wurde in folgendes Verzeichnis exportiert: \r\n" +
                        toUtf8(pathText(day)));
  EXPECT_EQ(ports.dialogs.asked.back().icon, MessageIcon::Information);
  EXPECT_EQ(readFile(day / "Brief" / "Modul1.bas"), std::string(kModul1) + "\r\n");
  ports.dialogs.answerFolder(std::nullopt);
  form.execute(Command::mnuexport);
}

TEST_F(office_output, all_modules_are_exported_and_failures_are_told_one_by_one) {
  word().projects[0].file = L"C:\\..\\Con.dot";
  word().projects[0].components[1].name = L"..\\..\\Modul?";
  form.execute(Command::mnuword);
  rightClick(L"Word_1");
  word().fails.insert({L"ThisDocument.Export", FakeHost::failure(75, L"Zugriffsfehler")});
  ports.dialogs.answerFolder(ports.files.folder.path());
  ports.dialogs.expectMessage();
  ports.dialogs.expectMessage();
  form.execute(Command::mnuexportall);
  const std::filesystem::path day = ports.files.folder / "VBA-20250131";
  EXPECT_EQ((ports.dialogs.asked.end() - 2)->text,
            L"Das Modul \"ThisDocument\" konnte nicht exportiert werden: \r\nZugriffsfehler");
  EXPECT_EQ(told(),
            "Alle Module wurden in folgendes Verzeichnis exportiert: \r\n" + toUtf8(pathText(day)));
  EXPECT_TRUE(exists(day / "_Con" / ".._.._Modul_.bas") && exists(day / "_Con" / "Kunde.cls"));
}

TEST_F(office_output, a_module_that_went_away_does_not_end_the_export_of_the_others) {
  form.execute(Command::mnuword);
  rightClick(L"Word_1");
  word().fails.insert({L"VBComponents.Item", FakeHost::failure(9, L"Index")});
  const int first = word().callsOf[L"Item"] + 1;
  word().onCall = [this, first](const std::wstring&) {
    if (word().callsOf[L"Item"] > first) word().fails.clear();
  };
  ports.dialogs.answerFolder(ports.files.folder.path());
  ports.dialogs.expectMessage();
  ports.dialogs.expectMessage();
  form.execute(Command::mnuexportall);
  EXPECT_EQ((ports.dialogs.asked.end() - 2)->text,
            L"Das Modul \"1\" konnte nicht exportiert werden: \r\nIndex");
  EXPECT_TRUE(exists(ports.files.folder / "VBA-20250131" / "Brief" / "Kunde.cls"));
}

TEST_F(office_output, what_cannot_be_exported_is_told) {
  form.execute(Command::mnuword);
  for (int i = 0; i < 3; ++i) ports.dialogs.expectMessage();
  form.ModulExportieren(node(L"Word_1_1"));
  EXPECT_EQ(told(), "Das Modul \"ThisDocument\" konnte nicht exportiert werden");
  form.ModulExportieren(node(L"Word_1"));
  form.AlleModuleExportieren(node(L"Word_2"));
  EXPECT_EQ(told(), "Das Modul \"Geheim\" konnte nicht exportiert werden");
  writeText(ports.files.folder / "VBA-20250131", "in the way");
  ports.dialogs.answerFolder(ports.files.folder.path());
  ports.dialogs.expectMessage();
  rightClick(L"Word_1");
  form.execute(Command::mnuexportall);
  EXPECT_TRUE(told().starts_with("Das Modul \"Brief\" konnte nicht exportiert werden: \r\n"));
}

// ----------------------------------------------------------------------------- the result
TEST_F(office_output, a_result_is_made_anew_behind_an_analysis) {
  openFile(moduleFile("a.bas", kTwoProcedures));
  form.execute(Command::mnuMakro);
  const std::string result = form.HTMLText;
  form.execute(Command::mnuword);
  ports.dialogs.answerSave({.path = ports.files.folder / "a.htm"});
  form.execute(Command::cmdExport);
  EXPECT_NE(readFile(ports.files.folder / "a.htm").find(result), std::string::npos);
}

TEST_F(office_output, result_goes_into_a_new_document_of_the_running_word) {
  openFile(moduleFile("a.bas", kTwoProcedures));
  form.cmdWord.Click();
  EXPECT_TRUE(word().documents.empty()) << "not enabled before there is a result";
  form.execute(Command::mnuMakro);
  form.cmdWord.Click();
  ASSERT_EQ(word().documents.size(), 1U);
  FakeDocument& document = *word().documents[0];
  EXPECT_NE(document.inserted.find("\">Call</span>"), std::string::npos);
  EXPECT_EQ(document.inserted.find("class="), std::string::npos);
  EXPECT_EQ(document.properties[L"Content.Font.Name"], L"Courier New");
  EXPECT_EQ(document.properties[L"Content.NoProofing"], L"True");
  EXPECT_EQ(document.properties[L"ShowSpellingErrors"], L"False");
  EXPECT_TRUE(word().visible && word().running && !document.closed);
  EXPECT_EQ(word().living, 0);
  EXPECT_FALSE(std::filesystem::exists(pathFromText(document.insertedPath)));
  EXPECT_FALSE(form.isEnabled(Command::mnutrennen)) << "no connection stays";
  EXPECT_EQ(form.Label9.Caption(), L"Nach Word übertragen: das ganze Ergebnis (Zeilen: 6)");
  selectLines(form.List1, {0});  // and with it its HTML line
  form.execute(Command::mnu2word);
  EXPECT_EQ(word().documents[1]->inserted, document.inserted);
  selectLines(form.List2, {1, 4});
  form.execute(Command::mnu2word);
  EXPECT_EQ(word().documents[2]->inserted.find("End"), std::string::npos);
  EXPECT_NE(word().documents[2]->inserted.find("\r\nx = 1  \r\n</pre>"), std::string::npos);
  EXPECT_EQ(form.Label9.Caption(), L"Nach Word übertragen: 2 markierte Zeilen");
}

TEST_F(office_output, a_word_that_holds_a_result_belongs_to_the_user) {
  word().running = false;
  form.execute(Command::mnuword);
  click(L"Word_1_2_1");
  form.execute(Command::mnu2word);
  EXPECT_EQ(word().documents.size(), 1U) << "converted first";
  form.execute(Command::mnutrennen);
  EXPECT_EQ(word().quits, 0);
  EXPECT_EQ(word().living, 0);
}

TEST_F(office_output, a_failed_transfer_leaves_no_document_and_no_word_behind) {
  openFile(moduleFile("a.bas", "x\r\n"));
  form.execute(Command::mnuMakro);
  word().running = false;
  word().fails.insert({L"InsertFile", FakeHost::failure(5174, L"Datei nicht gefunden")});
  ports.dialogs.expectMessage();
  form.execute(Command::mnu2word);
  EXPECT_EQ(told(),
            "Error 5174 (Datei nicht gefunden) in procedure cmdWord_Click of Formular frmVBACode");
  EXPECT_TRUE(word().documents[0]->closed);
  EXPECT_EQ(word().quits, 1);
  EXPECT_EQ(word().living, 0);
  EXPECT_TRUE(std::filesystem::is_empty(ports.files.temporary));
  EXPECT_TRUE(form.isEnabled(Command::mnu2word)) << "to be tried again";
}

}  // namespace
}  // namespace tintline::test
