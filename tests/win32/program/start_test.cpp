// How the program starts and ends: splash, files beside the program, several at once.
#include <gtest/gtest.h>

#include "app/frmSplash/frmSplash.h"
#include "base/codepage.h"
#include "tests/support/default_settings.h"
#include "tests/win32/program/program_test.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kOwnWords = "[Keywords 1]\r\nZeile\r\n[Keywords 2]\r\nText\r\n";

double secondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(start, splash_stays_for_two_seconds_and_shows_progress_after_the_first) {
  const ProgramFolder folder;
  const App app(folder.program());
  const Window splash = app.windowOfClass(kSplashClass);
  const auto shown = std::chrono::steady_clock::now();
  const Window label = splash.control(id::kSplashLabel1);
  const Window progress = splash.control(id::kSplashProgressBar);
  EXPECT_FALSE(label.visible());
  EXPECT_FALSE(progress.visible());
  EXPECT_EQ(label.text(), L"Schlüsselworte werden eingelesen...");
  EXPECT_EQ(splash.control(id::kSplashVersion).text(), L"Version 0.1 (Build 0)");
  EXPECT_FALSE(app.findClass(kMainClass)) << "the main window is there behind the start-up";

  app.until([&] { return label.visible() && progress.visible(); }, "label and progress bar");
  // The splash may have been there for a moment before it was seen.
  EXPECT_GE(secondsSince(shown), 0.8);
  const MainWindow main(app);
  EXPECT_GE(secondsSince(shown), 1.8);
  EXPECT_LE(secondsSince(shown), 10);
  EXPECT_EQ(main.window().text(), L"VB(A)-Code in HTML-Format umwandeln (Version 0.1 (Build 0))");
  EXPECT_EQ(main.close(), 0U);
}

TEST(start, keys_do_not_close_the_splash_and_a_click_on_its_frame_does) {
  const ProgramFolder folder;
  const App app(folder.program());
  const Window splash = app.windowOfClass(kSplashClass);
  splash.pressKey(VK_SPACE);
  splash.click({2, 2});
  splash.send(WM_NULL);
  app.until([&] { return splash.control(id::kSplashLabel1).visible(); }, "the first second");
  EXPECT_TRUE(splash.visible());
  splash.control(id::kSplashFrame1).click({10, 10});
  app.untilGone(splash);
  const MainWindow main(app);
  EXPECT_EQ(main.close(), 0U);
}

TEST(start, first_start_writes_settings_and_an_empty_page) {
  const ProgramFolder folder;
  const RunningProgram program(folder);
  EXPECT_EQ(folder.read(L"TINTLINE.ini"), kDefaultSettings);
  EXPECT_NE(folder.read(L"dummy.html")
                .find("In diesem Bereich wird der<span class='Parms'> VB(A)-Code</span> "
                      "angezeigt."),
            std::string::npos);
  EXPECT_EQ(program.main.lineCount(id::kList1), 0U);
  EXPECT_EQ(program.main.lineCount(id::kList2), 0U);
  for (const int button : {id::kCmdModul, id::kCmdMakro, id::kCmdAuswahl, id::kCmdExport})
    EXPECT_FALSE(program.main.control(button).enabled()) << button;
  EXPECT_FALSE(program.main.offers(Command::cmdVBAClp));
  EXPECT_FALSE(program.main.offers(Command::mnuSchluesselworte)) << "there is no vb.ini";
}

TEST(start, two_programs_run_side_by_side) {
  const ProgramFolder folder;
  const App first(folder.program()), second(folder.program());
  const MainWindow one(first), other(second);
  one.open(sampleModule());
  EXPECT_GT(one.lineCount(id::kList1), 0U);
  EXPECT_EQ(other.lineCount(id::kList1), 0U);
  EXPECT_EQ(one.close(), 0U);
  EXPECT_TRUE(second.running());
  EXPECT_EQ(other.close(), 0U);
}

TEST(start, a_file_named_on_the_command_line_is_opened) {
  const ProgramFolder folder;
  const fs::path module = folder.write(L"Größe Ω.bas", "Sub A()\r\nEnd Sub\r\n");
  const App app(folder.program(), L"\"" + module.wstring() + L"\"");
  const MainWindow main(app);
  app.until([&] { return main.lineCount(id::kList1) == 2; }, "the lines of the file");
  EXPECT_EQ(main.text(id::kCmdMakro), L"Datei");
}

TEST(start, own_keywords_and_settings_are_used) {
  const ProgramFolder folder(L"Übungen für Grüße");
  folder.write(L"vb.ini", kOwnWords);
  std::string settings(kDefaultSettings);
  settings.replace(settings.find("#0000FF"), 7, "#123456");
  folder.write(L"TINTLINE.ini", settings);
  const fs::path module = folder.write(L"Größe.bas", "Zeile = Text\r\n");

  const RunningProgram program(folder);
  program.main.open(module);
  program.main.convert();
  EXPECT_EQ(program.main.lines(id::kList2),
            std::vector<std::string>{"<span class='Code'>Zeile</span> = "
                                     "<span class='Parms'>Text</span>  "});
  program.main.exportTo(folder / L"Größe.htm");
  const std::string page = folder.read(L"Größe.htm");
  EXPECT_NE(page.find("#123456"), std::string::npos);
  EXPECT_EQ(page, folder.convert(module, L""));
  EXPECT_TRUE(program.main.offers(Command::mnuSchluesselworte));
  EXPECT_EQ(folder.read(L"TINTLINE.ini"), settings);
}

