// Opening, pasting, converting, reformatting, handing out: what the main window does with files and
// texts. What the user sees by it is in tests/app/expected.
#include "settings/modIniSave.h"
#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

class commands : public ProgramTest {
 protected:
  void SetUp() override {
    ports.clock.step = 0.17F;
    begin();
  }

  void setWidth(const std::optional<std::wstring>& width, bool right = true) {
    ports.dialogs.answerInput(width);
    if (!right) ports.dialogs.expectMessage();
    execute("width " + toUtf8(width.value_or(L"cancelled")), Command::mnuZeilenbreite);
  }

  void paste(std::string_view text) {
    ports.clipboard.content = fromUtf8(text);
    execute("paste", Command::mnuInsert);
  }

  // What the user does in that yield of a run that begins now.
  void later(int yield, const std::function<void()>& work) {
    ports.messageLoop.at(ports.messageLoop.yields + yield, work);
  }
};

// ------------------------------------------------------------------------------- sources
TEST_F(commands, file_is_opened_converted_and_read_anew) {
  openFile("Modul1.bas", kTwoProcedures);
  convert();
  execute("indent", Command::mnuFormat);
  moduleFile("Modul1.bas", "If a Then\r\n    y\r\nEnd If\r\n");
  execute("convert the changed file", Command::mnuMakro);
  click(L"Modul1.bas");
  click(L"Dateien");
  convert();
}

TEST_F(commands, tree_holds_one_file_and_its_picture_by_type) {
  for (const char* name : {"a.frm", "b.cls", "C.BAS", "d.bas"}) openFile(name, "x\r\n");
  step("dropped", [&] { form.fileDropped(moduleFile(pathFromText(L"Größe Ω.bas"), "x\r\n")); });
  step("taken out", [&] { EXPECT_TRUE(form.fkt_DateiknotenEntnehmen()); });
  EXPECT_FALSE(form.fkt_DateiknotenEntnehmen());
  step("put back", [&] { form.DateiknotenWiederherstellen(); });
}

TEST_F(commands, failed_opening_changes_nothing_or_says_why) {
  openFile(ports.files.folder / "gleich am Anfang.bas");
  openFile("a.bas", "x\r\ny\r\n");
  ports.dialogs.answerOpen({.error = FileChoice::kCancelled, .path = {}});
  execute("cancelled", Command::mnudatei);
  openFile(ports.files.folder / "*.bas");
  convert();
  select(form.List1, {0});
  openFile(ports.files.folder / "fehlt.bas");
  click(L"a.bas");
  openFile(ports.files.folder / "fehlt.bas");
  click(L"Dateien");
  execute("the file that is there", Command::mnuMakro);
  for (const std::filesystem::path& folder : {ports.files.program, ports.files.temporary}) {
    std::filesystem::remove(folder / "dummy.html");
    std::filesystem::create_directory(folder / "dummy.html");
  }
  openFile("keine Seite.bas", "x\r\n");
}

TEST_F(commands, too_many_lines_are_told) {
  std::string text;
  for (std::size_t i = 0; i <= kMaxLines; ++i) text += "x\r\n";
  openFile("lang.bas", text);
  convert();
  openFile("a.bas", "x\r\n");
  ports.dialogs.expectMessage();
  paste(std::string(kMaxLines, '\r'));
  moduleFile("a.bas", text);
  convert();
}

TEST_F(commands, pasted_code_is_appended_handed_out_and_never_linked) {
  step("export of nothing", [&] { form.cmdExport_Click(); });
  paste("");
  paste("a = 1");
  exportAs("eins.htm", "export at once");
  openFile("a.bas", "Sub Eins()\r\nEnd Sub\r\n");
  convert();
  paste("Sub Zwei()\r\n\tCall Eins\r\nEnd Sub");
  execute("copy nothing", Command::mnuCopy);
  step("to Word", [&] { form.cmdWord.Click(); });
  convert();
  paste("");
}

TEST_F(commands, nothing_starts_inside_another) {
  later(1, [&] { step("reading", [&] { tryEverything(); }); });
  openFile("a.bas", "x\r\ny\r\n");
  ports.messageLoop.onYield = [&] { tryEverything(); };
  convert();
  ports.messageLoop.onYield = nullptr;
}

// ---------------------------------------------------------------------------- conversion
TEST_F(commands, progress_is_shown_and_escape_ends_a_run) {
  openFile("a.bas", "a\r\nSub b()\r\nc\r\nd\r\n");
  for (const int yield : {5, 7}) later(yield, [&] { step("in the run"); });
  later(4 + 3 * 2, [&] { execute("Esc", Command::mnuAbbrechen); });
  convert();
  execute("an option", Command::mnuZeilennummern);
  execute("convert again", Command::mnuMakro);
  select(form.List1, {1, 2});
  execute("selection", Command::mnuAuswahl);
  select(form.List1, {});
  execute("no selection", Command::mnuAuswahl);
  openFile("b.bas", "a\r\nb\r\nc\r\n");
  later(5, [&] { execute("Esc", Command::mnuAbbrechen); });
  execute("export", Command::cmdExport);
}

