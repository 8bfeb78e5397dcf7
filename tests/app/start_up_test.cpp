// The order of the start, and what it does with the files beside the program.
#include <string>
#include <vector>

#include "tests/app/program_fixture.h"

namespace tintline::test {
namespace {

class start_up : public ProgramTest {};

TEST_F(start_up, shows_splash_then_label_then_main_window) {
  std::vector<std::string> seen;
  const auto note = [&seen](std::string what) {
    if (seen.empty() || seen.back() != what) seen.push_back(std::move(what));
  };
  ports.clock.seconds = 100;
  ports.messageLoop.onYield = [&] {
    const frmSplash& splash = app.splash;
    note(std::string(splashWindow.open ? "splash" : "no splash") +
         (splash.Label1.Visible && splash.ProgressBar1.Visible ? ", reading" : "") +
         (mainWindow.open ? ", window" : "") + (ports.clock.seconds < 101 ? " in second 1" : ""));
  };
  start();
  EXPECT_EQ(seen, (std::vector<std::string>{"splash in second 1", "splash, reading"}));
  EXPECT_GE(ports.clock.seconds, 102);
  EXPECT_FALSE(splashWindow.open);
  EXPECT_TRUE(mainWindow.open);
}

TEST_F(start_up, ends_its_waits_when_the_timer_starts_again_at_midnight) {
  ports.clock.seconds = 86399.9F;
  ports.clock.onPause = [this] {
    if (ports.clock.seconds >= 86400) ports.clock.seconds -= 86400;
  };
  start();
  EXPECT_TRUE(mainWindow.open);
}

TEST_F(start_up, leaves_an_empty_window_with_a_placeholder_page) {
  start();
  EXPECT_EQ(form.Caption(), L"VB(A)-Code in HTML-Format umwandeln (" + versionText() + L")");
  EXPECT_NE(scratchPage().find("In diesem Bereich wird der"), std::string::npos);
  EXPECT_EQ(form.wBrowser.page(), ports.files.program / "dummy.html");
  EXPECT_FALSE(form.wBrowser.Visible);
  EXPECT_FALSE(form.Check2.Value);
  EXPECT_TRUE(form.optClass.Value);
  for (const CommandButton* button : {&form.cmdModul, &form.cmdMakro, &form.cmdAuswahl,
                                      &form.cmdVBAClp, &form.cmdHTMClp, &form.cmdExport})
    EXPECT_FALSE(button->Enabled) << toUtf8(button->Caption());
  for (const Command command :
       {Command::cmdExport, Command::mnuCopy, Command::cmdVBAClp, Command::mnuFormat,
        Command::mnuFormat2, Command::mnuUmbruch, Command::mnuSchluesselworte})
    EXPECT_FALSE(form.isEnabled(command)) << static_cast<int>(command);
  EXPECT_TRUE(std::filesystem::exists(app.settingsFile)) << "default colours are saved";
}

TEST_F(start_up, writes_the_placeholder_where_it_may) {
  std::filesystem::create_directories(ports.files.program / "dummy.html" / "in the way");
  start();
  EXPECT_EQ(form.wBrowser.page(), ports.files.temporary / "dummy.html");
  EXPECT_TRUE(std::filesystem::exists(form.wBrowser.page()));
}

TEST_F(start_up, needs_no_placeholder) {
  for (const auto& folder : {ports.files.program, ports.files.temporary})
    std::filesystem::create_directories(folder / "dummy.html" / "in the way");
  start();
  EXPECT_TRUE(form.isEnabled(Command::mnudatei));
}

struct ControlFile {
  const char* name;
  const char* text;                 // null: there is no such file
  std::vector<std::wstring> boxes;  // what is told, in order
  const char* code;                 // how "Dim" comes out
};

TEST_F(start_up, reads_the_keyword_lists) {
  const std::wstring missing =
      L"Die Steuerdatei mit den Schlüsselworten\r\nwurde nicht gefunden!\r\n"
      L"Bitte ins aktuelle Verzeichnis kopieren.";
  const ControlFile cases[] = {
      {"no file: the built-in lists", nullptr, {}, "<span class='Code'>Dim</span> "},
      {"both sections",
       "[Keywords 1]\r\nFoo\r\nDim\r\n[Keywords 2]\r\nBar\r\n",
       {},
       "<span class='Code'>Dim</span> "},
      {"an empty file", "", {missing}, "Dim "},
      {"no second section", "[Keywords 1]\r\nFoo\r\n", {L"Nichts gefunden"}, "Dim "},
  };
  for (const ControlFile& c : cases) {
    SCOPED_TRACE(c.name);
    FakePorts own;
    Application program(own.ports());
    FakeWindow window;
    program.splash.makeView = program.mainWindow.makeView = window.maker();
    if (c.text != nullptr) writeText(own.files.program / "vb.ini", c.text);
    for (std::size_t box = 0; box < c.boxes.size(); ++box) own.dialogs.expectMessage();
    program.Main(0);
    for (std::size_t box = 0; box < own.dialogs.asked.size(); ++box)
      EXPECT_EQ(own.dialogs.asked[box].text, c.boxes[box]);
    EXPECT_EQ(program.mainWindow.isEnabled(Command::mnuSchluesselworte), c.text != nullptr);
    writeText(own.files.folder / "x.bas", "Dim\r\n");
    program.mainWindow.fileDropped(own.files.folder / "x.bas");
    program.mainWindow.execute(Command::mnuMakro);
    ASSERT_EQ(program.mainWindow.List2.ListCount(), 1U);
    EXPECT_EQ(std::string(program.mainWindow.List2.lines()[0]), std::string(c.code) + " ");
  }
}

TEST_F(start_up, is_left_at_once_when_the_named_object_existed) {
  EXPECT_FALSE(app.Main(183));
  EXPECT_EQ(ports.released, 1);
  EXPECT_EQ(mainWindow.views + splashWindow.views, 0);
}

TEST_F(start_up, settings_go_where_they_can_be_written_and_the_about_display_tells_where) {
  for (const bool inTheWay : {false, true}) {
    FakePorts own;
    const std::filesystem::path beside = own.files.program / "TINTLINE.ini";
    if (inTheWay) std::filesystem::create_directory(beside);
    const std::filesystem::path file = inTheWay ? own.files.user / "TINTLINE.ini" : beside;
    Application program(own.ports());
    FakeWindow window, prePost, colorDialog;
    program.splash.makeView = program.mainWindow.makeView = window.maker();
    program.prePostCode.makeView = prePost.maker();
    program.farbeinstellung.makeView = colorDialog.maker();
    program.Main(0);
    EXPECT_EQ(program.splash.lblEinstellungen.Caption(), L"") << "while starting";
    EXPECT_TRUE(std::filesystem::is_regular_file(file));
    EXPECT_EQ(std::filesystem::exists(own.files.user), inTheWay);

    program.mainWindow.execute(Command::mnuInfo);
    EXPECT_EQ(program.splash.lblEinstellungen.Caption(), L"Einstellungen: " + pathText(file));

    prePost.whileModal = [&] {
      program.prePostCode.txtPreCode.Text = L"<pre>";
      program.prePostCode.OKButton.Click();
    };
    program.mainWindow.execute(Command::mnuPrePost);
    colorDialog.whileModal = [&] {
      program.farbeinstellung.txtFarbe.Text = L"#123456";
      program.farbeinstellung.txtFarbe.Change();
      program.farbeinstellung.cmdSpeichern.Click();
    };
    program.mainWindow.execute(Command::mnuFarben);
    const std::string saved = readFile(file);
    EXPECT_NE(saved.find("PreCode=<pre>,"), std::string::npos) << saved;
    EXPECT_NE(saved.find("ColProz=,#123456,"), std::string::npos) << saved;
    EXPECT_EQ(std::filesystem::is_directory(beside), inTheWay);
  }
}

TEST_F(start_up, about_display_closes_on_a_key_or_a_click) {
  start();
  for (const bool key : {true, false}) {
    form.execute(Command::mnuInfo);
    EXPECT_TRUE(splashWindow.open);
    EXPECT_FALSE(app.splash.Label1.Visible);
    EXPECT_FALSE(app.splash.lblVersion.Enabled);
    EXPECT_TRUE(app.splash.Label3.Enabled);
    if (key)
      app.splash.Form_KeyPress();
    else
      app.splash.Form_MouseUp();
    EXPECT_FALSE(splashWindow.open);
  }
}

TEST_F(start_up, help_opens_at_the_overview_and_in_dialogs_at_the_context_entry) {
  start();
  form.execute(Command::mnuhelp);
  form.KontexthilfeZeigen();
  const std::vector<std::pair<std::filesystem::path, std::string>> shown = {
      {"TINTLINE2.chm", "./htm/funktions.bersicht.htm"},
      {ports.files.program / "TINTLINE2.chm::/topic.txt", ""}};
  EXPECT_EQ(ports.shell.shownHelp, shown);
}

TEST_F(start_up, leaving_unloads_all_forms_and_closes_the_help) {
  start();
  form.execute(Command::mnuInfo);
  form.execute(Command::mnubeenden);
  EXPECT_FALSE(splashWindow.open);
  EXPECT_FALSE(mainWindow.open);
  EXPECT_GE(ports.released, 1);
  EXPECT_GE(ports.shell.helpClosed, 1);
}

}  // namespace
}  // namespace tintline::test