struct ControlFileCase {
  const char* name;
  std::string_view content;
  std::wstring_view title, text;  // of the message
  bool icon;
};

void PrintTo(const ControlFileCase& row, std::ostream* out) { *out << row.name; }

constexpr std::wstring_view kNoWords =
    L"Die Steuerdatei mit den Schlüsselworten\r\nwurde nicht gefunden!\r\n"
    L"Bitte ins aktuelle Verzeichnis kopieren.";

const ControlFileCase kControlFiles[] = {
    {"an_empty_file", "", L"Fehler! Datei fehlt.", kNoWords, true},
    {"a_damaged_file",
     {"\0\xFF[Keyw\x1A\0ords 1]\n\0", 19},
     L"Fehler! Datei fehlt.",
     kNoWords,
     true},
    {"no_second_section", "[Keywords 1]\r\nZeile\r\n", L"TINTLINE", L"Nichts gefunden", false},
};

std::wstring withoutReturns(std::wstring text) {
  std::erase(text, L'\r');
  return text;
}

class ControlFile : public testing::TestWithParam<ControlFileCase> {};

TEST_P(ControlFile, is_complained_about_and_the_program_goes_on) {
  const ControlFileCase& row = GetParam();
  const ProgramFolder folder;
  folder.write(L"vb.ini", row.content);
  const App app(folder.program());
  const MessageBoxOf box(app);
  EXPECT_EQ(box.title(), row.title);
  EXPECT_EQ(withoutReturns(box.text()), withoutReturns(std::wstring(row.text)));
  EXPECT_EQ(box.hasIcon(), row.icon);
  box.answer(IDOK);
  const MainWindow main(app);
  EXPECT_TRUE(main.offers(Command::mnuSchluesselworte));
  main.open(folder.write(L"a.bas", "Zeile = Dim\r\n"));
  main.convert();
  EXPECT_EQ(main.line(id::kList2, 0),
            row.icon ? "Zeile = Dim  " : "<span class='Code'>Zeile</span> = Dim  ");
}

INSTANTIATE_TEST_SUITE_P(start, ControlFile, testing::ValuesIn(kControlFiles),
                         [](const auto& row) { return row.param.name; });

// Where settings go that cannot be written beside the program. What the test makes there
// is gone afterwards; a file that was there before stays.
class UserSettings {
 public:
  ~UserSettings() {
    std::error_code none;
    if (!wasThere_ && remove(file, none)) remove(file.parent_path(), none);
  }

  const fs::path file = fs::path(_wgetenv(L"APPDATA")) / L"TINTLINE" / L"TINTLINE.ini";

 private:
  bool wasThere_ = exists(file);
};

// Directories stand where the program wants to write its files.
TEST(start, a_folder_that_cannot_be_written_to_is_no_obstacle) {
  const ProgramFolder folder;
  const UserSettings own;
  create_directory(folder / L"TINTLINE.ini");
  create_directory(folder / L"dummy.html");
  const RunningProgram program(folder);
  program.main.open(sampleModule());
  program.main.convert();
  EXPECT_GT(program.main.lineCount(id::kList2), 0U);
  EXPECT_FALSE(MessageBoxOf::find(program.app));
  EXPECT_TRUE(is_regular_file(own.file));
  program.main.run(Command::mnuInfo);
  const Window about = program.app.windowOfClass(kSplashClass);
  EXPECT_EQ(about.control(id::kSplashEinstellungen).text(),
            L"Einstellungen: " + own.file.wstring());
  about.pressKey(VK_SPACE);
  program.app.untilGone(about);
  EXPECT_EQ(program.main.close(), 0U);
  EXPECT_TRUE(is_directory(folder / L"TINTLINE.ini"));
}

TEST(start, closing_during_a_run_ends_the_program) {
  const ProgramFolder folder;
  const RunningProgram program(folder);
  program.main.open(folder.write(L"lang.bas", heavyModule()));
  const Started converting = program.main.press(id::kCmdMakro);
  program.main.untilShown(id::kLabel10, L"Bearbeite Zeile: ");
  EXPECT_EQ(program.main.close(), 0U);
}

TEST(start, closing_while_a_file_is_read_ends_the_program) {
  const ProgramFolder folder;
  const RunningProgram program(folder);
  const fs::path module = folder.write(L"lang.bas", heavyModule());
  const Started opening = program.main.start(Command::mnudatei);
  FileDialogOf(program.app).accept(module.wstring());
  EXPECT_EQ(program.main.close(), 0U);
}

}  // namespace
}  // namespace tintline::test
