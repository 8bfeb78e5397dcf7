// Converting: what a run shows, how it is ended, what it leaves.
#include <algorithm>
#include <string>
#include <vector>

#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

// What a label says whenever that control is refreshed.
struct Recorder final : ControlView {
  Recorder(Control& refreshed, const Label& label) : control(refreshed), told(label) {
    control.setView(this);
  }
  ~Recorder() override { control.setView(nullptr); }
  void changed(Control&) override {}
  void refresh(Control&) override { texts.push_back(told.Caption); }

  Control& control;
  const Label& told;
  std::vector<std::wstring> texts;
};

class conversion_commands : public ProgramTest {
 protected:
  void SetUp() override { start(); }

  // Opens a file and starts counting yields afresh.
  void open(std::string_view text) {
    openFile(moduleFile("a.bas", text));
    ports.messageLoop.yields = 0;
  }

  // The yields of a run over a file of that many lines: reading it anew comes first.
  static int yieldsBefore(int lines, int line) { return lines + 3 * line; }
};

TEST_F(conversion_commands, result_stands_in_list_page_and_labels) {
  open(kTwoProcedures);
  ports.clock.step = 0.128F;
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.List2.ListCount(), 6U);
  EXPECT_EQ(form.List2.lines()[1],
            "<span class='Code'>Call</span> <a HREF='#Zwei' class='Marks'>Zwei</a>   ");
  EXPECT_NE(scratchPage().find("<pre>\r\n" + form.HTMLText + "\r\n</pre>"), std::string::npos);
  EXPECT_EQ(form.Label9.Caption(), L"6 Zeilen in 0,12s verarbeitet");
  EXPECT_EQ(form.Label10.Caption(), L"");
  EXPECT_TRUE(form.cmdExport.Enabled && form.cmdHTMClp.Enabled && form.cmdMakro.Enabled);
  EXPECT_EQ(form.MousePointer(), Pointer::Default);
  EXPECT_EQ(form.List1.SelCount() + form.List2.SelCount(), 0U);
}

TEST_F(conversion_commands, progress_counts_reading_from_0_and_working_from_1) {
  open("a\r\nb\r\nc\r\n");
  ports.messageLoop.at(yieldsBefore(3, 0) + 1, [&] {
    EXPECT_EQ(form.Label9.Caption(), L"Lese Zeile: 0 (3)");
    EXPECT_EQ(form.MousePointer(), Pointer::Hourglass);
    EXPECT_FALSE(form.cmdMakro.Enabled || form.cmdExport.Enabled || form.optStyle.Enabled);
  });
  ports.messageLoop.at(yieldsBefore(3, 0) + 3, [&] {
    EXPECT_EQ(form.Label10.Caption(), L"Bearbeite Zeile: 1 (3)");
    EXPECT_EQ(form.List1.ListIndex(), 0);
  });
  form.execute(Command::mnuMakro);
  EXPECT_TRUE(ports.messageLoop.done());
}

TEST_F(conversion_commands, escape_ends_a_run_and_keeps_the_lines_so_far) {
  open("a\r\nb\r\nc\r\nd\r\n");
  ports.messageLoop.at(yieldsBefore(4, 2), [&] { form.execute(Command::mnuAbbrechen); });
  form.execute(Command::mnuMakro);
  EXPECT_EQ(strings(form.List2.lines()), (std::vector<std::string>{"a  ", "b  "}));
  EXPECT_EQ(form.HTMLText, "");
  EXPECT_EQ(form.Label9.Caption(), L"Abgebrochen");
  EXPECT_EQ(form.Label10.Caption(), L"");
  EXPECT_FALSE(form.cmdExport.Enabled) << "half a page is not exported";
  form.execute(Command::mnuZeilennummern);
  EXPECT_EQ(form.List2.ListCount(), 2U) << "an option does not start the ended run again";
  EXPECT_EQ(form.MousePointer(), Pointer::Default);
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.List2.ListCount(), 4U) << "the request does not outlive its run";
}

