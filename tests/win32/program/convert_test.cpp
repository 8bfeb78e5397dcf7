// Opening, converting, reformatting and exporting in the running program.
#include <windows.h>
#include <commctrl.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <algorithm>
#include <fstream>

#include "tests/win32/program/program_test.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

class program : public SharedProgramTest {
 protected:
  // Opens a file that then gets another content, which a click on its node reads; that content
  // may be exported then.
  fs::path readByNode(std::string_view content) const {
    const fs::path module = folder().write(L"neu.bas", "alt\r\n");
    main().open(module);
    folder().write(L"neu.bas", content);
    main().clickNode(0);
    main().clickNode(1);
    const auto lines = static_cast<std::size_t>(std::ranges::count(content, '\n'));
    app().until([=, this] { return main().lineCount(id::kList1) == lines; }, "the new content");
    return module;
  }
};

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// ---------------------------------------------------------------------------- opening

TEST_F(program, opens_a_file_through_the_dialog) {
  const Started opening = main().start(Command::mnudatei);
  const FileDialogOf dialog(app());
  EXPECT_EQ(dialog.title(), L"VB(A)-Datei einlesen");
  dialog.accept(folder().write(L"Kasse.cls", "Sub A()\r\nEnd Sub\r\n").wstring());
  opening.finish();
  EXPECT_EQ(main().lines(id::kList1), (std::vector<std::string>{"Sub A() ", "End Sub "}));
  EXPECT_EQ(treeTexts(app(), main().control(id::kTreeView1)),
            (std::vector<std::wstring>{L"gel. Datei", L"  Kasse.cls"}));
  main().untilShown(id::kLabel9, L"2 Zeilen eingelesen in 0");
  EXPECT_EQ(main().text(id::kCmdMakro), L"Datei");
  EXPECT_TRUE(main().control(id::kCmdAuswahl).enabled());
  EXPECT_FALSE(main().control(id::kCmdModul).enabled());
  EXPECT_FALSE(main().control(id::kCmdExport).enabled());
}

TEST_F(program, cancelling_the_dialog_changes_nothing) {
  main().open(folder().write(L"vorher.bas", "Sub Vorher()\r\n"));
  const Started opening = main().start(Command::mnudatei);
  FileDialogOf(app()).cancel();
  opening.finish();
  EXPECT_EQ(main().lines(id::kList1), std::vector<std::string>{"Sub Vorher() "});
  EXPECT_FALSE(MessageBoxOf::find(app()));
}

TEST_F(program, a_click_on_the_file_node_reads_the_file_again) {
  readByNode("neu\r\nzweite\r\n");
  EXPECT_EQ(main().line(id::kList1, 0), "neu ");
}

// Letters that are not in the code page, too.
TEST_F(program, any_file_name_can_be_opened_and_exported_to) {
  for (const wchar_t* name : {L"Größe ß.bas", L"Ελληνικά.bas", L"Привет мир.bas"}) {
    const fs::path module = folder().write(name, "Sub A()\r\nEnd Sub\r\n");
    main().open(module);
    EXPECT_EQ(main().lineCount(id::kList1), 2U);
    EXPECT_EQ(treeTexts(app(), main().control(id::kTreeView1)).back(), L"  " + std::wstring(name));
    main().convert();
    const fs::path page = fs::path(module).replace_extension(L".htm");
    main().exportTo(page);
    EXPECT_TRUE(sameText(contentOf(page), folder().convert(module, L"")));
    EXPECT_EQ(openedFile(app()).filename(), page.filename());
  }
}

// ------------------------------------------------------------------------- converting

struct Setting {
  const char* name;
  bool inlineStyle, numbers;
  int format, format2;     // how often the indentation is widened and narrowed
  int width;               // that lines are wrapped to, 0: not wrapped
  const wchar_t* options;  // for the same on the command line
};

void PrintTo(const Setting& row, std::ostream* out) { *out << row.name; }