TEST_F(commands, closing_ends_the_run_first) {
  openFile("a.bas", "a\r\nb\r\nc\r\n");
  click(L"a.bas");
  later(3, [&] { step("in the export", [&] { EXPECT_FALSE(form.QueryUnload()); }); });
  execute("export", Command::cmdExport);
}

TEST_F(commands, quitting_in_the_menu_ends_the_run_first) {
  openFile("a.bas", "a\r\nb\r\nc\r\n");
  later(3 + 3, [&] { execute("quit in the run", Command::mnubeenden); });
  convert();
  EXPECT_FALSE(mainWindow.open);
}

// Every link brings letters into the line that are names themselves.
TEST_F(commands, result_that_grows_without_end_is_told) {
  std::string text;
  for (const char name : std::string_view("HREFMacklrs"))
    text += "Sub " + std::string(1, name) + "()\r\nEnd Sub\r\n";
  openFile("a.bas", text + std::string(1000, 'H') + "\r\n");
  ports.dialogs.expectMessage();
  convert();
}

TEST_F(commands, options_take_effect_on_the_result_that_is_shown) {
  openFile("a.bas", kTwoProcedures);
  convert();
  select(form.List1, {1, 4});
  execute("numbers", Command::mnuZeilennummern);
  step("style", [&] { setStyle(); });
  colorWindow.whileModal = [this] {
    app.farbeinstellung.txtFarbe.Text = L"#123456";
    app.farbeinstellung.txtFarbe_Change();
    app.farbeinstellung.cmdSpeichern_Click();
  };
  execute("colours", Command::mnuFarben);
  execute("selection", Command::mnuAuswahl);
  select(form.List1, {0});
  execute("no numbers, of the same lines", Command::mnuZeilennummern);
  paste("y = 2");
  execute("selection", Command::mnuAuswahl);
  step("other lines", [&] { form.List1.AddItem("z = 3"); });
  execute("an option without effect", Command::mnuZeilennummern);
}

TEST_F(commands, options_that_change_while_a_command_is_at_work_take_effect_behind_it) {
  openFile("a.bas", "Dim a\r\n" + std::string(50, 'x') + " " + std::string(50, 'y') + "\r\n");
  convert();
  ports.dialogs.onQuestion = [this] { setStyle(); };
  exportAs("class.htm");
  ports.dialogs.onQuestion = nullptr;
  EXPECT_EQ(readFile(ports.files.folder / "class.htm").find("style=\" color"), std::string::npos);
  select(form.List1, {0});
  execute("selection", Command::mnuAuswahl);
  execute("wrap", Command::mnuUmbruch);
  form.optClass.Value = true;
  step("class, which the result cannot follow", [&] { form.optClass.Click(); });
  exportAs("style.htm");
  EXPECT_EQ(readFile(ports.files.folder / "style.htm").find(".Code {"), std::string::npos);
}

TEST_F(commands, what_cannot_be_read_again_stays) {
  openFile("a.bas", "Sub A()\r\nb\r\nEnd Sub\r\n");
  click(L"a.bas");
  std::filesystem::remove(ports.files.folder / "a.bas");
  execute("convert without a result", Command::mnuMakro);
  openFile("a.bas", "Sub A()\r\nb\r\nEnd Sub\r\n");
  convert();
  std::filesystem::remove(ports.files.folder / "a.bas");
  execute("convert with a result", Command::mnuMakro);
  exportAs("a.htm");
}

TEST_F(commands, lists_move_together_where_lines_match) {
  openFile("a.bas", kTwoProcedures);
  convert();
  select(form.List1, {1, 4});
  select(form.List2, {2, 3});
  execute("selection", Command::mnuAuswahl);
  select(form.List1, {0, 1});
  select(form.List2, {1});
}

TEST_F(commands, preview_follows_its_check_box) {
  openFile("a.bas", "a\r\n");
  execute("preview of nothing", Command::mnuVorschau);
  execute("no preview", Command::mnuVorschau);
  convert();
  writeText(ports.files.program / "dummy.html", "of another running program");
  execute("preview", Command::mnuVorschau);
  later(2, [&] { step("in the run"); });
  convert();
  const auto clicked = [this](bool value) {
    form.Check2.Value = value;
    form.Check2.Click();
  };
  later(1, [&] { clicked(false); });
  openFile("b.bas", "b\r\n");
  later(2, [&] { clicked(true); });
  convert();
}

// -------------------------------------------------------------------------- reformatting
TEST_F(commands, indent_and_back) {
  openFile("a.bas",
           "If a Then\r\n      b\r\nEnd If\r\nPublic Type T\r\nc\r\nEnd Type\r\nWith d\r\ne\r\n");
  select(form.List1, {1});
  for (int i = 0; i < 2; ++i) execute("indent", Command::mnuFormat);
  for (int i = 0; i < 3; ++i) execute("outdent", Command::mnuFormat2);
}