TEST_F(conversion_commands, no_command_starts_inside_a_run) {
  open("a\r\nb\r\n");
  ports.messageLoop.onYield = [&] {
    for (int command = 1; command <= static_cast<int>(Command::mnuInfo); ++command)
      if (command != static_cast<int>(Command::mnubeenden))
        form.execute(static_cast<Command>(command));
    for (const CommandButton* button :
         {&form.cmdMakro, &form.cmdAuswahl, &form.cmdHTMClp, &form.cmdExport})
      button->Click();
    form.Check2.Click();
    form.TreeView1.userSelected(*form.TreeView1.find(L"a.bas"));
    if (form.List1.ListCount() > 0) selectLines(form.List1, {0});
  };
  form.execute(Command::mnuMakro);
  ports.messageLoop.onYield = nullptr;
  EXPECT_EQ(form.List2.ListCount(), 2U);
  EXPECT_TRUE(ports.dialogs.asked.size() == 1);
}

TEST_F(conversion_commands, closing_the_window_ends_the_run_first) {
  open("a\r\nb\r\nc\r\n");
  ports.messageLoop.at(yieldsBefore(3, 1), [&] {
    EXPECT_FALSE(form.QueryUnload());
    EXPECT_TRUE(mainWindow.open);
  });
  form.execute(Command::mnuMakro);
  EXPECT_FALSE(mainWindow.open);
  EXPECT_EQ(form.List2.ListCount(), 1U);
}

TEST_F(conversion_commands, closing_in_the_run_of_an_export_asks_for_no_name) {
  open("a\r\n");
  form.TreeView1.userSelected(*form.TreeView1.find(L"a.bas"));
  ports.messageLoop.at(ports.messageLoop.yields + 3, [&] { EXPECT_FALSE(form.QueryUnload()); });
  form.execute(Command::cmdExport);
  EXPECT_TRUE(ports.messageLoop.done());
  EXPECT_FALSE(mainWindow.open);
}

TEST_F(conversion_commands, file_is_read_anew_and_reformatted_as_before) {
  open("If a Then\r\nb\r\nEnd If\r\n");
  form.execute(Command::mnuFormat);
  form.execute(Command::mnuFormat);
  moduleFile("a.bas", "If a Then\r\nb\r\nc\r\nEnd If\r\n");
  form.execute(Command::mnuMakro);
  EXPECT_EQ(strings(form.List1.lines()),
            (std::vector<std::string>{"If a Then ", "  b ", "  c ", "End If "}));
  EXPECT_EQ(form.Frame1.Caption(), L"Quellcode (Tab=2)");
  EXPECT_EQ(form.List2.ListCount(), 4U);
}

// Every link brings letters into the line that are names themselves.
TEST_F(conversion_commands, result_that_grows_without_end_is_told) {
  std::string text;
  for (const char name : std::string_view("HREFMacklrs"))
    text += "Sub " + std::string(1, name) + "()\r\nEnd Sub\r\n";
  open(text + std::string(1000, 'H') + "\r\n");
  ports.dialogs.expectMessage();
  form.execute(Command::mnuMakro);
  EXPECT_EQ(ports.dialogs.asked.back().text, L"Das Ergebnis wird zu groß.");
  EXPECT_EQ(form.List2.ListCount(), 0U);
  EXPECT_EQ(form.MousePointer(), Pointer::Default);
  EXPECT_TRUE(form.isEnabled(Command::mnuMakro));
}

TEST_F(conversion_commands, selected_lines_alone_are_converted) {
  open("Sub A()\r\nb = \"x\"\r\nc\r\n");
  form.Check1.Value = true;
  selectLines(form.List1, {1, 2});
  const Recorder progress(form.Frame1, form.Label10);
  form.execute(Command::mnuAuswahl);
  EXPECT_EQ(form.List2.ListCount(), 2U);
  EXPECT_EQ(form.HTMLTabelle.substr(0, 8), "<tr><td>");
  EXPECT_EQ(progress.texts,
            (std::vector<std::wstring>{L"Bearbeite Zeile: 1 (3)", L"Bearbeite Zeile: 2 (3)"}));
  EXPECT_EQ(form.Label9.Caption(), L"2 von 3 Zeilen verarbeitet");
  EXPECT_EQ(form.Label10.Caption(), L"");
  EXPECT_EQ(form.List1.SelCount(), 2U) << "the selection stays";
  EXPECT_NE(scratchPage().find(form.HTMLText), std::string::npos);
  selectLines(form.List1, {});
  form.execute(Command::mnuAuswahl);
  EXPECT_EQ(form.List2.ListCount(), 0U);
  EXPECT_EQ(form.HTMLText, "");
  EXPECT_EQ(form.Label9.Caption(), L"Keine Zeile ausgewählt");
}

