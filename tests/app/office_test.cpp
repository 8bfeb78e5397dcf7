// Word and Excel in the main window: analysing, reading, converting, exporting, the result in a new
// document, and everything that can go wrong with them. What the user sees is in
// tests/app/expected.
#include <stdexcept>

#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

constexpr std::string_view kModul1 =
    "Option Explicit\r\nSub Eins()\r\nCall Zwei\r\nEnd Sub\r\n\r\nPrivate Sub Zwei()\r\nx = 1\r\n"
    "End Sub";
constexpr std::string_view kKunde =
    "Property Get Wert()\r\nEnd Property\r\nProperty Let Wert(x)\r\n' let\r\nEnd Property";

class office : public ProgramTest {
 protected:
  // Both run, with documents.
  void SetUp() override {
    begin();
    for (FakeHost* host : {&word, &excel}) host->running = host->visible = true;
    word.projects = {{.file = L"C:\\Vorlagen\\Brief.dot",
                      .components = {{.name = L"ThisDocument", .type = 100},
                                     {.name = L"Modul1", .code = std::string(kModul1)},
                                     {.name = L"Kunde", .type = 2, .code = std::string(kKunde)}}},
                     {.file = L"C:\\Geheim.dot", .protection = 1},
                     {.file = L"C:\\Project.dot",
                      .components = {{.name = L"Modul1", .code = "Sub Declaration()\r\nEnd Sub"}}}};
    excel.projects = {{.file = L"C:\\Mappe.xls",
                       .components = {{.name = L"Eingabe", .type = 3, .code = "Dim y"},
                                      {.name = L"Tabelle1", .type = 100}}}};
  }

  void analyse() { execute("analyse Word", Command::mnuword); }
  void part() { execute("part from Word", Command::mnutrennen); }
  void expectMessages(int count) {
    while (count-- > 0) ports.dialogs.expectMessage();
  }
  // The user exports to the test's folder, and is told that often how it went.
  void exportTo(const std::string& what, Command command, int messages) {
    ports.dialogs.answerFolder(ports.files.folder.path());
    expectMessages(messages);
    execute(what, command);
  }
  // What the next command fails in.
  void fail(const wchar_t* member, const OfficeError& error) {
    word.fails.insert_or_assign(member, error);
    ports.dialogs.expectMessage();
  }
  static OfficeError failure(long number, const wchar_t* text) {
    return FakeHost::failure(number, text);
  }
  // Word as it was; the user starts it again.
  void mend() {
    word.fails.clear();
    word.onCall = nullptr;
    word.installed = word.running = word.visible = true;
    word.refusesAccess = false;
    word.calls = word.diesAt = 0;
  }

  FakeHost &word = ports.office.word, &excel = ports.office.excel;
};

// ------------------------------------------------------------------------------ analysis
TEST_F(office, documents_of_both_applications_stand_side_by_side) {
  openFile("a.bas", "x\r\n");
  analyse();
  execute("analyse Excel", Command::mnuexcel);
  word.projects.pop_back();
  analyse();
  step("close", [&] { form.Unload(); });
}

TEST_F(office, analysis_shows_what_it_does_before_the_application_is_asked) {
  word.running = false;
  int steps = 0;
  word.onCall = [&](const std::wstring& member) {
    if (steps++ < 3) step("in " + toUtf8(member));
    tryEverything();
  };
  analyse();
  word.onCall = [](const std::wstring&) { throw std::runtime_error("else"); };
  analyse();
  word.onCall = nullptr;
}

TEST_F(office, a_running_application_is_left_alone_and_a_started_one_is_quit) {
  execute("analyse Excel", Command::mnuexcel);
  word.running = false;
  analyse();
  analyse();
  part();
  execute("part from Excel", Command::mnutrennen2);
  for (const bool started : {false, true}) {
    excel.running = !started;
    execute("analyse Excel", Command::mnuexcel);
    excel.visible = false;  // closed by the user, although it lives on
    execute("analyse Excel", Command::mnuexcel);
    excel.visible = true;
    execute("part from Excel", Command::mnutrennen2);
  }
  word.running = false;
  word.refusesAccess = true;
  expectMessages(1);
  analyse();
}

// ------------------------------------------------------------------------------ failures
TEST_F(office, failed_analysis_says_why_and_leaves_nothing_half_done) {
  const std::function<void()> failures[] = {
      [&] { word.installed = word.running = false; },
      [&] { word.refusesAccess = true; },
      [&] { word.diesAt = 1; },
      [&] { word.diesAt = 40; },
      [&] {
        word.fails.insert({L"Third.Protection", failure(7, L"Nicht genug")});
        word.projects[2].name = L"Third";
      },
      [&] {
        word.fails.insert({L"VBE", FakeHost::busy()});
      },
  };
  openFile("a.bas", "x\r\n");
  convert();
  for (const auto& fails : failures) {
    part();
    mend();
    fails();
    expectMessages(1);
    analyse();
  }
}