TEST_F(commands, wrapping_is_offered_exactly_for_lines_beyond_the_width) {
  openFile("a.bas", std::string(80, 'x') + "\r\n");
  for (const wchar_t* wrong : {L"19", L"abc"}) setWidth(wrong, false);
  openFile("b.bas", "Call " + std::string(70, 'W') + " " + std::string(6, 'W') + "\r\n");
  const int before = form.List1.HorizontalExtent;
  for (const wchar_t* width : {L"0", L"1000", L"80"}) setWidth(width);
  setWidth(std::nullopt);
  select(form.List1, {0});
  execute("wrap", Command::mnuUmbruch);
  EXPECT_LT(form.List1.HorizontalExtent, before) << "the scroll range follows the lines";
  execute("read anew, wrapped again and converted", Command::mnuMakro);
  openFile("c.bas", "If a Then\r\n" + std::string(79, 'x') + "\r\nEnd If\r\n");
  for (int i = 0; i < 2; ++i) execute("indent", Command::mnuFormat);
  openFile(ports.files.folder / "fehlt.bas");
}

// Not as the width and the indentation are by then.
TEST_F(commands, what_is_read_anew_is_reformatted_as_it_was) {
  openFile("a.bas", "If a Then\r\nCall Eins(zwei, drei, vier)\r\nEnd If\r\n");
  setWidth(L"20");
  for (const Command command : {Command::mnuFormat, Command::mnuUmbruch, Command::mnuFormat,
                                Command::mnuFormat, Command::mnuUmbruch})
    form.execute(command);
  setWidth(L"0");
  const std::vector<std::string> shown = strings(form.List1.lines());
  convert();
  EXPECT_EQ(strings(form.List1.lines()), shown);
}

// ------------------------------------------------------------------------------- outputs
TEST_F(commands, export_asks_for_a_name_and_opens_the_page) {
  openFile("Mein Modul (1).bas", kTwoProcedures);
  click(L"Mein Modul (1).bas");
  answerSave("Seite.txt", 2);
  execute("export, which converts first", Command::cmdExport);
  writeText(ports.files.folder / "a.htm", "alt");
  cancelSave();
  execute("cancelled", Command::cmdExport);
  answerSave("a.htm");
  ports.dialogs.answerConfirm(false);
  cancelSave();
  execute("not replaced", Command::cmdExport);
  answerSave("a.htm");
  ports.dialogs.answerConfirm(false);
  exportAs("b.htm", "another name");
  answerSave("a.htm");
  ports.dialogs.answerConfirm(true);
  execute("replaced", Command::cmdExport);
  ports.dialogs.answerSave({.error = 3002, .path = {}});
  ports.dialogs.expectMessage();
  execute("the dialog fails", Command::cmdExport);
  answerSave("kein Ordner/a.htm");
  ports.dialogs.expectMessage();
  execute("cannot be written", Command::cmdExport);
  for (const int answer : {33, 2, 11, 5, 27, -1}) {
    ports.shell.result = answer;
    answerSave(("shell" + std::to_string(answer) + ".htm").c_str());
    if (answer != 33 && answer != 2) ports.dialogs.expectMessage();
    execute("the shell answers " + std::to_string(answer), Command::cmdExport);
  }
  openFile("b.bas", "x\r\n");
}

TEST_F(commands, copies_follow_the_list_that_has_the_focus) {
  openFile("a.bas", kTwoProcedures);
  convert();
  form.ActiveControl = &form.List1;
  select(form.List1, {1, 4});
  execute("copy source", Command::mnuCopy);
  form.ActiveControl = &form.List2;
  select(form.List2, {4});
  modIniSave::IniWertSchreiben(app.settingsFile, "PreCode", "<div>,");
  modIniSave::IniWertSchreiben(app.settingsFile, "PostCode", "</div>,");
  execute("copy HTML", Command::mnuCopy);
  execute("all HTML", Command::mnuSelectAll);
  select(form.List1, {});
  form.ActiveControl = &form.List1;
  execute("all source", Command::mnuSelectAll);
  ports.clipboard.broken = true;
  step("a broken clipboard", [&] {
    form.cmdVBAClp.Click();
    form.cmdHTMClp.Click();
    form.execute(Command::mnuInsert);
  });
}

// ------------------------------------------------------------------------------ beginnings
TEST_F(commands, a_new_beginning_and_files_that_were_opened_before) {
  const auto hints = [&] {
    const std::wstring text = form.List1.Hint() + L" / " + form.List2.Hint();
    step(toUtf8(text));
  };
  hints();
  execute("new, with nothing there", Command::mnuneu);
  openFile("a.bas", "x\r\n");
  openFile("b.bas", "y\r\n");
  hints();
  exportAs("b.htm", "export what is not converted yet");
  ports.clipboard.content = L"z";
  execute("paste", Command::mnuInsert);
  execute("new", Command::mnuneu);
  hints();
  execute("the file before the last",
          static_cast<Command>(1 + static_cast<int>(Command::mnuZuletzt1)));
  std::filesystem::remove(ports.files.folder / "b.bas");
  execute("one that is gone", static_cast<Command>(1 + static_cast<int>(Command::mnuZuletzt1)));
  EXPECT_FALSE(form.isEnabled(static_cast<Command>(1 + static_cast<int>(Command::mnuZuletzt1))));
  step("close", [&] { form.Unload(); });
}

}  // namespace
}  // namespace tintline::test