TEST_F(conversion_commands, options_take_effect_on_the_result_that_is_shown) {
  open(kTwoProcedures);
  form.execute(Command::mnuMakro);
  form.optClass.Value = false;
  form.optStyle.Value = true;
  form.optStyle.Click();
  EXPECT_NE(form.HTMLText.find("style=\" color:#0000FF"), std::string::npos);
  selectLines(form.List1, {1, 4});
  form.execute(Command::mnuZeilennummern);
  EXPECT_NE(form.HTMLText.find(">2:"), std::string::npos);
  EXPECT_EQ(form.List1.marks().selection,
            (std::vector<bool>{false, true, false, false, true, false}));
  EXPECT_EQ(form.List1.ListIndex(), 4);
  EXPECT_TRUE(form.List2.Selected(4) && form.cmdVBAClp.Enabled);
  colorWindow.whileModal = [this] {
    app.farbeinstellung.txtFarbe.Text = L"#123456";
    app.farbeinstellung.txtFarbe_Change();
    app.farbeinstellung.cmdSpeichern_Click();
  };
  form.execute(Command::mnuFarben);
  EXPECT_NE(form.HTMLText.find("#123456"), std::string::npos);
}

TEST_F(conversion_commands, a_file_that_is_gone_stays_as_it_is_shown) {
  open("Sub A()\r\nb\r\nEnd Sub\r\n");
  form.execute(Command::mnuFormat);
  form.execute(Command::mnuMakro);
  std::filesystem::remove(ports.files.folder / "a.bas");
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.Label9.Caption(), L"a.bas: Datei nicht gefunden");
  EXPECT_EQ(form.List1.ListCount(), 3U);
  EXPECT_EQ(form.List2.ListCount(), 3U);
  EXPECT_NE(scratchPage().find(form.HTMLText), std::string::npos);
  ports.dialogs.answerSave({.path = ports.files.folder / "a.htm"});
  form.execute(Command::cmdExport);
  EXPECT_NE(readFile(ports.files.folder / "a.htm").find("<a HREF='#A'>"), std::string::npos);
}

TEST_F(conversion_commands, options_that_change_while_a_command_is_at_work_take_effect_behind_it) {
  open(kTwoProcedures);
  form.execute(Command::mnuMakro);
  const auto chooseStyle = [this] {
    form.optClass.Value = false;
    form.optStyle.Value = true;
    form.optStyle.Click();
  };
  ports.dialogs.onQuestion = chooseStyle;
  ports.dialogs.answerSave({.path = ports.files.folder / "a.htm"});
  form.execute(Command::cmdExport);
  EXPECT_EQ(readFile(ports.files.folder / "a.htm").find("style=\" color"), std::string::npos);
  EXPECT_NE(form.HTMLText.find("style="), std::string::npos);
}

// The head of a page and its lines must be of one style.
TEST_F(conversion_commands, a_result_that_cannot_follow_is_exported_in_its_own_style) {
  open("Dim a\r\n" + std::string(50, 'x') + " " + std::string(50, 'y') + "\r\n");
  selectLines(form.List1, {0});
  form.execute(Command::mnuAuswahl);
  form.execute(Command::mnuUmbruch);
  ASSERT_EQ(form.List1.ListCount(), 3U);
  form.optClass.Value = false;
  form.optStyle.Value = true;
  form.optStyle.Click();
  ports.dialogs.answerSave({.path = ports.files.folder / "a.htm"});
  form.execute(Command::cmdExport);
  const std::string page = readFile(ports.files.folder / "a.htm");
  EXPECT_NE(page.find("<span class='Code'>Dim</span>"), std::string::npos);
  EXPECT_NE(page.find(".Code {"), std::string::npos);
}

TEST_F(conversion_commands, a_selection_is_shown_again_with_the_lines_that_it_had) {
  open(kTwoProcedures);
  selectLines(form.List1, {1, 4});
  form.execute(Command::mnuAuswahl);
  selectLines(form.List1, {0});
  form.execute(Command::mnuZeilennummern);
  EXPECT_EQ(form.List2.ListCount(), 2U);
  EXPECT_NE(form.HTMLText.find("x = 1"), std::string::npos);
  ports.clipboard.content = "y = 2";
  form.execute(Command::mnuInsert);
  selectLines(form.List1, {6});
  form.execute(Command::mnuAuswahl);
  const std::string shown = form.HTMLText;
  form.List1.AddItem("z = 3");  // they are others now
  form.execute(Command::mnuZeilennummern);
  EXPECT_EQ(form.HTMLText, shown);
}

