// Word and Excel in the main window: analysing, reading, converting, and everything that can go
// wrong with them.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/app/office_fixture.h"

namespace tintline::test {
namespace {

using office_commands = OfficeTest;

// ---------------------------------------------------------------------------- analysis
TEST_F(office_commands, analysed_documents_of_both_applications_stand_side_by_side) {
  openFile(moduleFile("a.bas", "x\r\n"));
  form.execute(Command::mnuword);
  form.execute(Command::mnuexcel);
  EXPECT_EQ(tree(), std::string(kWordTree) + kExcelTree + "gel. Datei [open]\n  a.bas [modul]\n");
  EXPECT_EQ(node(L"Word_3").Tag, L"3");
  EXPECT_NE(scratchPage().find("In diesem Bereich"), std::string::npos);
  EXPECT_EQ(code(), (std::vector<std::string>{"x "})) << "the file stays loaded";
  word().projects.pop_back();
  form.execute(Command::mnuword);
  EXPECT_EQ(form.TreeView1.roots().size(), 4U) << "its documents were replaced, not added again";
}

TEST_F(office_commands, analysis_tells_what_it_does_and_stays_in_front) {
  std::vector<std::wstring> captions;
  word().onCall = [&](const std::wstring&) {
    EXPECT_TRUE(form.Topmost);
    EXPECT_EQ(form.MousePointer(), Pointer::Hourglass);
    if (captions.empty() || captions.back() != form.Label9.Caption())
      captions.push_back(form.Label9.Caption);
  };
  word().running = false;
  form.execute(Command::mnuword);
  word().onCall = nullptr;
  EXPECT_EQ(captions, (std::vector<std::wstring>{L"Stelle Verbindung zu Word her...",
                                                 L"Analysiere die Dokumentvorlagen..."}));
  EXPECT_EQ(form.Label9.Caption(), L"");
  EXPECT_FALSE(form.Topmost);
  EXPECT_EQ(form.MousePointer(), Pointer::Default);
}

TEST_F(office_commands, the_window_is_shown_in_front_before_the_application_is_asked) {
  struct : ControlView {
    void changed(Control&) override {}
    void refresh(Control& control) override { topmost |= static_cast<Form&>(control).Topmost(); }
    bool topmost = false;
  } view;
  form.setView(&view);
  word().onCall = [&](const std::wstring&) { EXPECT_TRUE(view.topmost); };
  word().running = false;
  form.execute(Command::mnuword);
  form.setView(nullptr);
}

TEST_F(office_commands, no_failure_leaves_the_window_in_front) {
  word().onCall = [](const std::wstring&) { throw std::runtime_error("else"); };
  form.execute(Command::mnuword);
  EXPECT_FALSE(form.Topmost);
  EXPECT_EQ(form.Label9.Caption(), L"");
}

TEST_F(office_commands, a_running_application_is_left_alone_and_a_started_one_is_quit) {
  form.execute(Command::mnuexcel);
  word().running = false;
  form.execute(Command::mnuword);
  EXPECT_TRUE(word().visible);
  form.execute(Command::mnuword);
  EXPECT_EQ(word().starts, 1) << "the started one is used again";
  EXPECT_TRUE(form.isEnabled(Command::mnutrennen) && form.isEnabled(Command::mnutrennen2));
  form.execute(Command::mnutrennen);
  form.execute(Command::mnutrennen2);
  EXPECT_FALSE(form.isEnabled(Command::mnutrennen) || form.isEnabled(Command::mnutrennen2));
  EXPECT_EQ(word().quits, 1);
  EXPECT_EQ(excel().quits, 0);
  EXPECT_EQ(word().living + excel().living, 0);
  EXPECT_EQ(tree(), "");
}

TEST_F(office_commands, closing_the_window_ends_the_connections) {
  word().running = false;
  form.execute(Command::mnuword);
  form.execute(Command::mnuexcel);
  form.Unload();
  EXPECT_EQ(word().quits, 1);
  EXPECT_EQ(word().living + excel().living, 0);
}

TEST_F(office_commands, escape_ends_the_analysis_between_documents) {
  openFile(moduleFile("a.bas", "x\r\n"));
  word().onCall = [&](const std::wstring& member) {
    if (member == L"CodeModule" && word().callsOf[member] == 4)  // in the last document
      form.execute(Command::mnuAbbrechen);
  };
  form.execute(Command::mnuword);
  word().onCall = nullptr;
  EXPECT_EQ(tree(), std::string(kWordTree).substr(0, std::string(kWordTree).find("Dokument (")) +
                        "gel. Datei [open]\n  a.bas [modul]\n");
  click(L"Word_1_2_1");
  EXPECT_EQ(form.List1.ListCount(), 3U) << "what was read can be used";
}

TEST_F(office_commands, nothing_else_starts_while_an_application_is_walked) {
  word().onCall = [&](const std::wstring&) {
    for (int command = 1; command <= static_cast<int>(Command::mnuInfo); ++command)
      if (command != static_cast<int>(Command::mnubeenden))
        form.execute(static_cast<Command>(command));
    if (!form.TreeView1.empty()) {
      form.TreeView1.userSelected(*form.TreeView1.roots().front());
      rightClick(L"Word_1");
    }
  };
  form.execute(Command::mnuword);
  EXPECT_EQ(tree(), kWordTree);
  EXPECT_TRUE(popups.empty());
  EXPECT_EQ(excel().calls, 0);
}

// ----------------------------------------------------------------------------- failures
TEST_F(office_commands, failed_analysis_says_why_and_leaves_nothing_half_done) {
  const std::string brief = std::string(kWordTree).substr(0, std::string(kWordTree).find("Geheim"));
  const struct {
    const char* name;
    std::function<void(FakeHost&)> fail;
    std::string told, tree;
    bool connected;
  } cases[] = {
      {"there is no Word", [](FakeHost& host) { host.installed = host.running = false; },
       "Error 429 (Objekterstellung nicht möglich) in procedure Wordanalyse of Modul modWord", "",
       false},
      {"access is refused", [](FakeHost& host) { host.refusesAccess = true; },
       "Bitte die Sicherheitseinstellungen für Makros ändern oder Word manuell starten.", "",
       false},
      {"Word dies when it is asked for its editor", [](FakeHost& host) { host.diesAt = 1; }, kLost,
       "", false},
      {"Word dies in the middle", [](FakeHost& host) { host.diesAt = 40; }, kLost, "", false},
      {"a member fails",
       [](FakeHost& host) {
         host.fails.insert({L"Project.Protection", FakeHost::failure(7, L"Nicht genug")});
         host.projects[0].name = L"TemplateProject";
       },
       "Error 7 (Nicht genug) in procedure Baumübersicht of Formular frmVBACode", brief, true},
  };
  const std::vector<FakeProject> healthy = word().projects;
  for (const auto& c : cases) {
    form.execute(Command::mnutrennen);
    word().installed = word().running = true;
    word().refusesAccess = false;
    word().calls = word().diesAt = 0;
    word().fails.clear();
    word().projects = healthy;
    openFile(moduleFile("a.bas", "x\r\n"));
    c.fail(word());
    ports.dialogs.expectMessage();
    form.execute(Command::mnuword);
    EXPECT_EQ(told(), c.told) << c.name;
    EXPECT_EQ(tree(), c.tree + "gel. Datei [open]\n  a.bas [modul]\n") << c.name;
    EXPECT_EQ(form.isEnabled(Command::mnutrennen), c.connected) << c.name;
    EXPECT_TRUE(c.connected || word().living == 0) << c.name;
    EXPECT_TRUE(!form.Topmost && form.MousePointer() == Pointer::Default) << c.name;
    EXPECT_EQ(form.Label9.Caption(), L"") << c.name;
    EXPECT_TRUE(form.isEnabled(Command::mnuword)) << c.name;
  }
}

TEST_F(office_commands, refused_access_quits_what_was_started_for_it) {
  word().running = false;
  word().refusesAccess = true;
  ports.dialogs.expectMessage();
  form.execute(Command::mnuword);
  EXPECT_EQ(word().quits, 1);
  EXPECT_EQ(word().living, 0);
}

TEST_F(office_commands, a_lost_connection_is_told_by_the_next_command_and_gone_then) {
  const std::function<void()> commands[] = {
      [&] { click(L"Word_1_2_1"); },
      [&] { form.execute(Command::mnuModul); },
      [&] { form.execute(Command::mnuAlleModule); },
      [&] { form.execute(Command::mnuMakro); },
      [&] {
        rightClick(L"Word_1_2");
        form.execute(Command::mnuexport);
      },
      [&] {
        rightClick(L"Word_1");
        form.execute(Command::mnuexportall);
      },
      [&] { form.execute(Command::mnu2word); },
  };
  for (const auto& command : commands) {
    word().running = true;
    form.execute(Command::mnuword);
    click(L"Word_1_2_1");
    word().end();
    ports.dialogs.expectMessage();
    command();
    EXPECT_EQ(told(), kLost);
    EXPECT_FALSE(form.isEnabled(Command::mnutrennen));
    EXPECT_EQ(tree(), "");
    EXPECT_EQ(word().living, 0);
    EXPECT_EQ(word().quits, 0);
    EXPECT_EQ(form.MousePointer(), Pointer::Default);
    EXPECT_FALSE(form.isEnabled(Command::mnuModul) || form.isEnabled(Command::mnuAlleModule) ||
                 form.isEnabled(Command::mnuexport));
  }
}

TEST_F(office_commands, a_closed_document_is_told_as_lost_and_the_others_stay) {
  word().running = false;
  form.execute(Command::mnuword);
  word().fails.insert({L"Modul1.Lines",
                       {OfficeError::Kind::ConnectionLost, 0,
                        L"Das aufgerufene Objekt wurde getrennt", 0x80010108}});
  ports.dialogs.expectMessage();
  click(L"Word_1_2_1");
  EXPECT_EQ(told(), kLost);
  EXPECT_EQ(tree(), kWordTree);
  click(L"Word_1_3_1");
  EXPECT_EQ(form.List1.ListCount(), 2U);
  form.execute(Command::mnutrennen);
  EXPECT_EQ(word().quits, 1) << "it is known as started";
  EXPECT_EQ(word().living, 0);
}

TEST_F(office_commands, a_started_application_that_was_busy_for_too_long_is_quit_in_the_end) {
  word().running = false;
  form.execute(Command::mnuword);
  const auto stayBusy = [this] {
    word().fails.insert({L"Visible", FakeHost::busy()});
    word().fails.insert({L"VBE", FakeHost::busy()});
  };
  stayBusy();
  ports.dialogs.expectMessage();
  form.execute(Command::mnuword);
  EXPECT_EQ(told(), kLost);
  EXPECT_EQ(tree(), "");
  word().fails.clear();
  form.execute(Command::mnuword);
  EXPECT_EQ(tree(), kWordTree);
  EXPECT_EQ(word().starts, 1) << "it was found again";
  stayBusy();
  ports.dialogs.expectMessage();
  form.execute(Command::mnuword);
  form.execute(Command::mnutrennen);
  EXPECT_EQ(word().quits, 1);
  EXPECT_EQ(word().living, 0);
}

TEST_F(office_commands, a_started_application_that_is_too_busy_to_quit_is_told_again) {
  const std::function<void()> ends[] = {
      [&] { form.execute(Command::mnutrennen); },
      [&] {
        word().refusesAccess = true;
        ports.dialogs.expectMessage();
        form.execute(Command::mnuword);
        form.execute(Command::mnutrennen);
      },
      [&] { form.Unload(); },
  };
  for (const auto& end : ends) {
    word().running = word().refusesAccess = false;
    word().quits = 0;
    form.execute(Command::mnuword);
    word().fails.insert({L"Quit", FakeHost::busy()});
    ports.dialogs.expectMessage();
    form.execute(Command::mnutrennen);
    EXPECT_EQ(told(), kLost);
    EXPECT_EQ(tree(), "");
    EXPECT_TRUE(form.isEnabled(Command::mnutrennen));
    word().fails.clear();
    end();
    EXPECT_EQ(word().quits, 1);
    EXPECT_EQ(word().living, 0);
  }
}

TEST_F(office_commands, a_page_that_is_refused_leaves_a_busy_application_to_be_quit_later) {
  openFile(moduleFile("a.bas", kTwoProcedures));
  form.execute(Command::mnuMakro);
  word().running = false;
  word().fails.insert({L"InsertFile", FakeHost::failure(5174, L"Nicht gefunden")});
  word().fails.insert({L"Quit", FakeHost::busy()});
  ports.dialogs.expectMessage();
  form.execute(Command::mnu2word);
  EXPECT_EQ(told(),
            "Error 5174 (Nicht gefunden) in procedure cmdWord_Click of Formular frmVBACode");
  word().fails.clear();
  form.execute(Command::mnutrennen);
  EXPECT_EQ(word().quits, 1);
  EXPECT_EQ(word().living, 0);
}

TEST_F(office_commands, nothing_starts_while_a_closed_window_waits_for_an_application) {
  word().running = false;
  form.execute(Command::mnuword);
  word().onCall = [&](const std::wstring& member) {
    if (member == L"Quit") form.execute(Command::mnuexcel);
  };
  word().fails.insert({L"Quit", FakeHost::busy()});
  form.Unload();
  EXPECT_EQ(excel().calls, 0);
}

TEST_F(office_commands, analysing_again_mends_a_lost_connection) {
  form.execute(Command::mnuword);
  word().end();
  form.execute(Command::mnuword);
  EXPECT_EQ(tree(), kWordTree);
  EXPECT_EQ(word().starts, 1);
}

TEST_F(office_commands, an_application_that_the_user_closed_is_let_go_although_it_lives_on) {
  for (const bool started : {false, true}) {
    excel().running = !started;
    form.execute(Command::mnuexcel);
    const int starts = excel().starts, connections = excel().connections;
    excel().visible = false;
    form.execute(Command::mnuexcel);
    EXPECT_EQ(excel().connections - connections, 1);
    EXPECT_EQ(excel().quits, started ? 1 : 0);
    EXPECT_EQ(excel().starts - starts, started ? 1 : 0);
    EXPECT_EQ(tree(), kExcelTree);
    excel().visible = true;
    form.execute(Command::mnutrennen2);
  }
}

// ------------------------------------------------------------------------------ reading
TEST_F(office_commands, clicked_nodes_give_their_code_and_switch_the_buttons) {
  form.execute(Command::mnuword);
  form.execute(Command::mnuexcel);
  const struct {
    const wchar_t* key;
    std::vector<std::string> lines;
    bool modul, makro, all;
  } cases[] = {
      {L"Word_1_2_Declaration", {"Option Explicit "}, true, true, true},
      {L"Word_1_2_1", {"Sub Eins() ", "Call Zwei ", "End Sub "}, true, true, true},
      {L"Word_1_2_2", {" ", "Private Sub Zwei() ", "x = 1 ", "End Sub "}, true, true, true},
      {L"Word_1_3_1", {"Property Get Wert() ", "End Property "}, true, true, true},
      {L"Word_1_3_2", {"Property Let Wert(x) ", "' let ", "End Property "}, true, true, true},
      {L"Word_1_2", {"Property Let Wert(x) ", "' let ", "End Property "}, true, true, true},
      {L"Word_1_1", {"Property Let Wert(x) ", "' let ", "End Property "}, true, true, true},
      {L"Word_3_1_1", {"Sub Declaration() ", "End Sub "}, true, true, true},
      {L"Word_1", {}, false, true, true},
      {L"Word_2", {}, false, false, false},
      {L"Excel_1_1_Declaration", {"Dim y "}, true, true, true},
  };
  for (const auto& c : cases) {
    click(c.key);
    EXPECT_EQ(code(), c.lines) << toUtf8(c.key);
    EXPECT_EQ(form.cmdModul.Enabled(), c.modul) << toUtf8(c.key);
    EXPECT_EQ(form.cmdMakro.Enabled(), c.makro) << toUtf8(c.key);
    EXPECT_EQ(form.isEnabled(Command::mnuAlleModule), c.all) << toUtf8(c.key);
    EXPECT_FALSE(form.cmdVBAClp.Enabled) << toUtf8(c.key);
    EXPECT_EQ(form.cmdMakro.Caption(), L"Makro") << toUtf8(c.key);
  }
  EXPECT_EQ(form.Label9.Caption(), L"1 Zeilen eingelesen");
}

TEST_F(office_commands, failed_reading_says_which_procedure_failed) {
  form.execute(Command::mnuword);
  word().fails.insert({L"Modul1.Lines", FakeHost::failure(9, L"Index")});
  ports.dialogs.expectMessage();
  click(L"Word_1_2_1");
  EXPECT_EQ(told(), "Error 9 (Index) in procedure Makroeinlesen of Formular frmVBACode");
  EXPECT_EQ(tree(), kWordTree) << "the connection still stands";
  EXPECT_TRUE(form.cmdMakro.Enabled && form.cmdModul.Enabled) << "to be tried again";
  word().fails.clear();
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.List2.ListCount(), 3U);
  word().fails.insert({L"Modul1.Lines", FakeHost::failure(9, L"Index")});
  ports.dialogs.expectMessage();
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.List1.ListCount(), 3U) << "what was read stays";
}

