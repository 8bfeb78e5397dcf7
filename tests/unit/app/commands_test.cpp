// Tests of app/frmVBACode/commands.h.
#include "app/frmVBACode/commands.h"

#include <gtest/gtest.h>

#include <cwctype>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "base/codepage.h"

namespace tintline {
namespace {

// The access key of a caption, 0 for none.
wchar_t accessKey(std::wstring_view caption) {
  const std::size_t mark = caption.find(L'&');
  if (mark == std::wstring_view::npos || mark + 1 == caption.size()) return 0;
  return static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(caption[mark + 1])));
}

void expectDistinctKeys(const std::vector<std::wstring_view>& captions) {
  std::set<wchar_t> keys;
  for (const std::wstring_view caption : captions) {
    const wchar_t key = accessKey(caption);
    EXPECT_TRUE(key == 0 || keys.insert(key).second) << toUtf8(caption);
  }
}

TEST(Commands, AnAccessKeyStandsOnceInItsMenu) {
  std::vector<std::wstring_view> bar;
  for (const Menu& menu : menuBar()) {
    bar.push_back(menu.caption);
    std::vector<std::wstring_view> captions;
    for (const MenuEntry& entry : menu.entries) captions.push_back(entry.caption);
    expectDistinctKeys(captions);
  }
  expectDistinctKeys(bar);
}

TEST(Commands, ACommandStandsOnceInTheMenus) {
  std::set<Command> commands;
  for (const Menu& menu : menuBar())
    for (const MenuEntry& entry : menu.entries)
      EXPECT_TRUE(entry.command == Command::None || commands.insert(entry.command).second)
          << toUtf8(entry.caption);
}

TEST(Commands, ToolbarButtonsStandAtTheirPlaces) {
  const struct {
    std::size_t number;  // from 1
    Command command;
  } rows[] = {{6, Command::mnuSchluesselworte}, {9, Command::cmdVBAClp}, {13, Command::mnuFormat2}};
  for (const auto& row : rows) EXPECT_EQ(toolbar()[row.number - 1].command, row.command);
}

TEST(Commands, ToolbarKeysStandForTheirCommands) {
  std::map<std::string_view, Command> commands;
  for (const ToolbarButton& button : toolbar()) {
    EXPECT_EQ(button.key.empty(), button.command == Command::None) << button.key;
    EXPECT_TRUE(button.key.empty() || commands.emplace(button.key, button.command).second);
  }
  const struct {
    std::string_view key;
    Command command;
  } rows[] = {
      {"file", Command::mnudatei},       {"word", Command::mnuword},
      {"wordende", Command::mnutrennen}, {"save", Command::mnuFarbenSpeichern},
      {"format", Command::mnuFormat},    {"format2", Command::mnuFormat2},
      {"umbruch", Command::mnuUmbruch},
  };
  for (const auto& row : rows) EXPECT_EQ(commands[row.key], row.command) << row.key;
}

TEST(Commands, AKeyCombinationStandsOnce) {
  std::set<std::tuple<unsigned, Key, char>> combinations;
  for (const Accelerator& keys : accelerators())
    EXPECT_TRUE(combinations.insert({keys.modifiers, keys.key, keys.letter}).second) << keys.letter;
}

std::wstring keyText(const Accelerator& keys) {
  const std::map<Key, std::wstring> names = {
      {Key::F1, L"F1"},      {Key::F5, L"F5"},
      {Key::F6, L"F6"},      {Key::F7, L"F7"},
      {Key::Plus, L"+"},     {Key::Minus, L"-"},
      {Key::Escape, L"Esc"}, {Key::Letter, {static_cast<wchar_t>(keys.letter)}}};
  return ((keys.modifiers & kControl) != 0 ? L"Strg+" : L"") + names.at(keys.key);
}

TEST(Commands, TheMenusSayWhichKeysThereAre) {
  std::map<Command, std::wstring> said;
  for (const Menu& menu : menuBar())
    for (const MenuEntry& entry : menu.entries)
      if (!entry.keys.empty()) said[entry.command] = entry.keys;
  said.erase(Command::mnubeenden);  // Alt+F4 is the system's
  std::map<Command, std::wstring> real;
  for (const Accelerator& keys : accelerators()) real[keys.command] = keyText(keys);
  real.erase(Command::mnuAbbrechen);  // in no menu
  EXPECT_EQ(said, real);
}

}  // namespace
}  // namespace tintline
