// Tests of the dialogs of app/ and of the settings that they change: frmFarbeinstellung,
// frmPrePostCode, app/settings; and of the tables of app/frmVBACode/commands.h.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "app/frmFarbeinstellung/frmFarbeinstellung.h"
#include "app/frmPrePostCode/frmPrePostCode.h"
#include "app/frmVBACode/commands.h"
#include "base/codepage.h"
#include "base/file.h"
#include "base/text.h"
#include "settings/modIniSave.h"
#include "tests/support/convert.h"
#include "tests/support/default_settings.h"
#include "tests/support/fake_form_view.h"
#include "tests/support/fake_ports.h"
#include "tests/support/ordinary_user.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;
using namespace modIniSave;

void put(const fs::path& path, std::string_view content) {
  AtomicFile file(path);
  file.stream() << content;
  file.commit();
}

// ------------------------------------------------------------------------------- settings

// All below a folder, "name=content" for files.
std::set<std::string> everythingIn(const fs::path& folder) {
  std::set<std::string> all;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
    all.insert(entry.path().lexically_relative(folder).generic_string() +
               (entry.is_directory() ? "" : "=" + readFile(entry.path())));
  return all;
}

TEST(Settings, TheFileBesideTheProgramIsTakenWhereItCanBeWrittenElseTheUsers) {
  const struct {
    const char* name;
    std::vector<std::string> folders, files;
    const char *user, *taken;
    std::set<std::string> added;
  } rows[] = {
      {"nothing there", {"p"}, {}, "u", "p", {}},
      {"both there", {"p", "u"}, {"p", "u"}, "u", "p", {}},
      {"a folder in the way", {"p/TINTLINE.ini"}, {}, "u/v", "u/v", {"u", "u/v"}},
      {"and a file of the user", {"p/TINTLINE.ini", "u"}, {"u"}, "u", "u", {}},
      {"a folder there, too", {"p/TINTLINE.ini", "u/TINTLINE.ini"}, {}, "u", "p", {}},
      {"no folder for the user", {"p/TINTLINE.ini"}, {}, "", "p", {}},
  };
  for (const auto& row : rows) {
    const TempFolder folder;
    for (const std::string& made : row.folders) fs::create_directories(folder / made);
    for (const std::string& made : row.files) put(folder / made / kSettingsFile, made);
    auto expected = everythingIn(folder.path());
    const fs::path user = *row.user == '\0' ? fs::path() : folder / row.user;
    EXPECT_EQ(chooseSettingsFile(folder / "p", user), folder / row.taken / kSettingsFile)
        << row.name;
    expected.insert(row.added.begin(), row.added.end());
    EXPECT_EQ(everythingIn(folder.path()), expected) << row.name;
  }
}

TEST(Settings, TheUsersFileBeginsAsACopy) {
  const TempFolder folder;
  const fs::path program = folder / "p", beside = program / kSettingsFile, user = folder / "u";
  fs::create_directory(program);
  put(beside, "shared");
  fs::permissions(beside, fs::perms(0444));
  fs::permissions(program, fs::perms(0555));
  fs::permissions(folder.path(), fs::perms::all);
  for (const char* content : {"shared", "own"}) {
    [[maybe_unused]] const OrdinaryUser somebody;
    EXPECT_EQ(chooseSettingsFile(program, user), user / kSettingsFile);
    EXPECT_EQ(readFile(user / kSettingsFile), content) << "copied once";
    put(user / kSettingsFile, "own");
  }
  fs::permissions(program, fs::perms(0755));  // else they cannot be removed everywhere
  fs::permissions(beside, fs::perms(0644));
}

// A settings file in which category k holds "k0" to "k5", but for one changed key.
std::string fileWith(std::string_view changedKey, std::string_view value) {
  std::string content = "[TINTLINE]\r\n";
  for (std::size_t k = 0; k < kColorCategories; ++k) {
    const std::string_view key = fkt_FarbSchluessel()[k];
    content.append(key) += '=';
    for (std::size_t j = 0; key != changedKey && j < kColorFields; ++j)
      content += std::to_string(k) + std::to_string(j) + ",";
    content.append(key == changedKey ? value : "") += "\r\n";
  }
  return content;
}