const Setting kSettings[] = {
    {"plain", false, false, 0, 0, 0, L""},
    {"numbered", false, true, 0, 0, 0, L"-n"},
    {"inline_style", true, false, 0, 0, 0, L"--style inline"},
    {"inline_style_numbered", true, true, 0, 0, 0, L"--style inline -n"},
    {"indented", false, false, 4, 0, 0, L"--indent 4"},
    {"indented_and_back", false, true, 3, 1, 0, L"--indent 2 -n"},
    {"wrapped", false, false, 0, 0, 60, L"--wrap 60"},
    {"indented_and_wrapped", true, true, 2, 0, 60, L"--style inline -n --indent 2 --wrap 60"},
};

class Converted : public SharedProgramTest, public testing::WithParamInterface<Setting> {
 protected:
  void wrapAt(int width) const {
    const Started asking = main().start(Command::mnuZeilenbreite);
    const Window input = app().windowOfClass(kInputClass);
    input.control(id::kInputText).setText(std::to_wstring(width));
    input.control(id::kOk).post(BM_CLICK);
    asking.finish();
    const std::size_t before = main().lineCount(id::kList1);
    main().run(Command::mnuUmbruch);
    EXPECT_GT(main().lineCount(id::kList1), before);
  }
};

TEST_P(Converted, page_is_that_of_the_command_line) {
  const Setting& row = GetParam();
  // Under a name of its own, so that nothing remains of what an earlier test did.
  const fs::path module =
      folder().write(std::wstring(L"Muster ") + std::to_wstring(&row - kSettings) + L".bas",
                     contentOf(sampleModule()));
  main().setChecked(row.inlineStyle ? id::kOptStyle : id::kOptClass, true);
  main().setChecked(id::kCheck1, row.numbers);
  main().open(module);
  for (int i = 0; i < row.format; ++i) main().run(Command::mnuFormat);
  for (int i = 0; i < row.format2; ++i) main().run(Command::mnuFormat2);
  if (row.width != 0) wrapAt(row.width);
  main().convert();
  main().untilShown(id::kLabel9, L"s verarbeitet");
  EXPECT_EQ(main().text(id::kLabel10), L"");
  EXPECT_GT(main().lineCount(id::kList2), 0U);
  const fs::path page = newFile();
  main().exportTo(page);
  EXPECT_TRUE(sameText(contentOf(page), folder().convert(module, row.options)));
  EXPECT_EQ(openedFile(app()).filename(), page.filename());
  for (int i = row.format2; i < row.format; ++i) main().run(Command::mnuFormat2);
}

INSTANTIATE_TEST_SUITE_P(program, Converted, testing::ValuesIn(kSettings),
                         [](const auto& row) { return row.param.name; });

TEST_F(program, what_was_never_converted_is_converted_for_the_export) {
  main().setChecked(id::kOptClass, true);
  main().setChecked(id::kCheck1, false);
  const fs::path module = readByNode(contentOf(sampleModule()));
  EXPECT_EQ(main().lineCount(id::kList2), 0U);
  const fs::path page = newFile();
  main().exportTo(page);
  EXPECT_TRUE(sameText(contentOf(page), folder().convert(module, L"")));
  EXPECT_GT(main().lineCount(id::kList2), 0U);
}

TEST_F(program, only_the_selected_lines_are_converted) {
  main().setChecked(id::kOptClass, true);
  main().setChecked(id::kCheck1, true);
  main().open(sampleModule());
  main().selectLines(id::kList1, 36, 43);
  main().clickLine(id::kList1, 47, MK_CONTROL);
  main().convertSelection();
  EXPECT_EQ(main().lineCount(id::kList2), 9U);
  const fs::path page = newFile();
  main().exportTo(page);
  EXPECT_TRUE(sameText(contentOf(page), folder().convert(sampleModule(), L"-n --lines 37-44,48")));
}

