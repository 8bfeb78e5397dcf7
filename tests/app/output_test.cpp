// Export and clipboard.
#include <string>
#include <vector>

#include "app/settings/modIniSave.h"
#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

class output_commands : public ProgramTest {
 protected:
  void SetUp() override {
    start();
    openFile(moduleFile("Mein Modul (1).bas", kTwoProcedures));
    form.execute(Command::mnuMakro);
  }

  std::filesystem::path target(const char* name) { return ports.files.folder / name; }

  void answerSave(const std::filesystem::path& path, int filterIndex = 1) {
    ports.dialogs.answerSave({.path = path, .filterIndex = filterIndex});
  }
};

TEST_F(output_commands, exported_page_has_index_and_body_and_is_opened) {
  answerSave(target("Seite.txt"), 2);
  form.execute(Command::cmdExport);
  const auto& asked = ports.dialogs.asked.back();
  EXPECT_EQ(asked.text, L"HTML-Quellcode speichern");
  EXPECT_EQ(asked.value, L"MeinModul");
  EXPECT_EQ(asked.filter, L"*.htm|*.htm|*.html|*.html");
  const std::string page = readFile(target("Seite.html"));
  EXPECT_NE(page.find("<a HREF='#Zwei'>Zwei</a>"), std::string::npos);
  EXPECT_NE(page.find("<pre>\r\n" + form.HTMLText + "\r\n</pre>"), std::string::npos);
  EXPECT_EQ(ports.shell.opened, (std::vector<std::wstring>{pathText(target("Seite.html"))}));
  EXPECT_EQ(form.lblExportPfad.ToolTipText(), pathText(target("Seite.html")));
  openFile(moduleFile("b.bas", "x\r\n"));
  EXPECT_EQ(form.lblExportPfad.Caption(), L"") << "of another file";
}

TEST_F(output_commands, existing_file_is_replaced_only_with_consent) {
  writeText(target("a.htm"), "alt");
  answerSave(target("a.htm"));
  ports.dialogs.answerConfirm(false);
  answerSave(target("b.htm"));
  form.execute(Command::cmdExport);
  EXPECT_EQ(ports.dialogs.asked[2].text,
            L"Soll die Datei " + pathText(target("a.htm")) + L" überschrieben werden?");
  EXPECT_EQ(readFile(target("a.htm")), "alt");
  EXPECT_TRUE(std::filesystem::exists(target("b.htm")));
  answerSave(target("a.htm"));
  ports.dialogs.answerConfirm(true);
  form.execute(Command::cmdExport);
  EXPECT_EQ(readFile(target("a.htm")), readFile(target("b.htm")));
}

TEST_F(output_commands, cancelled_export_writes_nothing_and_says_nothing) {
  writeText(target("a.htm"), "alt");
  ports.dialogs.answerSave({.error = FileChoice::kCancelled, .path = {}});
  form.execute(Command::cmdExport);
  answerSave(target("a.htm"));
  ports.dialogs.answerConfirm(false);
  ports.dialogs.answerSave({.error = FileChoice::kCancelled, .path = {}});
  form.execute(Command::cmdExport);
  EXPECT_EQ(readFile(target("a.htm")), "alt");
  EXPECT_TRUE(ports.shell.opened.empty());
}

TEST_F(output_commands, failures_are_told) {
  ports.dialogs.answerSave({.error = 3002, .path = {}});
  ports.dialogs.expectMessage();
  form.execute(Command::cmdExport);
  EXPECT_EQ(ports.dialogs.asked.back().text, L"Es ist der Fehler: 3002 aufgetreten!");

  answerSave(target("b.htm"));
  form.execute(Command::cmdExport);
  EXPECT_NE(form.lblExportPfad.Caption(), L"");
  ports.shell.opened.clear();
  answerSave(target("kein Ordner") / "a.htm");
  ports.dialogs.expectMessage();
  form.execute(Command::cmdExport);
  EXPECT_EQ(form.lblExportPfad.Caption() + form.lblExportPfad.ToolTipText(), L"");
  EXPECT_NE(ports.dialogs.asked.back().text.find(L"kann nicht geschrieben werden"),
            std::wstring::npos);
  EXPECT_TRUE(ports.shell.opened.empty());
}

TEST_F(output_commands, answers_of_the_shell) {
  const struct {
    int answer;
    const wchar_t* message;  // null: none
  } cases[] = {{33, nullptr},
               {2, nullptr},
               {11, L"Datei ist keine Win32 Anwendung"},
               {5, L"Zugriff verweigert"},
               {27, L"Datei-Assoziation ist unvollständig"},
               {-1, L"DDE ist nicht bereit"}};
  for (const auto& c : cases) {
    const std::string name = "shell" + std::to_string(c.answer) + ".htm";
    ports.shell.result = c.answer;
    answerSave(target(name.c_str()));
    if (c.message != nullptr) ports.dialogs.expectMessage();
    form.execute(Command::cmdExport);
    if (c.message == nullptr) continue;
    EXPECT_EQ(ports.dialogs.asked.back().text, c.message);
    EXPECT_EQ(ports.dialogs.asked.back().title, L"Datei öffnen");
    EXPECT_EQ(ports.dialogs.asked.back().icon, MessageIcon::Critical);
    EXPECT_TRUE(std::filesystem::exists(target(name.c_str())));
  }
}

TEST_F(output_commands, export_without_a_result_converts_first) {
  form.TreeView1.userSelected(*form.TreeView1.SelectedItem());
  ASSERT_EQ(form.List2.ListCount(), 0U);
  answerSave(target("a.htm"));
  form.execute(Command::cmdExport);
  EXPECT_EQ(form.List2.ListCount(), 6U);
  EXPECT_NE(readFile(target("a.htm")).find(form.HTMLText), std::string::npos);
}

TEST_F(output_commands, copies_follow_the_list_that_has_the_focus) {
  EXPECT_FALSE(form.isEnabled(Command::mnuCopy)) << "no list has the focus";
  form.ActiveControl = &form.List1;
  selectLines(form.List1, {1, 4});
  form.execute(Command::mnuCopy);
  EXPECT_EQ(ports.clipboard.content, "\r\nCall Zwei \r\nx = 1 ");

  form.ActiveControl = &form.List2;
  selectLines(form.List2, {4});
  modIniSave::IniWertSchreiben(app.settingsFile, "PreCode", "<div>,");
  modIniSave::IniWertSchreiben(app.settingsFile, "PostCode", "</div>,");
  form.execute(Command::mnuCopy);
  EXPECT_EQ(ports.clipboard.content,
            "<div>\r\n" + std::string(form.List2.lines()[4]) + "\r\n</div>");

  form.execute(Command::mnuSelectAll);
  EXPECT_EQ(form.List2.SelCount(), 6U);
  selectLines(form.List1, {});
  EXPECT_FALSE(form.cmdVBAClp.Enabled);
  form.ActiveControl = &form.List1;
  form.execute(Command::mnuSelectAll);
  EXPECT_TRUE(form.cmdVBAClp.Enabled);
}

TEST_F(output_commands, broken_clipboard_ends_a_copy_quietly) {
  ports.clipboard.broken = true;
  selectLines(form.List1, {0});
  form.cmdVBAClp.Click();
  form.cmdHTMClp.Click();
  form.execute(Command::mnuInsert);
  EXPECT_EQ(form.List1.ListCount(), 6U);
  EXPECT_TRUE(form.isEnabled(Command::mnudatei)) << "the program goes on";
}

}  // namespace
}  // namespace tintline::test
