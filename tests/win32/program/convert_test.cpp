// Journeys through the running program: from a file to a page, from lines to the clipboard, through
// the dialogs, and out of a long run.
#include <windows.h>
#include <commctrl.h>
#include <richedit.h>
#include <shlobj.h>

#include <fstream>

#include "base/file.h"
#include "tests/win32/program/program_test.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;
using program = ProgramTest;

struct Setting {
  const wchar_t* file;  // also with letters that are not in the code page
  bool inlineStyle, numbers;
  int format, format2;     // how often the indentation is widened and narrowed
  int width;               // that lines are wrapped to, 0: not wrapped
  const wchar_t* options;  // for the same on the command line
};

const Setting kSettings[] = {
    {L"Größe ß.bas", false, false, 0, 0, 0, L""},
    {L"Привет мир.bas", false, true, 3, 1, 0, L"--indent 2 -n"},
    {L"Umbruch.bas", true, false, 2, 0, 60, L"--style inline --indent 2 --wrap 60"},
};

// Every value on its way through window, engine and dialogs: what the command line makes of the
// same file is the measure.
TEST_F(program, opens_converts_and_exports) {
  start();
  const std::string sample = readFile(sampleModule());
  for (const Setting& row : kSettings) {
    SCOPED_TRACE(&row - kSettings);
    const fs::path module = folder.write(row.file, sample);
    main().setChecked(row.inlineStyle ? id::kOptStyle : id::kOptClass, true);
    main().setChecked(id::kCheck1, row.numbers);
    main().open(module);
    EXPECT_EQ(tree(), (std::vector<std::wstring>{L"gel. Datei", L"  " + std::wstring(row.file)}));
    EXPECT_EQ(main().text(id::kCmdMakro), L"Datei");
    for (int i = 0; i < row.format; ++i) main().run(Command::mnuFormat);
    for (int i = 0; i < row.format2; ++i) main().run(Command::mnuFormat2);
    if (row.width != 0) {
      const Opened width = open(Command::mnuZeilenbreite, kInputClass);
      width.window.control(id::kInputText).setText(std::to_wstring(row.width));
      width.window.pressKey(VK_RETURN);
      width.command.finish();
      main().run(Command::mnuUmbruch);
    }
    main().convert();
    const fs::path target = fs::path(module).replace_extension(L".htm");
    exportTo(target);
    untilOpened(target);
    EXPECT_EQ(readFile(target), page(module, row.options));
    for (int i = row.format2; i < row.format; ++i) main().run(Command::mnuFormat2);
  }
}

// What happens to a file that is there already.
TEST_F(program, export_asks_before_it_writes_over_a_file) {
  start();
  const fs::path module = folder.write(L"Kasse.bas", readFile(sampleModule()));
  main().open(module);
  main().convert();
  const fs::path target = folder.write(L"Seite.htm", "was dort stand"),
                 other = folder / L"Neu.html";

  Started exporting = main().press(id::kCmdExport);
  FileDialogOf(app()).accept(target.wstring());
  EXPECT_EQ(answer(IDNO), L"Soll die Datei " + target.wstring() + L" überschrieben werden?");
  const Window dialog = FileDialogOf(app()).window();  // asks for another name
  constexpr int kFilter = 0x470;
  dialog.control(kFilter).send(CB_SETCURSEL, 1);
  for (const int code : {CBN_SELENDOK, CBN_SELCHANGE})  // as after a choice by mouse or key
    dialog.send(WM_COMMAND, MAKEWPARAM(kFilter, code),
                reinterpret_cast<LPARAM>(dialog.control(kFilter).handle()));
  FileDialogOf(app()).accept((folder / L"Neu.txt").wstring());  // the filter gives the extension
  exporting.finish();
  EXPECT_FALSE(folder.has(L"Neu.txt"));
  EXPECT_EQ(readFile(other), page(module));
  EXPECT_EQ(readFile(target), "was dort stand");

  Started replacing = main().press(id::kCmdExport);
  FileDialogOf(app()).accept(target.wstring());
  answer(IDYES);
  replacing.finish();
  EXPECT_EQ(readFile(target), page(module));

  main().open(folder.write(L"Neu.bas", "x\r\n"));
  main().convert();
  const std::ifstream reader(target);  // as another program that has it open
  Started failing = main().press(id::kCmdExport);
  FileDialogOf(app()).accept(target.wstring());
  answer(IDYES);
  EXPECT_NE(answer().find(L"Zugriff verweigert"), std::wstring::npos);
  failing.finish();
  EXPECT_EQ(readFile(target), page(module));
}