TEST_F(program, esc_ends_a_long_run_and_the_next_one_works) {
  main().open(folder().write(L"lang.bas", heavyModule()));
  const Started converting = main().press(id::kCmdMakro);
  main().untilShown(id::kLabel10, L"Bearbeite Zeile: ");
  EXPECT_FALSE(main().offers(Command::mnudatei)) << "no command starts within another";
  main().window().pressKey(VK_ESCAPE);
  converting.finish();
  const std::size_t done = main().lineCount(id::kList2);
  EXPECT_LT(done, 30000U);
  EXPECT_EQ(main().text(id::kLabel9).find(L"verarbeitet"), std::wstring::npos);
  EXPECT_TRUE(main().offers(Command::mnudatei));

  main().open(folder().write(L"kurz.bas", "Sub A()\r\nEnd Sub\r\n"));
  main().convert();
  EXPECT_EQ(main().lineCount(id::kList2), 2U);
}

TEST_F(program, a_click_during_a_run_selects_no_node) {
  main().open(folder().write(L"lang.bas", heavyModule()));
  const Window tree = main().control(id::kTreeView1);
  const auto selected = [&tree] { return tree.send(TVM_GETNEXTITEM, TVGN_CARET); };
  const LRESULT before = selected();
  const Started converting = main().press(id::kCmdMakro);
  main().untilShown(id::kLabel10, L"Bearbeite Zeile: ");
  clickTreeNode(app(), tree, 0);
  tree.send(WM_NULL);
  EXPECT_FALSE(converting.done());
  EXPECT_EQ(selected(), before);
  main().window().pressKey(VK_ESCAPE);
  converting.finish();
  EXPECT_EQ(selected(), before);
  main().clickNode(0);
  app().until([&] { return selected() != before; }, "the selection behind the run");
}

TEST_F(program, keys_start_commands) {
  const auto untilLines = [this](int list, std::size_t count) {
    app().until([=, this] { return main().lineCount(list) == count; }, "lines");
    main().untilIdle();
  };
  main().window().pressKey('O', VK_CONTROL);
  FileDialogOf(app()).accept(folder().write(L"tasten.bas", "If a Then\r\nb\r\n").wstring());
  untilLines(id::kList1, 2);
  main().window().pressKey(VK_F5);
  untilLines(id::kList2, 2);
  main().clickLine(id::kList1, 1);
  main().window().pressKey(VK_F7);
  untilLines(id::kList2, 1);
  main().window().pressKey('A', VK_CONTROL);
  main().window().pressKey(VK_F7);
  untilLines(id::kList2, 2);
}

// The list's commands have the same keys as the preview's own.
TEST(preview, keys_select_and_copy_in_it_and_the_copy_outlives_the_program) {
  const ProgramFolder folder;
  const RunningProgram program(folder);
  const MainWindow& main = program.main;
  main.open(folder.write(L"vorschau.bas", "Sub A()\r\nEnd Sub\r\n"));
  main.setChecked(id::kCheck2, true);
  main.convert();
  const HWND pane = main.control(id::kBrowser).handle();
  const auto page = [pane] { return Window(GetWindow(pane, GW_CHILD)); };
  program.app.until([&] { return page().exists(); }, "the preview");
  if (lstrcmpiW(page().className().c_str(), MSFTEDIT_CLASS) != 0)
    GTEST_SKIP() << "a browser shows the page";
  program.app.until([&] { return page().text().find(L"End Sub") != std::wstring::npos; },
                    "the page");
  main.clickLine(id::kList1, 0);
  page().click({5, 5});
  main.window().pressKey('A', VK_CONTROL);
  program.app.until([&] { return HIWORD(page().send(EM_GETSEL)) > 15; }, "the selection");
  EXPECT_EQ(main.control(id::kList1).send(LB_GETSELCOUNT), 1);
  clearClipboard();
  main.window().pressKey('C', VK_CONTROL);
  // Whoever looks into the clipboard keeps others from writing to it.
  program.app.until([] { return IsClipboardFormatAvailable(CF_TEXT) != FALSE; }, "the copy");
  EXPECT_EQ(main.close(), 0U);
  EXPECT_NE(clipboardText().value_or("").find("End Sub"), std::string::npos);
}

// ----------------------------------------------------------------------- reformatting