TEST(Settings, DamageKeepsWhatWasReadBeforeIt) {
  const TempFolder folder;
  const fs::path file = folder / "a.ini";
  const struct {
    std::string content;
    bool loaded, written;                         // into an empty table
    std::string proz0, proz1, proz5, rem1, rem2;  // then
  } rows[] = {
      {fileWith("ColRem", "a,,c,d,e,f,g,h,"), true, false, "00", "01", "05", "", "c"},
      {fileWith("ColRem", "a,b,"), false, false, "00", "01", "05", "b", ""},
      {fileWith("ColProz", "a,b,c,d,e,"), false, true, "a", "#000080", "0", "#008000", "#FFFFFF"},
  };
  for (const auto& row : rows) {
    put(file, row.content);
    ColorScheme scheme = defaultColors(), empty;
    EXPECT_EQ(fkt_FarbenLaden(file, scheme), row.loaded);
    EXPECT_EQ(readFile(file), row.content) << "a table that holds a scheme saves nothing";
    EXPECT_EQ(fkt_FarbenLaden(file, empty), row.loaded);
    EXPECT_EQ(readFile(file) != row.content, row.written);
    EXPECT_EQ(empty[kProzeduren][0], row.proz0);
    EXPECT_EQ(empty[kProzeduren][1], row.proz1);
    EXPECT_EQ(empty[kProzeduren][5], row.proz5);
    EXPECT_EQ(empty[kKommentare][1], row.rem1);
    EXPECT_EQ(empty[kKommentare][2], row.rem2);
  }
}

TEST(Settings, SavingKeepsTheCodesAndNothingElse) {
  const TempFolder folder;
  const fs::path file = folder / "a.ini";
  ColorScheme scheme;
  EXPECT_FALSE(fkt_FarbenLaden(file, scheme)) << "a first start saves the defaults";
  EXPECT_EQ(readFile(file), kDefaultSettings);
  EXPECT_EQ(readFile("package/TINTLINE.ini"), kDefaultSettings)
      << "by which removing tells changes";
  put(file, "; mein\n[Rest]\nx=1\n[TINTLINE]\nNeu=1\nPostCode=</b>,\nPreCode=<b a=\"a,b\">,\n");
  FarbenSpeichern(file, scheme);
  const std::string colors(kDefaultSettings.substr(0, kDefaultSettings.find("PreCode")));
  EXPECT_EQ(readFile(file), colors + "PreCode=<b a=\"a,b\">,\r\nPostCode=</b>,\r\n");
  scheme[kProzeduren][0] = "a,b";  // a separator within a field moves the fields behind it
  FarbenSpeichern(file, scheme);
  EXPECT_EQ(scheme[kProzeduren][1], "b");
  put(file, "[TINTLINE]\r\nPreCode=alt,\r\nX=1\r\n");
  EinstellungenSchreiben(file, {"a,", "b,", "c,", "d,", "e,"}, false);
  EXPECT_EQ(readFile(file),
            "[TINTLINE]\r\nPreCode=,\r\nX=1\r\nColProz=a,\r\nColRes=b,\r\nColParms=c,\r\n"
            "ColRem=d,\r\nColString=e,\r\nPostCode=,\r\n");
}

TEST(Settings, AFileThatCannotBeWrittenGivesTheDefaults) {
  const TempFolder folder;
  for (const fs::path& file : {folder.path(), folder / "none" / "a.ini"}) {
    ColorScheme scheme = defaultColors(), empty;
    scheme[kStrings][1] = "#123456";
    FarbenSpeichern(file, scheme);
    EXPECT_EQ(scheme, defaultColors());
    EXPECT_FALSE(fkt_FarbenLaden(file, empty));
    EXPECT_EQ(empty, defaultColors());
    EXPECT_THROW(EinstellungenSchreiben(file, {}, true), FileError);
  }
}

// ------------------------------------------------------------------------- frmPrePostCode

