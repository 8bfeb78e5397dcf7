// Opening files, clicking the tree, pasting.
#include <string>
#include <vector>

#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

class sources : public ProgramTest {
 protected:
  void SetUp() override { start(); }

  // The tree as "text[image/selected image] > …", the selected node in "*".
  std::wstring tree() const {
    std::wstring text;
    for (const auto& root : form.TreeView1.roots()) add(*root, text);
    return text;
  }

 private:
  void add(const TreeNode& node, std::wstring& text) const {
    const std::wstring mark = form.TreeView1.SelectedItem() == &node ? L"*" : L"";
    text += mark + node.Text() + mark + L"[" + fromAnsi(node.Image()) + L"/" +
            fromAnsi(node.SelectedImage()) + L"]";
    for (const auto& child : node.Children()) {
      text += L" > ";
      add(*child, text);
    }
  }
};

TEST_F(sources, opened_file_stands_in_list_tree_and_buttons) {
  ports.clock.step = 0.17F;
  openFile(moduleFile("Modul1.bas", kTwoProcedures));
  EXPECT_EQ(strings(form.List1.lines()),
            (std::vector<std::string>{"Sub Eins() ", "Call Zwei ", "End Sub ", "Sub Zwei() ",
                                      "x = 1 ", "End Sub "}));
  EXPECT_EQ(form.Label9.Caption(), L"6 Zeilen eingelesen in 0,1s");
  EXPECT_EQ(tree(), L"gel. Datei[open/open] > *Modul1.bas*[modul/modul]");
  EXPECT_EQ(form.TreeView1.SelectedItem()->Tag, pathText(ports.files.folder / "Modul1.bas"));
  EXPECT_EQ(form.cmdMakro.Caption(), L"Datei");
  EXPECT_TRUE(form.cmdMakro.Enabled && form.cmdAuswahl.Enabled);
  EXPECT_FALSE(form.cmdHTMClp.Enabled || form.cmdExport.Enabled || form.cmdModul.Enabled ||
               form.cmdVBAClp.Enabled);
  EXPECT_EQ(form.MousePointer(), Pointer::Default);
  const auto& asked = ports.dialogs.asked.back();
  EXPECT_EQ(asked.text, L"VB(A)-Datei einlesen");
  EXPECT_EQ(asked.value, L"");
}

TEST_F(sources, tree_holds_one_file_and_its_picture_by_type) {
  const struct {
    const char* name;
    const wchar_t* tree;
  } cases[] = {
      {"a.frm", L"gel. Datei[open/open] > *a.frm*[modul/frm]"},
      {"b.cls", L"gel. Datei[open/open] > *b.cls*[modul/cls]"},
      {"C.BAS", L"gel. Datei[open/open]"},  // capitals: no node of its own
      {"d.bas", L"gel. Datei[open/open] > *d.bas*[modul/modul]"},
  };
  for (const auto& c : cases) {
    openFile(moduleFile(c.name, "x\r\n"));
    EXPECT_EQ(tree(), c.tree) << c.name;
    EXPECT_EQ(form.List1.ListCount(), 1U) << c.name;
  }
}

TEST_F(sources, failed_opening_changes_nothing_or_says_why) {
  openFile(moduleFile("a.bas", "x\r\ny\r\n"));
  const std::wstring before = tree();
  ports.dialogs.answerOpen({.error = FileChoice::kCancelled, .path = {}});
  form.execute(Command::mnudatei);
  ports.dialogs.answerOpen({.path = ports.files.folder / "*.bas"});
  form.execute(Command::mnudatei);
  EXPECT_EQ(form.List1.ListCount(), 2U);
  for (const wchar_t* node : {L"a.bas", L"Dateien"}) {
    form.execute(Command::mnuFormat);
    form.execute(Command::mnuMakro);
    selectLines(form.List1, {0});
    openFile(ports.files.folder / "fehlt.bas");
    EXPECT_EQ(form.Label9.Caption(), L"fehlt.bas: Datei nicht gefunden");
    EXPECT_EQ(tree(), before);
    EXPECT_EQ(form.MousePointer(), Pointer::Default);
    EXPECT_EQ(form.Frame1.Caption(), L"Quellcode");
    EXPECT_EQ(form.HTMLText.find("x"), std::string::npos);
    EXPECT_FALSE(form.cmdVBAClp.Enabled || form.cmdExport.Enabled) << "there is nothing";
    EXPECT_NE(scratchPage().find("In diesem Bereich"), std::string::npos);
    form.TreeView1.userSelected(*form.TreeView1.find(node));
    form.execute(Command::mnuMakro);
    EXPECT_EQ(form.List2.ListCount(), 2U) << "of the file that is there, not of the missing one";
    form.TreeView1.userSelected(*form.TreeView1.find(L"a.bas"));
  }
}

TEST_F(sources, lines_beyond_the_limit_are_told) {
  std::string text;
  for (std::size_t i = 0; i <= kMaxLines; ++i) text += "x\r\n";
  openFile(moduleFile("lang.bas", text));
  EXPECT_EQ(form.List1.ListCount(), kMaxLines);
  EXPECT_EQ(form.Label9.Caption(),
            L"lang.bas: mehr als 32767 Zeilen, der Rest wurde nicht gelesen");
  EXPECT_TRUE(form.cmdAuswahl.Enabled && form.cmdMakro.Enabled);
  EXPECT_EQ(form.cmdMakro.Caption(), L"Datei");
}