// The parts of the window and what divides them, with neither mouse nor menu.
TEST_F(program, is_arranged_by_keys) {
  start();
  const auto focusOn = [&](int pane) {
    app().until([&] { return main().window().focusedId() == pane; }, "the keyboard comes");
  };
  const auto width = [&] {
    RECT place{};
    GetWindowRect(main().control(id::kTreeView1).handle(), &place);
    return place.right - place.left;
  };
  focusOn(id::kTreeView1);
  for (const int pane : {id::kList1, id::kList2, id::kTreeView1}) {
    main().window().pressKey(VK_F6, {VK_CONTROL});
    focusOn(pane);
  }
  main().window().pressKey(VK_F6, {VK_CONTROL, VK_SHIFT});
  focusOn(id::kList2);
  const LONG before = width();
  main().window().pressKey(VK_RIGHT, {VK_MENU, VK_SHIFT});
  app().until([&] { return width() > before; }, "the tree gets wider");
  main().window().pressKey(VK_LEFT, {VK_MENU, VK_SHIFT});
  app().until([&] { return width() <= before; }, "the tree gets narrower");
}

TEST_F(program, selects_copies_and_pastes) {
  start();
  main().setChecked(id::kCheck1, true);
  main().open(sampleModule());
  clickLine(id::kList1, 36);
  clickLine(id::kList1, 43, MK_SHIFT);
  clickLine(id::kList1, 47, MK_CONTROL);
  main().pressAndWait(id::kCmdAuswahl);
  EXPECT_EQ(main().lineCount(id::kList2), 9U);
  exportTo(folder / L"Auswahl.htm");
  EXPECT_EQ(folder.read(L"Auswahl.htm"), page(sampleModule(), L"-n --lines 37-44,48"));

  main().setChecked(id::kCheck1, false);
  main().open(folder.write(L"k.bas", "eins\r\nzwei \xE4\r\ndrei\r\n"));
  clickLine(id::kList1, 1);
  clickLine(id::kList1, 2, MK_SHIFT);
  main().run(Command::mnuCopy);
  EXPECT_EQ(clipboardText(), "\r\nzwei \xE4 \r\ndrei ");
  main().convert();
  clickLine(id::kList2, 1);
  main().pressAndWait(id::kCmdHTMClp);
  EXPECT_NE(clipboardText().value_or("").find("zwei"), std::string::npos);

  setClipboardText(L"Sub Zwei()\r\n\tEins\r\nEnd Sub Größe");
  main().run(Command::mnuInsert);
  EXPECT_EQ(main().lineCount(id::kList1), 6U);
  EXPECT_EQ(line(id::kList1, 5), "End Sub Gr\xF6\xDF\x65 ");
}

// The list's commands have the same keys as the preview's own.
TEST_F(program, what_was_copied_from_the_preview_outlives_the_program) {
  start();
  main().open(folder.write(L"vorschau.bas", "Sub A()\r\nEnd Sub\r\n"));
  main().setChecked(id::kCheck2, true);
  main().convert();
  const HWND pane = main().control(id::kBrowser).handle();
  const auto shown = [pane] { return Window(GetWindow(pane, GW_CHILD)); };
  app().until(
      [&] { return shown().exists() && shown().text().find(L"End Sub") != std::wstring::npos; },
      "the page");
  if (lstrcmpiW(shown().className().c_str(), MSFTEDIT_CLASS) != 0)
    GTEST_SKIP() << "a browser shows the page";
  shown().click({5, 5});
  main().window().pressKey('A', {VK_CONTROL});
  app().until([&] { return HIWORD(shown().send(EM_GETSEL)) > 15; }, "the selection of the page");
  EXPECT_EQ(main().control(id::kList1).send(LB_GETSELCOUNT), 0);
  setClipboardText(L"");
  main().window().pressKey('C', {VK_CONTROL});
  // Whoever looks into the clipboard keeps others from writing to it.
  app().until([] { return IsClipboardFormatAvailable(CF_TEXT) != FALSE; }, "the copy of the page");
  EXPECT_EQ(main().close(), 0U);
  EXPECT_NE(clipboardText().value_or("").find("End Sub"), std::string::npos);
}