TEST(frmPrePostCode, SavesBothTextsAsTheyStand) {
  const TempFolder folder;
  const fs::path file = folder / "TINTLINE.ini";
  FakeWindow window;
  frmPrePostCode form(file);
  form.makeView = window.maker();
  const auto show = [&](std::function<void()> user) {
    window.whileModal = std::move(user);
    form.ShowModal();
    EXPECT_FALSE(window.open || form.isLoaded());
  };
  const auto save = [&](const std::wstring& pre, const std::wstring& post) {
    show([&] {
      form.txtPreCode.Text = pre;
      form.txtPostCode.Text = post;
      form.OKButton.Click();
    });
  };
  put(file, "[TINTLINE]\r\nColRem=x,\r\nPreCode=alt,\r\n; mein\r\n");
  save(L" <b a=\"1\">, €", L",");
  const std::string saved = readFile(file);
  EXPECT_EQ(saved,
            "[TINTLINE]\r\nColRem=x,\r\nPreCode= <b a=\"1\">, \x80,\r\n; mein\r\n"
            "PostCode=,,\r\n");
  for (const bool byCloseBox : {false, true})
    show([&] {
      EXPECT_EQ(form.txtPreCode.Text(), L" <b a=\"1\">, €");
      EXPECT_EQ(form.txtPostCode.Text(), L",");
      form.txtPreCode.Text = L"neu";
      if (!byCloseBox) form.CancelButton.Click();
    });
  EXPECT_EQ(readFile(file), saved);
  save(std::wstring(300, L'x'), L"");  // stored whole, comes back cut
  EXPECT_NE(readFile(file).find("=" + std::string(300, 'x') + ","), std::string::npos);
  show([&] { EXPECT_EQ(form.txtPreCode.Text(), std::wstring(253, L'x')); });
  fs::remove(file);
  fs::create_directory(file);
  save(L"a", L"b");  // goes unreported
}

// --------------------------------------------------------------------- frmFarbeinstellung

// The dialog on the default colours, but for what a test makes of them beforehand.
class ColorDialog : public testing::Test {
 protected:
  ColorDialog() { form.makeView = window.maker(); }

  void show(std::function<void()> user) {
    window.whileModal = std::move(user);
    form.ShowModal();
    EXPECT_FALSE(window.open);
  }

  void choose(std::size_t category) {
    form.cboKategorie.ListIndex = static_cast<int>(category);
    form.cboKategorie.Click();
  }

  static void type(TextBox& field, const std::wstring& text) {
    field.Text = text;
    field.Change();
  }

  // What the file holds.
  ColorScheme stored() const {
    ColorScheme scheme;
    EXPECT_TRUE(readColors(file, scheme));
    return scheme;
  }

  FakePorts ports;
  fs::path file = ports.files.program / "TINTLINE.ini";
  ColorScheme colors = defaultColors();
  FakeWindow window;
  frmFarbeinstellung form{colors, file, ports.dialogs, ports.shell, FakePorts::systemColor};
};

TEST_F(ColorDialog, ShowsTheChosenCategoryAndKeepsWhatIsSaved) {
  colors[kParameter][kTransparency] = "2";
  colors[kStrings][0] = "eigen";
  ColorScheme expected = colors;
  expected[kReservierteWorte][kTransparency] = "1";
  show([&] {
    EXPECT_EQ(form.txtHintergrund.Text(), L"#DFDFDF");
    EXPECT_EQ(form.lblMuster.ForeColor(), 0x800000u);
    EXPECT_EQ(form.lblMuster.BackColor(), 0xDFDFDFu);
    EXPECT_FALSE(form.lblMuster.Transparent);
    choose(kParameter);
    EXPECT_EQ(form.txtFarbe.Text(), L"#008080");
    EXPECT_TRUE(form.chkTransparent.Value && form.lblMuster.Transparent);
    EXPECT_EQ(form.lblMuster.Plain() + form.lblMusterSchema[kStrings].Plain(), L"Text");
    EXPECT_EQ(form.lblMusterSchema[kKommentare].ForeColor(), 0x008000u);
    choose(kReservierteWorte);
    form.chkTransparent.Value = true;
    form.chkTransparent.Click();
    EXPECT_TRUE(form.lblMuster.Transparent);
    EXPECT_NE(colors, expected) << "not before Speichern";
    form.cmdHilfe.Click();
    form.cmdSpeichern.Click();
  });
  EXPECT_TRUE(form.saved());
  for (const bool byCloseBox : {false, true}) {
    EXPECT_EQ(colors, expected);
    EXPECT_EQ(stored(), expected);
    show([&] {
      EXPECT_EQ(form.txtFarbe.Text(), L"#000080") << "nothing is left of the last time";
      type(form.txtFarbe, L"#010203");
      if (!byCloseBox) form.cmdAbbrechen.Click();
    });
    EXPECT_FALSE(form.saved());
  }
  EXPECT_EQ(colors, expected);
  EXPECT_EQ(ports.shell.shownHelp[0].second, "./htm/farbeinstellungen.htm");
}