TEST_F(office, a_lost_connection_is_told_by_the_next_command_and_gone_then) {
  const std::pair<const wchar_t*, Command> commands[] = {
      {nullptr, Command::None},          {nullptr, Command::mnuModul},
      {nullptr, Command::mnuAlleModule}, {nullptr, Command::mnuMakro},
      {L"Word_1_2", Command::mnuexport}, {L"Word_1", Command::mnuexportall},
      {nullptr, Command::mnu2word}};
  for (const auto& [node, command] : commands) {
    word.running = true;
    analyse();
    click(L"Word_1_2_1");
    if (node != nullptr) rightClick(node);
    word.end();
    expectMessages(1);
    if (command == Command::None)
      click(L"Word_1_2_2");
    else
      execute("command " + std::to_string(static_cast<int>(command)), command);
  }
  word.running = true;
  analyse();
  word.end();
  analyse();
}

TEST_F(office, a_closed_document_is_told_as_lost_and_the_others_stay) {
  word.running = false;
  analyse();
  fail(L"Modul1.Lines", {OfficeError::Kind::ConnectionLost, 0,
                         L"Das aufgerufene Objekt wurde getrennt", 0x80010108});
  click(L"Word_1_2_1");
  click(L"Word_1_3_1");
  part();
}

TEST_F(office, a_started_application_that_is_too_busy_is_quit_in_the_end) {
  word.running = false;
  analyse();
  fail(L"VBE", FakeHost::busy());
  word.fails.insert({L"Visible", FakeHost::busy()});
  analyse();
  word.fails.clear();
  analyse();  // it is found again
  const std::function<void()> ends[] = {
      [&] { part(); },
      [&] {
        word.refusesAccess = true;
        expectMessages(1);
        analyse();
        part();
      },
      [&] {  // nothing starts while a closed window waits
        word.onCall = [&](const std::wstring&) { form.execute(Command::mnuexcel); };
        step("close", [&] { form.Unload(); });
      },
  };
  for (const auto& end : ends) {
    fail(L"Quit", FakeHost::busy());
    part();
    word.fails.clear();
    end();
    if (!mainWindow.open) break;
    word.running = word.refusesAccess = false;
    analyse();
  }
}

// ------------------------------------------------------------------------------- reading
TEST_F(office, clicked_nodes_give_their_code_and_switch_the_buttons) {
  word.projects[0].components[1].code =
      std::string(kModul1) + "\r\n'" + std::string(90, 'x') + " y";
  analyse();
  execute("analyse Excel", Command::mnuexcel);
  for (const wchar_t* key : {L"Word_1_2_Declaration", L"Word_1_2_1", L"Word_1_2_2", L"Word_1_3_1",
                             L"Word_1_3_2", L"Word_1_2", L"Word_1_1", L"Word_2", L"Word_3_1_1",
                             L"Word_1", L"Word_2", L"Excel_1_1_Declaration"})
    click(key);
  step("modules of a document", [&] {
    form.TreeView1.select(form.TreeView1.find(L"Word_1"));
    form.cmdModul_Click();
    form.TreeView1.select(nullptr);
    form.cmdModul_Click();
    form.AlleModuleVerarbeiten();
  });
}

TEST_F(office, failed_reading_says_which_procedure_failed) {
  analyse();
  fail(L"Modul1.Lines", failure(9, L"Index"));
  click(L"Word_1_2_1");
  word.fails.clear();
  convert();
  fail(L"Modul1.Lines", failure(9, L"Index"));
  convert();
}