TEST_F(conversion_commands, both_lists_move_together_where_lines_match) {
  open(kTwoProcedures);
  form.execute(Command::mnuMakro);
  selectLines(form.List1, {1, 4});
  EXPECT_EQ(form.Label9.Caption(), L"Lese Zeile: 4 (6)");
  EXPECT_EQ(form.List2.ListIndex(), 4);
  EXPECT_TRUE(form.List2.Selected(4));
  EXPECT_EQ(form.List2.SelCount(), 1U);
  EXPECT_TRUE(form.cmdVBAClp.Enabled);
  form.execute(Command::mnuAuswahl);
  selectLines(form.List1, {0, 1});
  EXPECT_EQ(form.List2.SelCount(), 0U) << "not with the result of a selection";
  form.execute(Command::mnuMakro);
  EXPECT_FALSE(form.cmdVBAClp.Enabled) << "lines that are read anew are not selected";
  selectLines(form.List1, {1, 4});
  selectLines(form.List2, {2, 3});
  EXPECT_EQ(form.List1.ListIndex(), 3);
  EXPECT_TRUE(form.List1.Selected(1) && form.List1.Selected(4) && form.List1.SelCount() == 2)
      << "the user's, for the next run over a selection";
  EXPECT_EQ(form.List2.SelCount(), 2U);
}

TEST_F(conversion_commands, a_file_that_cannot_be_read_again_offers_no_result_that_is_not_there) {
  open("a\r\n");
  form.TreeView1.userSelected(*form.TreeView1.find(L"a.bas"));
  ASSERT_TRUE(form.cmdExport.Enabled);
  std::filesystem::remove(ports.files.folder / "a.bas");
  form.execute(Command::mnuMakro);
  EXPECT_FALSE(form.cmdExport.Enabled || form.cmdHTMClp.Enabled || form.cmdWord.Enabled);
  std::string tooLong;
  for (std::size_t i = 0; i <= kMaxLines; ++i) tooLong += "x\r\n";
  moduleFile("a.bas", tooLong);
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.Label9.Caption(), L"a.bas: mehr als 32767 Zeilen, nicht umgewandelt");
  EXPECT_EQ(form.List1.ListCount(), 1U);
}

TEST_F(conversion_commands, preview_pane_follows_its_check_box) {
  open("a\r\n");
  form.execute(Command::mnuVorschau);
  EXPECT_NE(scratchPage().find("In diesem Bereich"), std::string::npos);
  EXPECT_EQ(scratchPage().find("<pre>"), std::string::npos) << "there is no result yet";
  form.execute(Command::mnuVorschau);
  form.execute(Command::mnuMakro);
  EXPECT_FALSE(form.FrameVorschau.Visible);
  writeText(ports.files.program / "dummy.html", "of another running program");
  form.execute(Command::mnuVorschau);
  EXPECT_NE(scratchPage().find(form.HTMLText), std::string::npos);
  EXPECT_TRUE(form.Check2.Value && form.FrameVorschau.Visible && form.wBrowser.Visible);
  const unsigned before = form.wBrowser.navigations();
  ports.messageLoop.at(ports.messageLoop.yields + 2, [&] { EXPECT_TRUE(form.Check2.Value); });
  form.execute(Command::mnuMakro);
  EXPECT_TRUE(form.Check2.Value && form.FrameVorschau.Visible);
  EXPECT_GT(form.wBrowser.navigations(), before);
  const auto file = moduleFile("b.bas", "b\r\n");
  ports.messageLoop.at(ports.messageLoop.yields + 1, [&] {
    form.Check2.Value = false;
    form.Check2.Click();
  });
  openFile(file);
  EXPECT_FALSE(form.FrameVorschau.Visible) << "clicked while the file was read";
  ports.messageLoop.at(ports.messageLoop.yields + 2, [&] {
    form.Check2.Value = true;
    form.Check2.Click();
  });
  form.execute(Command::mnuMakro);
  EXPECT_TRUE(form.Check2.Value && form.FrameVorschau.Visible) << "clicked in the run";
}

}  // namespace
}  // namespace tintline::test