TEST_F(ColorDialog, ATypedTextIsAColourOrChangesNothing) {
  const std::tuple<const wchar_t*, const char*, const char*> rows[] = {
      {L"#102030", "#102030", "3153936"},
      {L" #ff00aB ", "#FF00AB", "11206911"},
      {L"", "", ""},
      {L"#", "", ""},
      {L"102030", "", ""},
      {L"#10203", "", ""},
      {L"#1020304", "", ""},
      {L"#10203G", "", ""},
      {L"#-10203", "", ""},
      {L"#10\u0416030", "", ""},
  };
  for (const auto& [typed, text, number] : rows) {
    const bool right = *text != '\0';
    ColorScheme expected = colors;
    if (right) expected[kStrings][kTextColor] = expected[kStrings][kBackColor] = text;
    if (right) expected[kStrings][kTextNumber] = expected[kStrings][kBackNumber] = number;
    show([&] {
      choose(kStrings);
      for (TextBox* field : {&form.txtFarbe, &form.txtHintergrund}) {
        type(*field, typed);
        EXPECT_EQ(field->Text(), typed) << "the user is typing in it";
        EXPECT_EQ(form.cmdSpeichern.Enabled, right) << text;
        EXPECT_EQ(form.lblHinweis.Caption().empty(), right) << text;
      }
      type(form.txtFarbe, L"#000000");
      EXPECT_EQ(form.cmdSpeichern.Enabled, right) << "both texts must be right";
      type(form.txtFarbe, typed);
      choose(kProzeduren);  // leaves what is wrong behind
      EXPECT_TRUE(form.cmdSpeichern.Enabled);
      if (!right) choose(kStrings), type(form.txtFarbe, L"#FF00AB");
      form.cmdSpeichern.Click();
    });
    EXPECT_EQ(colors[kStrings][kTextColor], right ? text : "#FF00AB");
    EXPECT_EQ(colors[kStrings][kBackNumber], expected[kStrings][kBackNumber]);
  }
}

TEST_F(ColorDialog, TheSystemsDialogGivesAColour) {
  const std::tuple<std::optional<std::uint32_t>, const char*, const char*> rows[] = {
      {0x0000FF, "#FF0000", "255"},
      {0x8000000F, "#0F0F0F", "-2147483633"},
      {std::nullopt, "#008000", "32768"},
  };
  for (const auto& [chosen, text, number] : rows) {
    colors = defaultColors();
    ColorScheme expected = colors;
    expected[kKommentare][kTextColor] = expected[kKommentare][kBackColor] = text;
    expected[kKommentare][kTextNumber] = expected[kKommentare][kBackNumber] = number;
    show([&] {
      choose(kKommentare);
      for (auto* button : {&form.cmdFarbe, &form.cmdHintergrund}) {
        ports.dialogs.answerColor(chosen ? chosen : 0x008000);
        button->Click();
      }
      ports.dialogs.answerColor(std::nullopt);
      form.cmdFarbe.Click();
      form.txtFarbe.Change();  // as a view that reports its own changes
      form.cmdSpeichern.Click();
    });
    EXPECT_EQ(ports.dialogs.asked[0].color, 0x008000u);
    EXPECT_EQ(ports.dialogs.asked[1].color, 0xFFFFFFu);
    EXPECT_EQ(colors, expected);
    EXPECT_EQ(stored(), expected);
  }
}