TEST_F(office, long_modules_take_few_calls_and_too_long_ones_are_refused) {
  std::string lines = "Sub A()";
  for (int line = 2; line < 10'000; ++line) lines += "\r\nx = 1";
  lines += "\r\nEnd Sub";
  word.projects[0].components[1].code = lines;
  analyse();
  for (const bool module : {true, false}) {
    word.calls = 0;
    module ? click(L"Word_1_2") : click(L"Word_1_2_1");
    if (module) execute("convert the module", Command::mnuModul);
    EXPECT_LE(word.calls, 5);
  }
  for (std::size_t line = 10'000; line <= kMaxLines; ++line) lines += "\r\n'";
  word.projects[0].components[1].code = lines;
  expectMessages(2);
  click(L"Word_1_2_1");
  execute("convert the module", Command::mnuModul);
}

// ---------------------------------------------------------------------------- conversion
TEST_F(office, modules_are_converted_as_the_same_code_in_a_file) {
  openFile("Modul1.bas", kModul1);
  convert();
  exportAs("file.htm");
  analyse();
  click(L"Word_1_2_1");
  execute("convert the module", Command::mnuModul);
  exportAs("word.htm");
  EXPECT_EQ(readFile(ports.files.folder / "word.htm"), readFile(ports.files.folder / "file.htm"));
  execute("the macro, read anew", Command::mnuMakro);
  execute("indent", Command::mnuFormat);
  word.projects[0].components[1].code = "Sub Eins()\r\nIf a Then\r\nNeu\r\nEnd If\r\nEnd Sub";
  execute("the changed macro", Command::mnuMakro);
  word.projects[0].components[0].code = "Sub Null()\r\nEnd Sub";
  execute("all modules", Command::mnuAlleModule);
  exportAs("alle.htm");
  word.onCall = [&](const std::wstring& member) {
    if (member == L"Lines" && word.callsOf[member] % 2 == 0) form.execute(Command::mnuAbbrechen);
  };
  execute("all modules, Esc", Command::mnuAlleModule);
  word.onCall = nullptr;
  openFile("Modul1.bas", kModul1);
  convert();
  analyse();
  answerSave("file.htm");
  ports.dialogs.answerConfirm(true);
  execute("export, made anew behind the analysis", Command::cmdExport);
}

// -------------------------------------------------------------------------------- export
TEST_F(office, modules_are_exported_into_the_folder_of_day_and_document) {
  openFile("a.bas", "x\r\n");
  analyse();
  for (const wchar_t* key :
       {L"Dateien", L"a.bas", L"Word_1_1", L"Word_2", L"Word_1_2_1", L"Word_1_2"})
    rightClick(key);
  exportTo("export the module", Command::mnuexport, 1);
  ports.dialogs.answerFolder(std::nullopt);
  execute("cancelled", Command::mnuexport);
  rightClick(L"Word_1");
  execute("convert all modules", Command::mnuconvertall);
  word.fails.insert({L"ThisDocument.Export", failure(75, L"Zugriffsfehler")});
  exportTo("export all modules", Command::mnuexportall, 2);
  word.fails = {{L"VBComponents.Item", failure(9, L"Index")}};
  word.onCall = [this, first = word.callsOf[L"Item"] + 1](const std::wstring&) {
    if (word.callsOf[L"Item"] > first) word.fails.clear();
  };
  exportTo("one went away", Command::mnuexportall, 2);
  word.onCall = [this](const std::wstring& member) {
    if (member == L"Export") form.execute(Command::mnuAbbrechen);
  };
  exportTo("Esc", Command::mnuexportall, 0);
}

TEST_F(office, names_of_documents_lead_nowhere_and_what_cannot_be_exported_is_told) {
  word.projects[0].file = L"C:\\..\\Con.dot";
  word.projects[0].components[1].name = L"..\\..\\Modul?";
  analyse();
  rightClick(L"Word_1");
  exportTo("export all modules", Command::mnuexportall, 1);
  expectMessages(3);
  step("what is no module", [&] {
    form.ModulExportieren(*form.TreeView1.find(L"Word_1_1"));
    form.ModulExportieren(*form.TreeView1.find(L"Word_1"));
    form.AlleModuleExportieren(*form.TreeView1.find(L"Word_2"));
  });
  std::filesystem::remove_all(ports.files.folder / "VBA-20250131");
  writeText(ports.files.folder / "VBA-20250131", "in the way");
  exportTo("a file in the way", Command::mnuexportall, 1);
}

// ---------------------------------------------------------------------------- the result
TEST_F(office, result_goes_into_a_new_document) {
  openFile("a.bas", kTwoProcedures);
  step("without a result", [&] { form.cmdWord.Click(); });
  convert();
  for (const std::vector<std::size_t>& lines :
       {std::vector<std::size_t>{}, std::vector<std::size_t>{0}, std::vector<std::size_t>{1, 4}}) {
    select(form.List2, lines);  // the first line alone stands for a click: all lines go over
    step("to Word", [&] { form.cmdWord.Click(); });
  }
  word.running = false;
  analyse();
  click(L"Word_1_2_1");
  execute("to the Word that was started", Command::mnu2word);
  part();
}

TEST_F(office, a_failed_transfer_leaves_no_document_and_no_word_behind) {
  openFile("a.bas", "x\r\n");
  convert();
  word.running = false;
  fail(L"InsertFile", failure(5174, L"Datei nicht gefunden"));
  execute("to Word", Command::mnu2word);
  fail(L"Quit", FakeHost::busy());
  execute("to a Word too busy to quit", Command::mnu2word);
  word.fails.clear();
  part();
  std::filesystem::create_directory(ports.files.temporary / "TINTLINE-Word.htm");
  expectMessages(1);
  execute("a page that cannot be written", Command::mnu2word);
}

}  // namespace
}  // namespace tintline::test
