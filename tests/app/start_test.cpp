// The order of the start, what it does with the files beside the program, and the end.
#include <set>

#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

using start_up = ProgramTest;

TEST_F(start_up, shows_splash_then_label_then_main_window) {
  std::string seen;
  ports.clock.seconds = 100;
  ports.messageLoop.onYield = [&] {
    const frmSplash& splash = app.splash;
    const std::string now =
        std::string(splashWindow.open ? "splash" : "no splash") +
        (splash.Label1.Visible && splash.ProgressBar1.Visible ? " reading" : "") +
        (mainWindow.open ? " window" : "") + (ports.clock.seconds < 101 ? " in second 1" : "");
    if (now != seen) step(seen = now);
  };
  start();
  EXPECT_GE(ports.clock.seconds, 102);
}

TEST_F(start_up, ends_its_waits_when_the_timer_starts_again_at_midnight) {
  ports.clock.seconds = 86399.9F;
  ports.clock.onPause = [this] {
    if (ports.clock.seconds >= 86400) ports.clock.seconds -= 86400;
  };
  start();
}

TEST_F(start_up, is_left_at_once_when_the_named_object_existed) {
  step("a second start", [&] { EXPECT_FALSE(app.Main(183)); });
  EXPECT_EQ(ports.released, 1);
}

TEST_F(start_up, needs_no_placeholder) {
  for (const bool anywhere : {false, true}) {
    Program own(transcript(), [&](FakePorts& stand) {
      create_directories(stand.files.program / "dummy.html" / "in the way");
      if (anywhere) create_directories(stand.files.temporary / "dummy.html" / "in the way");
    });
    own.start();
  }
}

TEST_F(start_up, reads_the_keyword_lists) {
  const std::pair<const char*, int> files[] = {
      // and the messages that are expected
      {nullptr, 0},
      {"[Keywords 1]\r\nFoo\r\nDim\r\n[Keywords 2]\r\nBar\r\n", 0},
      {"", 1},
      {"[Keywords 1]\r\nFoo\r\n", 1}};
  for (const auto& [text, messages] : files) {
    Program own(transcript());
    if (text != nullptr) writeText(own.ports.files.program / "vb.ini", text);
    if (messages > 0) own.ports.dialogs.expectMessage();
    own.start();
    own.openFile("x.bas", "Dim Foo\r\n");
    own.execute("convert", Command::mnuMakro);
    own.execute("show the lists", Command::mnuSchluesselworte);
  }
}

TEST_F(start_up, settings_go_where_they_can_be_written_and_the_about_display_tells_where) {
  // In the program's folder and in the user's: nothing, a file, a folder in its way, no folder.
  for (const std::string_view there : {"  ", "ff", "d ", "df", "dd", "d-"}) {
    Program own(transcript(), [&](FakePorts& stand) {
      for (const bool ofUser : {false, true}) {
        std::filesystem::path& folder = ofUser ? stand.files.user : stand.files.program;
        const std::filesystem::path file = folder / "TINTLINE.ini";
        if (there[ofUser] != ' ') create_directories(there[ofUser] == 'd' ? file : folder);
        if (there[ofUser] == 'f') writeText(file, "was there");
        if (there[ofUser] == '-') folder.clear();
      }
    });
    own.start();
    own.execute("about", Command::mnuInfo);
    own.prePostWindow.whileModal = [&] {
      own.app.prePostCode.txtPreCode.Text = L"<pre>";
      own.app.prePostCode.OKButton.Click();
    };
    own.execute("codes", Command::mnuPrePost);
    own.app.colors[kStrings][kTextColor] = "#123456";
    own.execute("save colours", Command::mnuFarbenSpeichern);
  }
}

TEST_F(start_up, about_display_closes_as_its_flag_allows) {
  const frmSplash& splash = app.splash;
  EXPECT_EQ(splash.lblProductName.Caption(), L"Produkt");
  for (const bool about : {false, true})
    for (void (frmSplash::*event)() :
         {&frmSplash::Form_KeyPress, &frmSplash::Form_MouseUp, &frmSplash::Frame1_Click}) {
      app.splash.Show();
      EXPECT_EQ(splash.lblProductName.Caption(), L"TINTLINE");
      app.splash.lblProductName.Caption = L"Neu";
      app.splash.Show();
      EXPECT_EQ(splash.lblProductName.Caption(), L"Neu") << "is loaded once";
      app.splash.Check1 = about;
      (app.splash.*event)();
      EXPECT_EQ(splashWindow.open, !about && event != &frmSplash::Frame1_Click);
      app.splash.Unload();
    }
  start();
  execute("about", Command::mnuInfo);
  EXPECT_FALSE(splash.Label1.Visible || splash.lblVersion.Enabled);
  EXPECT_TRUE(splash.Label3.Enabled && splash.Check1);
  step("help", [&] {
    form.execute(Command::mnuhelp);
    form.KontexthilfeZeigen();
  });
  execute("quit in the menu", Command::mnubeenden);
  EXPECT_GE(ports.released, 1);
  EXPECT_GE(ports.shell.helpClosed, 1);
}

TEST(transcripts, every_recorded_one_has_its_test) {
  std::set<std::string> names;
  const testing::UnitTest& all = *testing::UnitTest::GetInstance();
  for (int i = 0; i < all.total_test_suite_count(); ++i)
    for (int j = 0; j < all.GetTestSuite(i)->total_test_count(); ++j)
      names.insert(std::string(all.GetTestSuite(i)->name()) + "." +
                   all.GetTestSuite(i)->GetTestInfo(j)->name() + ".txt");
  for (const auto& file : std::filesystem::directory_iterator("tests/app/expected"))
    EXPECT_TRUE(names.contains(file.path().filename().string())) << file.path();
}

}  // namespace
}  // namespace tintline::test
