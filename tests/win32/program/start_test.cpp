// How the program starts and ends: splash, files beside it, several at once, in the middle of work.
#include "app/frmSplash/frmSplash.h"
#include "base/codepage.h"
#include "base/file.h"
#include "tests/win32/program/program_test.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

const fs::path kDefaults = "package/TINTLINE.ini";  // what is written at the first start

class program_start : public ProgramTest {};

TEST_F(program_start, splash_stays_for_two_seconds_and_shows_progress_after_the_first) {
  const auto started = Clock::now();
  app_.emplace(folder.program());
  const Window splash = app().windowOfClass(kSplashClass);
  EXPECT_FALSE(app().findClass(kMainClass)) << "the main window is there behind the start-up";
  splash.pressKey(VK_SPACE);  // closes nothing yet
  for (const int number : {id::kSplashLabel1, id::kSplashProgressBar})
    app().until([&] { return splash.control(number).visible(); }, "the progress");
  EXPECT_GE(Clock::now() - started, 800ms);
  waitForMain();
  EXPECT_GE(Clock::now() - started, 1800ms);
  EXPECT_EQ(main().window().text(), L"VB(A)-Code in HTML-Format umwandeln (Version 0.2 (Build 0))");
  EXPECT_EQ(folder.read(L"TINTLINE.ini"), readFile(kDefaults));
  EXPECT_NE(folder.read(L"dummy.html").find("In diesem Bereich wird der"), std::string::npos);
  EXPECT_FALSE(main().control(id::kCmdExport).enabled());
  EXPECT_FALSE(main().offers(Command::mnuSchluesselworte)) << "there is no vb.ini";
  EXPECT_EQ(main().close(), 0U);

  app_.emplace(folder.program());
  app().windowOfClass(kSplashClass).control(id::kSplashFrame1).click({10, 10});
  waitForMain();  // a click closes the splash
  EXPECT_EQ(main().close(), 0U);
}

TEST_F(program_start, two_run_side_by_side_each_with_its_file_own_words_and_settings) {
  const std::string words = "[Keywords 1]\r\nZeile\r\n[Keywords 2]\r\nText\r\n";
  folder.write(L"vb.ini", words);
  std::string settings = readFile(kDefaults);
  settings.replace(settings.find("#0000FF"), 7, "#123456");
  folder.write(L"TINTLINE.ini", settings);
  const fs::path module = folder.write(L"Größe Ω.bas", "Zeile = Text\r\n");
  const App other(folder.program());
  start(L"\"" + module.wstring() + L"\"");
  untilLines(id::kList1, 1);
  main().convert();
  EXPECT_EQ(line(id::kList2, 0),
            "<span class='Code'>Zeile</span> = <span class='Parms'>Text</span>  ");
  exportTo(folder / L"Größe.htm");
  EXPECT_NE(folder.read(L"Größe.htm").find("#123456"), std::string::npos);
  EXPECT_EQ(folder.read(L"Größe.htm"), page(module));
  EXPECT_TRUE(main().offers(Command::mnuSchluesselworte));
  EXPECT_EQ(main().close(), 0U);
  const MainWindow second(other);
  EXPECT_EQ(second.lineCount(id::kList1), 0U);
  EXPECT_EQ(second.close(), 0U);
  EXPECT_EQ(folder.read(L"TINTLINE.ini"), settings);
}

// Directories stand where the program wants to write its files.
TEST_F(program_start, a_folder_that_cannot_be_written_to_is_no_obstacle) {
  create_directory(folder / L"TINTLINE.ini");
  create_directory(folder / L"dummy.html");
  const fs::path own = fs::path(_wgetenv(L"APPDATA")) / L"TINTLINE" / L"TINTLINE.ini";
  const bool wasThere = exists(own);
  start();
  main().open(sampleModule());
  main().convert();
  EXPECT_GT(main().lineCount(id::kList2), 0U);
  EXPECT_FALSE(messageIsShown());
  EXPECT_TRUE(is_regular_file(own));
  main().run(Command::mnuInfo);
  EXPECT_EQ(app().windowOfClass(kSplashClass).control(id::kSplashEinstellungen).text(),
            L"Einstellungen: " + own.wstring());
  app_.reset();
  if (!wasThere) remove_all(own.parent_path());
}

TEST_F(program_start, closing_ends_it_also_while_it_reads_or_converts) {
  const fs::path module = folder.write(L"lang.bas", heavyModule());
  for (const bool converts : {false, true}) {
    start();
    if (converts) main().open(module);
    const Started work = converts ? main().press(id::kCmdMakro) : main().start(Command::mnudatei);
    if (converts)
      main().untilShown(id::kLabel10, L"Bearbeite Zeile: ");
    else
      FileDialogOf(app()).accept(module.wstring());
    EXPECT_EQ(main().close(), 0U);
  }
}

}  // namespace
}  // namespace tintline::test