TEST_F(program, takes_keys_and_dropped_files) {
  start();
  main().window().pressKey('O', {VK_CONTROL});
  FileDialogOf(app()).accept(folder.write(L"tasten.bas", "If a Then\r\nb\r\n").wstring());
  untilLines(id::kList1, 2);
  clickLine(id::kList1, 1);
  main().window().pressKey(VK_F7);
  untilLines(id::kList2, 1);
  main().window().pressKey('A', {VK_CONTROL});
  main().window().pressKey(VK_F7);
  untilLines(id::kList2, 2);

  // As the shell hands over what is dropped: a header, then the names.
  const std::wstring name = folder.write(L"gezogen Ω.bas", "a\r\nb\r\nc\r\n").wstring() + L'\0';
  struct {
    DROPFILES header;
    wchar_t names[MAX_PATH];
  } dropped{{sizeof(DROPFILES), {}, FALSE, TRUE}, {}};
  name.copy(dropped.names, MAX_PATH - 1);
  const ForeignMemory memory(app(), sizeof dropped);
  memory.write(&dropped, sizeof dropped);
  main().window().post(WM_DROPFILES, static_cast<WPARAM>(memory.argument()));
  untilLines(id::kList1, 3);
}

TEST_F(program, dialogs_keep_what_was_confirmed) {
  start();
  const std::string before = folder.read(L"TINTLINE.ini");
  const auto preCode = [this](const std::wstring& text, int button) {
    const Opened dialog = open(Command::mnuPrePost, kPrePostClass);
    const std::wstring shown = dialog.window.control(id::kTxtPreCode).text();
    dialog.window.control(id::kTxtPreCode).setText(text);
    leave(dialog, button);
    dialog.command.finish();
    return shown;
  };
  EXPECT_EQ(preCode(L"verworfen", id::kCancel), L"");
  EXPECT_EQ(folder.read(L"TINTLINE.ini"), before);
  EXPECT_EQ(preCode(L"<div class=\"ä\">", id::kOk), L"");
  EXPECT_NE(folder.read(L"TINTLINE.ini").find("PreCode=<div class=\"\xE4\">,\r\n"),
            std::string::npos);
  EXPECT_EQ(preCode(L"", id::kOk), L"<div class=\"ä\">");

  const Opened width = open(Command::mnuZeilenbreite, kInputClass);
  width.window.pressKey(VK_ESCAPE);
  width.command.finish();
  const Opened colors = open(Command::mnuFarben, kColorsClass);
  EXPECT_EQ(colors.window.control(id::kCboKategorie).send(CB_GETCOUNT), 5);
  colors.window.control(id::kTxtFarbe).setText(L"#102030");
  leave(colors, id::kOk);
  colors.command.finish();
  EXPECT_NE(folder.read(L"TINTLINE.ini").find("ColProz=,#102030,#DFDFDF,3153936,14671839,0,"),
            std::string::npos);
  main().open(sampleModule());
  const Opened procedures = open(Command::mnuProzeduren, kProceduresClass);
  procedures.window.control(id::kTxtFilter).setText(L"demo");
  EXPECT_EQ(procedures.window.control(id::kLstProzeduren).send(LB_GETCOUNT), 1);
  leave(procedures, id::kOk);
  procedures.command.finish();
  EXPECT_EQ(
      line(id::kList1, static_cast<std::size_t>(main().control(id::kList1).send(LB_GETCARETINDEX))),
      "Public Sub Demo() ");
  main().convert();
  exportTo(folder / L"bunt.htm");
  EXPECT_EQ(folder.read(L"bunt.htm"), page(sampleModule()));

  main().run(Command::mnuInfo);
  const Window about = app().windowOfClass(kSplashClass);
  EXPECT_EQ(about.control(id::kSplashVersion).text(), L"Version 0.2 (Build 0)");
  about.pressKey(VK_SPACE);
  app().untilGone(about);
}

TEST_F(program, a_long_run_is_left_alone_until_escape_ends_it) {
  start();
  main().open(folder.write(L"lang.bas", heavyModule()));
  const Window nodes = main().control(id::kTreeView1);
  const auto selected = [&nodes] { return nodes.send(TVM_GETNEXTITEM, TVGN_CARET); };
  const LRESULT before = selected();
  const Started converting = main().press(id::kCmdMakro);
  main().untilShown(id::kLabel10, L"Bearbeite Zeile: ");
  EXPECT_FALSE(main().offers(Command::mnudatei)) << "no command starts within another";
  nodes.click(placeOfTreeNode(app(), nodes, 0));
  nodes.send(WM_NULL);
  EXPECT_FALSE(converting.done());
  main().window().pressKey(VK_ESCAPE);
  converting.finish();
  EXPECT_EQ(selected(), before);
  EXPECT_LT(main().lineCount(id::kList2), 30000U);
  EXPECT_EQ(main().text(id::kLabel9).find(L"s verarbeitet"), std::wstring::npos);
  main().open(sampleModule());
  main().convert();
  EXPECT_EQ(main().lineCount(id::kList2), main().lineCount(id::kList1)) << "a run after it";
}

}  // namespace
}  // namespace tintline::test