TEST_F(program, indentation_is_shown_above_the_lines) {
  main().open(folder().write(L"einzug.bas", "If a Then\r\nb\r\nEnd If\r\n"));
  main().run(Command::mnuFormat);
  EXPECT_EQ(main().line(id::kList1, 1), " b ");
  EXPECT_EQ(main().text(id::kFrame1), L"Quellcode (Tab=1)");
  EXPECT_TRUE(main().offers(Command::mnuFormat2));
  main().run(Command::mnuFormat2);
  EXPECT_EQ(main().line(id::kList1, 1), "b ");
  EXPECT_EQ(main().text(id::kFrame1), L"Quellcode (Tab=0)");
}

// -------------------------------------------------------------------------- exporting

class Overwriting : public SharedProgramTest {
 protected:
  // A result, a file that already exists, and the export up to the question about it.
  void SetUp() override {
    SharedProgramTest::SetUp();
    main().setChecked(id::kOptClass, true);
    main().setChecked(id::kCheck1, false);
    main().open(sampleModule());
    main().convert();
    target = newFile();
    folder().write(target.filename().wstring(), "was dort stand");
    expected = folder().convert(sampleModule(), L"");
  }

  std::wstring question() const {
    return L"Soll die Datei " + target.wstring() + L" überschrieben werden?";
  }

  fs::path target;
  std::string expected;
};

TEST_F(Overwriting, yes_replaces_the_file) {
  const Started exporting = main().press(id::kCmdExport);
  const FileDialogOf dialog(app());
  EXPECT_EQ(dialog.title(), L"HTML-Quellcode speichern");
  EXPECT_EQ(dialog.name(), L"Musterprojekt");
  dialog.accept(target.wstring());
  const MessageBoxOf box(app());
  EXPECT_EQ(box.text(), question());
  box.answer(IDYES);
  exporting.finish();
  EXPECT_TRUE(sameText(contentOf(target), expected));
}

TEST_F(Overwriting, no_asks_for_another_name) {
  const Started exporting = main().press(id::kCmdExport);
  FileDialogOf(app()).accept(target.wstring());
  MessageBoxOf(app()).answer(IDNO);
  const fs::path other = newFile();
  FileDialogOf(app()).accept(other.wstring());
  exporting.finish();
  EXPECT_EQ(contentOf(target), "was dort stand");
  EXPECT_TRUE(sameText(contentOf(other), expected));
  EXPECT_EQ(main().control(id::kExportPfad).text().ends_with(other.filename().wstring()), true);
}

TEST_F(Overwriting, cancel_behind_no_writes_nothing) {
  const Started exporting = main().press(id::kCmdExport);
  FileDialogOf(app()).accept(target.wstring());
  MessageBoxOf(app()).answer(IDNO);
  FileDialogOf(app()).cancel();
  exporting.finish();
  EXPECT_EQ(contentOf(target), "was dort stand");
  EXPECT_FALSE(MessageBoxOf::find(app()));
}

TEST_F(Overwriting, a_target_that_cannot_be_written_stays_whole_and_the_reason_is_told) {
  const HANDLE held =
      CreateFileW(target.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  const Started exporting = main().press(id::kCmdExport);
  FileDialogOf(app()).accept(target.wstring());
  MessageBoxOf(app()).answer(IDYES);
  const MessageBoxOf box(app());
  EXPECT_NE(box.text().find(target.filename().wstring()), std::wstring::npos) << "which file";
  EXPECT_GT(box.text().size(), target.wstring().size() + 10) << "and the reason";
  box.answer(IDOK);
  exporting.finish();
  CloseHandle(held);
  EXPECT_EQ(contentOf(target), "was dort stand");
}

TEST_F(Overwriting, the_chosen_filter_gives_the_extension) {
  const Started exporting = main().press(id::kCmdExport);
  const FileDialogOf dialog(app());
  dialog.chooseFilter(1);
  const fs::path typed = fs::path(target).replace_filename(L"Notiz.txt");
  dialog.accept(typed.wstring());
  exporting.finish();
  EXPECT_FALSE(exists(typed));
  EXPECT_TRUE(sameText(contentOf(fs::path(typed).replace_extension(L".html")), expected));
}

}  // namespace
}  // namespace tintline::test
