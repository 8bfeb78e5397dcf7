// Tests of the dialogs of app/ and of the settings that they change: frmFarbeinstellung,
// frmPrePostCode, app/settings; and of the tables of app/frmVBACode/commands.h. What the user sees
// and what becomes of colours and files is in tests/app/expected.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "app/frmVBACode/commands.h"
#include "base/text.h"
#include "settings/modIniSave.h"
#include "tests/app/program_fixture.h"
#include "tests/support/ordinary_user.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;
using namespace modIniSave;

class dialogs : public ProgramTest {
 protected:
  void SetUp() override { begin(); }

  // What the user does in the dialog for colours, which he may leave by its close box.
  void colours(const std::function<void()>& user) {
    colorWindow.whileModal = [&] { step("shown"), user(); };
    execute("colours", Command::mnuFarben);
  }
  void choose(std::size_t category) {
    dialog.cboKategorie.ListIndex = static_cast<int>(category);
    step("another category", dialog.cboKategorie.Click);
  }
  void type(TextBox& field, const std::wstring& text) {
    field.Text = text;
    step("type " + toUtf8(text), field.Change);
  }
  void press(const CommandButton& button) {
    step("press " + toUtf8(button.Caption()), button.Click);
  }

  const fs::path file = app.settingsFile;
  frmFarbeinstellung& dialog = app.farbeinstellung;
};

// ------------------------------------------------------------------------------- settings

TEST_F(dialogs, settings_that_are_damaged_give_what_can_be_read) {
  EXPECT_EQ(readFile("package/TINTLINE.ini"), readFile(file)) << "by which removing tells changes";
  const auto fileWith = [](std::string_view colRem) {
    std::string content = "[TINTLINE]\r\n";
    for (const std::string_view key : fkt_FarbSchluessel())
      content.append(key).append("=").append(key == "ColRem" ? colRem : "0,1,2,3,4,5,") += "\r\n";
    return content;
  };
  for (const std::string& content :
       {fileWith("a,,c,d,e,f,g,h,"), fileWith("a,b,"), std::string("[TINTLINE]\r\nColProz=a,b,")})
    for (const ColorScheme& before : {defaultColors(), ColorScheme()}) {
      writeText(file, content);
      app.colors = before;
      step(fkt_FarbenLaden(file, app.colors) ? "read" : "damaged");
    }
}

TEST_F(dialogs, settings_are_saved_with_the_codes_and_nothing_else) {
  writeText(file, "; mein\n[Rest]\nx=1\n[TINTLINE]\nPostCode=</b>,\nPreCode=<b a=\"a,b\">,\n");
  execute("save", Command::mnuFarbenSpeichern);
  app.colors[kProzeduren][0] = "a,b";  // a separator within a field moves the fields behind it
  execute("save", Command::mnuFarbenSpeichern);
  writeText(file, "[TINTLINE]\r\nPreCode=alt,\r\nX=1\r\n");
  EinstellungenSchreiben(file, {"a,", "b,", "c,", "d,", "e,"}, false);
  step("written without the codes");
  fs::remove(file);
  fs::create_directory(file);
  app.colors[kStrings][1] = "#123456";
  execute("save where it cannot be written", Command::mnuFarbenSpeichern);
  EXPECT_THROW(EinstellungenSchreiben(file, {}, true), FileError);
}

// Where he may not write into the folder, or only not into the file.
TEST(Settings, TheUsersFileBeginsAsACopy) {
  for (const unsigned mode : {0555u, 0777u}) {
    const TempFolder folder;
    const fs::path program = folder / "p", beside = program / kSettingsFile, user = folder / "u";
    fs::create_directory(program);
    writeText(beside, "shared");
    fs::permissions(beside, fs::perms(0444));
    fs::permissions(program, fs::perms(mode));
    fs::permissions(folder.path(), fs::perms::all);
    for (const char* content : {"shared", "own"}) {
      [[maybe_unused]] const OrdinaryUser somebody;
      EXPECT_EQ(chooseSettingsFile(program, user), user / kSettingsFile);
      EXPECT_EQ(readFile(user / kSettingsFile), content) << "copied once";
      writeText(user / kSettingsFile, "own");
    }
    fs::permissions(program, fs::perms(0755));  // else they cannot be removed everywhere
    fs::permissions(beside, fs::perms(0644));
  }
}

// -------------------------------------------------------------------------------- dialogs

TEST_F(dialogs, pre_and_post_code_are_saved_as_they_stand) {
  const auto enter = [&](const std::wstring& pre, const std::wstring& post,
                         const CommandButton* button) {
    prePostWindow.whileModal = [&, button] {
      step("shown");
      app.prePostCode.txtPreCode.Text = pre;
      app.prePostCode.txtPostCode.Text = post;
      if (button != nullptr) press(*button);
    };
    execute("codes", Command::mnuPrePost);
  };
  const CommandButton* const save = &app.prePostCode.OKButton;
  writeText(file, "[TINTLINE]\r\nColRem=x,\r\nPreCode=alt,\r\n; mein\r\n");
  enter(L" <b a=\"1\">, €", L",", save);
  enter(L"neu", L"neu", &app.prePostCode.CancelButton);
  enter(L"neu", L"neu", nullptr);
  enter(std::wstring(300, L'x'), L"", save);  // stored whole, comes back cut
  fs::remove(file);
  fs::create_directory(file);
  enter(L"a", L"b", save);  // goes unreported
}

