// The exact mode in the main window, and code copied with its colours. What the user sees by it is
// in tests/app/expected.
#include "output/rendered_page.h"
#include "settings/modIniSave.h"
#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

constexpr std::string_view kModule =
    "Option Explicit\r\n"
    "Sub Gr\xC3\xB6\xC3\x9F"
    "e(ByVal x As Long)\r\n"
    "If x Then Debug.Print \"\xE6\x97\xA5\\\", x _\r\n"
    ", 2 ' <b>\r\n"
    "End Sub\r\n"
    "Sub Zwei()\r\n"
    "\tGr\xC3\xB6\xC3\x9F"
    "e 1\r\n"
    "End Sub";

class exact : public ProgramTest {
 protected:
  void SetUp() override { begin(); }

  void copyFormatted(const char* what, ListBox* focus) {
    form.ActiveControl = focus;
    execute(what, Command::mnuFormatiertKopieren);
  }
};

TEST_F(exact, mode_shows_the_decoded_text_and_its_page) {
  openFile("a.bas", kModule);
  select(form.List1, {1, 6});
  convert();
  execute("exact", Command::mnuGenau);
  execute("numbers", Command::mnuZeilennummern);
  select(form.List1, {2});
  select(form.List2, {6});
  execute("preview", Command::mnuVorschau);
  execute("preview", Command::mnuVorschau);
  exportAs("a.htm");
  EXPECT_EQ(readFile(ports.files.folder / "a.htm"), readFile(form.wBrowser.page()));
  execute("save colours", Command::mnuFarbenSpeichern);
  execute("indent", Command::mnuFormat);
  execute("convert what is read anew", Command::mnuMakro);
  select(form.List1, {2, 3, 6});
  execute("selection", Command::mnuAuswahl);
  select(form.List2, {1});
  step("click on a line's number", [&] { form.wBrowser.AnchorFollowed(L"3"); });
  step("click on a link", [&] { form.wBrowser.AnchorFollowed(L"Zwei"); });
  step("style", [&] { setStyle(); });
  execute("classic, which has as many lines", Command::mnuKlassisch);
  select(form.List1, {});
  execute("exact", Command::mnuGenau);
  execute("no selection", Command::mnuAuswahl);
  ports.clipboard.content = L"\tx = \u65E5\r\ny = 2";
  execute("paste", Command::mnuInsert);
  convert();
  EXPECT_NE(form.HTMLText.find("<title>a</title>"), std::string::npos);
}

TEST_F(exact, mode_is_that_of_the_last_time_and_reads_any_length) {
  Program next(transcript(), [](FakePorts& other) {
    modIniSave::IniWertSchreiben(other.files.program / "TINTLINE.ini", "Modus", "genau,");
  });
  next.start();
  std::string text;
  for (std::size_t i = 0; i <= kMaxLines; ++i) text += "x\r\n";
  next.openFile("lang.bas", text);
  next.convert();
  for (const Command command : {Command::mnuMakro, Command::mnuFormatiertKopieren}) {
    next.ports.messageLoop.at(next.ports.messageLoop.yields + 3,
                              [&next] { next.form.execute(Command::mnuAbbrechen); });
    next.execute("ended by the user", command);
  }
  next.execute("classic", Command::mnuKlassisch);
  next.convert();
}

TEST_F(exact, preview_is_dark_in_dark_windows_and_the_exported_page_like_any_browser) {
  openFile("a.bas", kModule);
  execute("exact", Command::mnuGenau);
  convert();
  for (const auto& [command, dark] : {std::pair{Command::mnuDunkel, true},
                                      {Command::mnuHell, false},
                                      {Command::mnuDunkel, true},
                                      {Command::mnuHelligkeitSystem, false}}) {
    execute("brightness", command);
    EXPECT_TRUE(form.isChecked(command));
    const RenderedPage page = renderPage(readFile(form.wBrowser.page()));
    EXPECT_EQ(page.ground, dark ? 0x1B1E24U : 0xFFFFFFU);
    EXPECT_EQ(page.ink, dark ? 0xE3E6EBU : 0x1C1E21U);
    EXPECT_NE(form.HTMLText.find("(prefers-color-scheme:dark)"), std::string::npos);
  }
}

TEST_F(exact, code_is_copied_with_its_colours) {
  openFile("a.bas", kModule);
  copyFormatted("everything", nullptr);
  select(form.List1, {0, 3});
  copyFormatted("selected lines", &form.List1);
  execute("exact", Command::mnuGenau);
  execute("numbers", Command::mnuZeilennummern);
  execute("selection", Command::mnuAuswahl);
  copyFormatted("what the preview shows", nullptr);
  select(form.List2, {1});
  copyFormatted("its source line", &form.List2);
  modIniSave::IniWertSchreiben(app.settingsFile, "PreCode", "\xC4,");
  execute("copy HTML", Command::mnuCopy);
  step("to Word", [&] { form.cmdWord.Click(); });
  form.ActiveControl = &form.List1;
  execute("copy source", Command::mnuCopy);
}

}  // namespace
}  // namespace tintline::test