TEST_F(ColorDialog, StandardBringsTheDefaultsBackAndAFailureIsTold) {
  colors[kProzeduren] = {"eigen", "#010203", "#040506", "1", "2", "1"};
  const ColorScheme before = colors;
  fs::create_directory(file);
  show([&] {
    type(form.txtFarbe, L"falsch");
    form.cmdStandard.Click();
    EXPECT_EQ(form.txtFarbe.Text(), L"#000080");
    EXPECT_FALSE(form.chkTransparent.Value);
    EXPECT_EQ(form.lblHinweis.Caption(), L"");
    type(form.txtFarbe, L"#040506");
    form.cmdSpeichern.Click();
    EXPECT_TRUE(form.isLoaded());
    EXPECT_EQ(form.lblHinweis.Caption(), L"Die Farben konnten nicht gespeichert werden.");
    EXPECT_EQ(colors, before);
    fs::remove(file);
    form.cmdStandard.Click();
    form.cmdSpeichern.Click();
  });
  ColorScheme expected = defaultColors();
  expected[kProzeduren][0] = "eigen";
  EXPECT_EQ(colors, expected);
}

TEST_F(ColorDialog, DamagedColoursAreShownAsWellAsTheyCanBe) {
  const std::tuple<const char*, const char*, std::uint32_t, bool> rows[] = {
      {"#010203", "9", 0x030201, false},    // the text counts
      {"red", "9", 9, true},                // the number stands in
      {"", "-2147483641", 0x070707, true},  // a system colour
      {"red", "red", 0, true},
  };
  for (const auto& [text, number, color, wrong] : rows) {
    colors[kProzeduren][kTextColor] = text;
    colors[kProzeduren][kTextNumber] = number;
    const ColorScheme before = colors;
    show([&] {
      EXPECT_EQ(form.lblMuster.ForeColor(), color) << text;
      EXPECT_EQ(form.cmdSpeichern.Enabled, !wrong) << text;
      choose(kStrings);
      form.cmdSpeichern.Click();
    });
    EXPECT_EQ(colors, before) << text;
  }
}

// ------------------------------------------------------------------------------- commands

// The access key of a caption, 0 for none.
wchar_t accessKey(std::wstring_view caption) {
  const std::size_t mark = caption.find(L'&');
  return mark == std::wstring_view::npos ? L'\0' : toLower(static_cast<char>(caption[mark + 1]));
}

std::wstring keyText(const Accelerator& keys) {
  const std::map<Key, std::wstring> names = {
      {Key::F1, L"F1"},      {Key::F5, L"F5"},
      {Key::F6, L"F6"},      {Key::F7, L"F7"},
      {Key::Plus, L"+"},     {Key::Minus, L"-"},
      {Key::Escape, L"Esc"}, {Key::Letter, {static_cast<wchar_t>(keys.letter)}}};
  return ((keys.modifiers & kControl) != 0 ? L"Strg+" : L"") + names.at(keys.key);
}

TEST(Commands, MenusToolBarAndKeysAgree) {
  std::map<Command, std::wstring> said, real;
  std::set<wchar_t> bar;
  std::set<Command> commands;
  for (const Menu& menu : menuBar()) {
    EXPECT_TRUE(bar.insert(accessKey(menu.caption)).second) << toUtf8(menu.caption);
    std::set<wchar_t> keys;
    for (const MenuEntry& entry : menu.entries) {
      const wchar_t key = accessKey(entry.caption);
      EXPECT_TRUE(key == 0 || keys.insert(key).second) << toUtf8(entry.caption);
      EXPECT_TRUE(entry.command == Command::None || commands.insert(entry.command).second);
      if (!entry.keys.empty()) said[entry.command] = entry.keys;
    }
  }
  std::set<std::wstring> combinations;
  for (const Accelerator& keys : accelerators()) {
    EXPECT_TRUE(combinations.insert(real[keys.command] = keyText(keys)).second);
  }
  said.erase(Command::mnubeenden);    // Alt+F4 is the system's
  real.erase(Command::mnuAbbrechen);  // in no menu
  EXPECT_EQ(said, real);
  std::set<std::string_view> pictures;
  for (const ToolbarButton& button : toolbar()) {
    EXPECT_EQ(button.key.empty(), button.command == Command::None) << button.key;
    EXPECT_TRUE(button.key.empty() || pictures.insert(button.key).second);
  }
  EXPECT_EQ(toolbar()[5].command, Command::mnuSchluesselworte);
  EXPECT_EQ(toolbar()[8].command, Command::cmdVBAClp);
  EXPECT_EQ(toolbar()[12].command, Command::mnuFormat2);
}

}  // namespace
}  // namespace tintline::test