TEST_F(dialogs, colours_of_a_category_are_shown_and_kept_when_they_are_saved) {
  app.colors[kParameter][kTransparency] = "2";
  app.colors[kStrings][0] = "eigen";
  colours([&] {
    choose(kParameter);
    choose(kReservierteWorte);
    dialog.chkTransparent.Value = true;
    step("transparent", dialog.chkTransparent.Click);
    press(dialog.cmdHilfe);
    press(dialog.cmdSpeichern);
  });
  for (const bool byCloseBox : {false, true})
    colours([&] {
      type(dialog.txtFarbe, L"#010203");
      if (!byCloseBox) press(dialog.cmdAbbrechen);
    });
}

TEST_F(dialogs, typed_text_is_a_colour_or_changes_nothing) {
  colours([&] {
    choose(kStrings);
    for (const wchar_t* typed : {L"#102030", L"", L"#", L"102030", L"#10203", L"#1020304",
                                 L"#10203G", L"#-10203", L"#10\u0416030", L" #ff00aB "})
      for (TextBox* field : {&dialog.txtFarbe, &dialog.txtHintergrund}) type(*field, typed);
    type(dialog.txtHintergrund, L"falsch");
    choose(kProzeduren);  // leaves what is wrong behind
    press(dialog.cmdSpeichern);
  });
}

TEST_F(dialogs, the_systems_dialog_gives_a_colour) {
  for (const std::optional<std::uint32_t> chosen :
       {std::optional(0x0000FFu), std::optional(0x8000000Fu), std::optional<std::uint32_t>()})
    colours([&] {
      choose(kKommentare);
      for (const CommandButton* button : {&dialog.cmdFarbe, &dialog.cmdHintergrund}) {
        ports.dialogs.answerColor(chosen);
        press(*button);
      }
      type(dialog.txtFarbe, dialog.txtFarbe.Text());  // as a view that reports its own changes
      press(dialog.cmdSpeichern);
    });
}

TEST_F(dialogs, standard_brings_the_defaults_back_and_a_failure_is_told) {
  app.colors[kProzeduren] = {"eigen", "#010203", "#040506", "1", "2", "1"};
  fs::remove(file);
  fs::create_directory(file);
  colours([&] {
    type(dialog.txtFarbe, L"falsch");
    press(dialog.cmdStandard);
    type(dialog.txtFarbe, L"#040506");
    press(dialog.cmdSpeichern);
    fs::remove(file);
    press(dialog.cmdStandard);
    press(dialog.cmdSpeichern);
  });
}

TEST_F(dialogs, damaged_colours_are_shown_as_well_as_they_can_be) {
  const std::pair<const char*, const char*> rows[] = {{"#010203", "9"},     // the text counts
                                                      {"red", "9"},         // the number stands in
                                                      {"", "-2147483641"},  // a system colour
                                                      {"red", "red"}};
  for (const auto& [text, number] : rows) {
    app.colors[kProzeduren][kTextColor] = text;
    app.colors[kProzeduren][kTextNumber] = number;
    colours([&] {
      choose(kStrings);
      press(dialog.cmdSpeichern);
    });
  }
}

// ------------------------------------------------------------------------------- commands

std::string keyText(const Accelerator& keys) {
  const std::map<Key, std::string> names = {
      {Key::F1, "F1"},   {Key::F3, "F3"},      {Key::F5, "F5"},
      {Key::F6, "F6"},   {Key::F7, "F7"},      {Key::Plus, "+"},
      {Key::Minus, "-"}, {Key::Escape, "Esc"}, {Key::Letter, {keys.letter}},
      {Key::Left, "<"},  {Key::Right, ">"},    {Key::Up, "^"},
      {Key::Down, "v"}};
  return std::string((keys.modifiers & kControl) != 0 ? "Strg+" : "") +
         ((keys.modifiers & kAlt) != 0 ? "Alt+" : "") +
         ((keys.modifiers & kShift) != 0 ? "Umschalt+" : "") + names.at(keys.key);
}

TEST(Commands, MenusAndKeysAgree) {
  std::map<Command, std::string> said, real;
  std::set<std::string> access, combinations;  // no access key is there twice in a menu
  std::set<Command> reached = {Command::None, Command::cmdVBAClp};  // the latter has a button
  const auto add = [&](std::wstring_view menu, std::wstring_view caption) {
    const std::size_t mark = caption.find(L'&');
    if (mark == std::wstring_view::npos) return;
    const std::string key(1, toLower(static_cast<char>(caption[mark + 1])));
    EXPECT_TRUE(access.insert(toUtf8(menu) + key).second) << toUtf8(caption);
  };
  for (const Menu& menu : menuBar()) {
    add(L"", menu.caption);
    for (const MenuEntry& entry : menu.entries) {
      add(menu.caption, entry.caption);
      reached.insert(entry.command);
      if (!entry.keys.empty()) said[entry.command] = toUtf8(entry.keys);
    }
  }
  for (const Accelerator& keys : accelerators())
    EXPECT_TRUE(combinations.insert(real[keys.command] = keyText(keys)).second);
  std::wstring number = L"0";
  for (const auto& menu : {mnuModulExport(), mnuModulAll(), listMenu(), previewMenu()}) {
    ++number[0];
    for (const MenuEntry& entry : menu) add(number, entry.caption);
  }
  for (const ToolbarButton& button : toolbar())
    EXPECT_TRUE(reached.contains(button.command)) << button.key << ": by mouse only";
  said.erase(Command::mnubeenden);            // Alt+F4 is the system's
  std::erase_if(real, [](const auto& keys) {  // in no menu
    return keys.first == Command::mnuAbbrechen || isOfWindow(keys.first);
  });
  EXPECT_EQ(said, real);
}

}  // namespace
}  // namespace tintline::test