TEST_F(office_commands, long_modules_take_few_calls_and_too_long_ones_are_refused) {
  std::string lines = "Sub A()";
  for (int line = 2; line < 10'000; ++line) lines += "\r\nx = 1";
  lines += "\r\nEnd Sub";
  word().projects[0].components[1].code = lines;
  form.execute(Command::mnuword);
  click(L"Word_1_2");
  word().calls = 0;
  form.execute(Command::mnuModul);
  EXPECT_EQ(form.List2.ListCount(), 10'000U);
  EXPECT_LE(word().calls, 5);
  word().calls = 0;
  click(L"Word_1_2_1");
  EXPECT_EQ(form.List1.ListCount(), 10'000U);
  EXPECT_LE(word().calls, 5);
  for (std::size_t line = 10'000; line <= kMaxLines; ++line) lines += "\r\n'";
  word().projects[0].components[1].code = lines;
  ports.dialogs.expectMessage();
  click(L"Word_1_2_1");
  EXPECT_EQ(told(), "Mehr als 32767 Zeilen können nicht verarbeitet werden.");
  EXPECT_EQ(form.List1.ListCount(), 0U);
}

// --------------------------------------------------------------------------- conversion
TEST_F(office_commands, a_module_gives_the_bytes_of_the_same_code_in_a_file) {
  openFile(moduleFile("Modul1.bas", kModul1));
  form.execute(Command::mnuMakro);
  const std::string fromFile = form.HTMLText;
  ports.dialogs.answerSave({.path = ports.files.folder / "file.htm"});
  form.execute(Command::cmdExport);
  form.execute(Command::mnuword);
  click(L"Word_1_2_1");
  form.execute(Command::mnuModul);
  EXPECT_EQ(form.HTMLText, fromFile);
  EXPECT_NE(fromFile.find("HREF='#Zwei'"), std::string::npos);
  ports.dialogs.answerSave({.path = ports.files.folder / "word.htm"});
  form.execute(Command::cmdExport);
  EXPECT_EQ(ports.dialogs.asked.back().value, L"Brief_Modul1_Eins");
  EXPECT_EQ(readFile(ports.files.folder / "word.htm"), readFile(ports.files.folder / "file.htm"));
}

TEST_F(office_commands, macro_is_read_anew_behind_a_module) {
  form.execute(Command::mnuword);
  click(L"Word_1_2_1");
  form.execute(Command::mnuModul);
  EXPECT_EQ(form.List1.ListCount(), 8U);
  form.execute(Command::mnuMakro);
  EXPECT_EQ(code(), (std::vector<std::string>{"Sub Eins() ", "Call Zwei ", "End Sub "}));
  EXPECT_EQ(form.List2.ListCount(), 3U);
  form.execute(Command::mnuFormat);
  word().projects[0].components[1].code = "Sub Eins()\r\nIf a Then\r\nNeu\r\nEnd If\r\nEnd Sub";
  form.execute(Command::mnuMakro);
  EXPECT_EQ(code()[2], " Neu ") << "as it is in Word now, indented as before";
}

TEST_F(office_commands, all_modules_become_one_page_with_a_frame_each) {
  word().projects[0].components[0].code = "Sub Null()\r\nEnd Sub";
  form.execute(Command::mnuword);
  click(L"Word_1_3_2");
  form.execute(Command::mnuAlleModule);
  EXPECT_EQ(form.List1.ListCount(), 3U * 3 + 2 + 8 + 5);
  EXPECT_EQ(code()[5], "'-------------");
  EXPECT_EQ(code()[6], "' Modul:Modul1");
  EXPECT_EQ(code()[7], "'-------------");
  std::size_t frames = 0;
  for (std::size_t at = 0; (at = form.HTMLText.find("<div style='border", at)) != std::string::npos;
       ++at)
    ++frames;
  EXPECT_EQ(frames, 3U);
  EXPECT_EQ(form.MousePointer(), Pointer::Default);
  EXPECT_TRUE(form.cmdExport.Enabled && form.cmdWord.Enabled);
}

TEST_F(office_commands, escape_between_modules_converts_nothing) {
  form.execute(Command::mnuword);
  click(L"Word_1_2_1");
  word().projects[0].components[1].code =
      std::string(kModul1) + "\r\nCall " + std::string(50, 'x') + " " + std::string(50, 'y');
  word().callsOf.clear();
  word().onCall = [&](const std::wstring& member) {
    if (member == L"Lines") form.execute(Command::mnuAbbrechen);
  };
  form.execute(Command::mnuAlleModule);
  EXPECT_TRUE(form.isEnabled(Command::mnuUmbruch)) << "of what was read";
  EXPECT_EQ(form.List1.ListCount(), 3U + 3 + 9) << "what was read stays";
  EXPECT_EQ(form.List2.ListCount(), 0U);
  EXPECT_EQ(form.MousePointer(), Pointer::Default);
  EXPECT_FALSE(form.cmdExport.Enabled);
}

TEST_F(office_commands, whole_modules_are_converted_for_modules_alone) {
  form.execute(Command::mnuword);
  click(L"Word_1");
  EXPECT_FALSE(form.cmdModul.Enabled) << "a document is no module";
  form.cmdModul_Click();
  EXPECT_EQ(form.List1.ListCount(), 0U);
  form.TreeView1.select(nullptr);
  form.cmdModul_Click();
  form.AlleModuleVerarbeiten();
  openFile(moduleFile("a.bas", "x\r\n"));
  EXPECT_FALSE(form.isEnabled(Command::mnuModul) || form.isEnabled(Command::mnuAlleModule));
}

}  // namespace
}  // namespace tintline::test