TEST_F(sources, clicked_file_node_is_read_anew) {
  openFile(moduleFile("a.bas", "x\r\n"));
  form.execute(Command::mnuFormat);
  form.execute(Command::mnuMakro);
  moduleFile("a.bas", "x\r\n    y\r\n");
  form.TreeView1.userSelected(*form.TreeView1.find(L"a.bas"));
  EXPECT_EQ(strings(form.List1.lines()), (std::vector<std::string>{"x ", "    y "}));
  EXPECT_EQ(form.List2.ListCount(), 0U);
  EXPECT_EQ(form.Frame1.Caption(), L"Quellcode");
  EXPECT_TRUE(form.cmdExport.Enabled);
  EXPECT_NE(scratchPage().find("In diesem Bereich"), std::string::npos);
}

TEST_F(sources, clicked_root_of_the_files_offers_the_file) {
  openFile(moduleFile("a.bas", "x\r\n"));
  form.TreeView1.userSelected(*form.TreeView1.find(L"Dateien"));
  EXPECT_EQ(form.cmdMakro.Caption(), L"Datei");
  EXPECT_EQ(form.List1.ListCount(), 1U);
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.List2.ListCount(), 1U);
}

TEST_F(sources, file_branch_is_taken_out_and_put_back) {
  EXPECT_FALSE(form.fkt_DateiknotenEntnehmen());
  openFile(moduleFile("a.cls", "x\r\n"));
  const std::wstring before = tree();
  EXPECT_TRUE(form.fkt_DateiknotenEntnehmen());
  EXPECT_TRUE(form.TreeView1.empty());
  form.DateiknotenWiederherstellen();
  EXPECT_EQ(tree(), before);
}

TEST_F(sources, a_file_is_opened_though_no_page_can_be_written) {
  for (const std::filesystem::path& folder : {ports.files.program, ports.files.temporary}) {
    std::filesystem::remove(folder / "dummy.html");
    std::filesystem::create_directory(folder / "dummy.html");
  }
  openFile(moduleFile("a.bas", "x\r\n"));
  EXPECT_EQ(tree(), L"gel. Datei[open/open] > *a.bas*[modul/modul]");
  EXPECT_TRUE(form.cmdMakro.Enabled);
}

TEST_F(sources, dropped_file_is_opened) {
  form.fileDropped(moduleFile(pathFromText(L"Größe Ω.bas"), "x\r\n"));
  EXPECT_EQ(form.List1.ListCount(), 1U);
  EXPECT_NE(form.TreeView1.find(L"Größe Ω.bas"), nullptr);
}

TEST_F(sources, pasted_code_is_appended_and_never_linked) {
  openFile(moduleFile("a.bas", "Sub Eins()\r\nEnd Sub\r\n"));
  form.execute(Command::mnuMakro);
  ports.clipboard.content = "Sub Zwei()\r\n\tCall Eins\r\nEnd Sub";
  form.execute(Command::mnuInsert);
  EXPECT_EQ(strings(form.List1.lines()),
            (std::vector<std::string>{"Sub Eins() ", "End Sub ", "Sub Zwei() ", "Call Eins ",
                                      "End Sub "}));
  EXPECT_EQ(form.Label9.Caption(), L"3 Zeilen eingefügt");
  EXPECT_EQ(form.List1.ListIndex(), 2);
  EXPECT_EQ(form.List1.scrollTarget(), 2U);
  EXPECT_EQ(form.cmdMakro.Caption(), L"Text");
  EXPECT_NE(scratchPage().find("In diesem Bereich"), std::string::npos);
  ASSERT_TRUE(form.cmdMakro.Enabled);
  form.execute(Command::mnuMakro);
  EXPECT_EQ(form.List2.ListCount(), 5U);
  EXPECT_EQ(form.HTMLText.find("HREF='#Eins'"), std::string::npos);
}

TEST_F(sources, nothing_to_paste_leaves_the_lines) {
  openFile(moduleFile("a.bas", "x\r\n"));
  form.execute(Command::mnuInsert);
  EXPECT_EQ(form.List1.ListCount(), 1U);
  EXPECT_EQ(form.Label9.Caption(), L"In der Zwischenablage ist kein Text");
  EXPECT_EQ(form.cmdMakro.Caption(), L"Datei");
  EXPECT_TRUE(form.cmdMakro.Enabled);
}

TEST_F(sources, too_much_pasted_code_is_refused_whole) {
  openFile(moduleFile("a.bas", "x\r\n"));
  ports.clipboard.content = std::string(kMaxLines, '\r');  // kMaxLines + 1 pieces
  ports.dialogs.expectMessage();
  form.execute(Command::mnuInsert);
  EXPECT_EQ(form.List1.ListCount(), 1U);
}

TEST_F(sources, commands_that_arrive_while_reading_are_refused) {
  const auto path = moduleFile("a.bas", "x\r\ny\r\n");
  ports.messageLoop.at(ports.messageLoop.yields + 1, [&] {
    EXPECT_FALSE(form.isEnabled(Command::mnudatei));
    form.execute(Command::mnudatei);
    form.fileDropped(path);
    form.cmdMakro.Click();
  });
  openFile(path);
  EXPECT_TRUE(ports.messageLoop.done());
  EXPECT_EQ(form.List1.ListCount(), 2U);
  EXPECT_EQ(form.List2.ListCount(), 0U);
}

}  // namespace
}  // namespace tintline::test
