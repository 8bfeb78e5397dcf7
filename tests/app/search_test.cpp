// Finding text, lines and procedures, and whole projects documented. What the user sees by it is in
// tests/app/expected.
#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

constexpr std::string_view kModule =
    "Sub Eins()\r\nMsgBox \"\xC4pfel\"\r\nEnd Sub\r\nProperty Get Wert()\r\n  \xE4pfel = 1\r\n"
    "End Property\r\nFunction Zwei(): Eins: End Function";

class search : public ProgramTest {
 protected:
  void SetUp() override { begin(); }

  void ask(const char* what, Command command, const std::wstring& answer) {
    ports.dialogs.answerInput(answer);
    execute(what, command);
  }
  void type(const std::wstring& text) {
    app.prozeduren.txtFilter.Text = text;
    step("type " + toUtf8(text), app.prozeduren.txtFilter.Change);
  }
};

TEST_F(search, text_and_lines_are_found_in_either_list) {
  openFile("a.bas", kModule);
  ask("nothing to look for yet", Command::mnuWeitersuchen, L"\u00C4PFEL");
  execute("next", Command::mnuWeitersuchen);
  execute("next, from the top", Command::mnuWeitersuchen);
  execute("back, from the end", Command::mnuRueckwaerts);
  convert();
  form.ActiveControl = &form.List2;
  ask("in the HTML", Command::mnuSuchen, L"</span>");
  ask("line", Command::mnuGeheZu, L" 7 ");
  execute("back", Command::mnuRueckwaerts);
  ask("not there", Command::mnuSuchen, L"Birne");
  ports.dialogs.answerInput(L"8");
  ports.dialogs.expectMessage();
  execute("no line", Command::mnuGeheZu);
}

TEST_F(search, procedures_are_filtered_and_gone_to) {
  openFile("a.bas", kModule);
  select(form.List1, {4});
  proceduresWindow.whileModal = [&] {
    step("shown");
    type(L"W e");
    type(L"Birne");
    type(L"");
    step("down", [&] { app.prozeduren.move(2); });
    step("press", app.prozeduren.OKButton.Click);
  };
  execute("procedures", Command::mnuProzeduren);
  proceduresWindow.whileModal = [&] { step("press", app.prozeduren.CancelButton.Click); };
  execute("procedures", Command::mnuProzeduren);
}

TEST_F(search, projects_are_documented) {
  const auto source = ports.files.folder / "Projekt", target = ports.files.folder / "Ziel";
  std::filesystem::create_directory(source);
  const auto document = [&](const char* what, bool told = false) {
    ports.dialogs.answerFolder(source);
    ports.dialogs.answerFolder(target);
    if (told) ports.dialogs.expectMessage();
    execute(what, Command::mnuDokumentieren);
  };
  document("empty folder", true);
  writeText(source / "a.bas", kModule);
  writeText(source / "b.bas", "Sub Drei()\r\nEins\r\nEnd Sub");
  for (const int yield : {1, 5}) {  // while it is looked for modules, and while they are read
    ports.messageLoop.at(ports.messageLoop.yields + yield,
                         [&] { form.execute(Command::mnuAbbrechen); });
    document("Escape");
  }
  document("folder");
  EXPECT_TRUE(readFile(target / "Projekt-Dokumentation" / "index.htm").starts_with("<!DOCTYPE"));
}

}  // namespace
}  // namespace tintline::test
