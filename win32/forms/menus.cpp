// See menus.h.
#include "win32/forms/menus.h"

#include <shlwapi.h>

#include <filesystem>
#include <string>
#include <vector>

#include "win32/control_ids.h"

namespace tintline {
namespace {

// The menu of recent files is filled when it opens. It is told by its data.
constexpr ULONG_PTR kRecentMenu = 1;

UniqueMenu makeRecentMenu() {
  UniqueMenu menu(CreatePopupMenu());
  MENUINFO info{};
  info.cbSize = sizeof info;
  info.fMask = MIM_MENUDATA;
  info.dwMenuData = kRecentMenu;
  SetMenuInfo(menu.get(), &info);
  AppendMenuW(menu.get(), MF_STRING | MF_GRAYED, 0, L"");
  return menu;
}

bool isRecentMenu(HMENU menu) {
  MENUINFO info{};
  info.cbSize = sizeof info;
  info.fMask = MIM_MENUDATA;
  return GetMenuInfo(menu, &info) && info.dwMenuData == kRecentMenu;
}

// A path as an entry: numbered for the keyboard, its "&" a letter like others.
std::wstring recentText(std::size_t index, const std::filesystem::path& file) {
  constexpr int kLongest = 64;  // characters
  wchar_t shortened[MAX_PATH] = L"";
  std::wstring text = file.wstring();
  if (PathCompactPathExW(shortened, text.c_str(), kLongest, 0)) text = shortened;
  for (std::size_t at = 0; (at = text.find(L'&', at)) != std::wstring::npos; at += 2)
    text.insert(at, 1, L'&');
  return L"&" + std::to_wstring(index + 1) + L"  " + text;
}

void fillRecentMenu(HMENU menu, const std::vector<std::filesystem::path>& files) {
  while (DeleteMenu(menu, 0, MF_BYPOSITION)) continue;
  for (std::size_t i = 0; i < files.size(); ++i)
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(commandId(Command::mnuZuletzt1)) + i,
                recentText(i, files[i]).c_str());
  if (files.empty()) AppendMenuW(menu, MF_STRING | MF_GRAYED, 0, L"(noch keine Datei)");
}

void append(HMENU menu, const MenuEntry& entry) {
  if (entry.command == Command::None) {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    return;
  }
  std::wstring text(entry.caption);
  if (!entry.keys.empty()) text.append(L"\t").append(entry.keys);
  if (entry.command == Command::mnuZuletzt) {
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(makeRecentMenu().release()),
                text.c_str());  // the menu owns it from now on
    return;
  }
  AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(commandId(entry.command)), text.c_str());
}

// Plus and minus stand on two keys each.
std::vector<WORD> keysOf(const Accelerator& accelerator) {
  switch (accelerator.key) {
    case Key::Letter:
      return {static_cast<WORD>(accelerator.letter)};
    case Key::F1:
      return {VK_F1};
    case Key::F3:
      return {VK_F3};
    case Key::F5:
      return {VK_F5};
    case Key::F6:
      return {VK_F6};
    case Key::F7:
      return {VK_F7};
    case Key::Plus:
      return {VK_OEM_PLUS, VK_ADD};
    case Key::Minus:
      return {VK_OEM_MINUS, VK_SUBTRACT};
    case Key::Left:
      return {VK_LEFT};
    case Key::Right:
      return {VK_RIGHT};
    case Key::Up:
      return {VK_UP};
    case Key::Down:
      return {VK_DOWN};
    case Key::Escape:
      return {VK_ESCAPE};
  }
  return {};
}

}  // namespace

UniqueMenu makePopupMenu(std::span<const MenuEntry> entries) {
  UniqueMenu popup(CreatePopupMenu());
  for (const MenuEntry& entry : entries) append(popup.get(), entry);
  return popup;
}

UniqueMenu makeMenuBar() {
  UniqueMenu bar(CreateMenu());
  for (const Menu& menu : menuBar()) {
    UniqueMenu popup = makePopupMenu(menu.entries);
    AppendMenuW(bar.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(popup.release()),
                std::wstring(menu.caption).c_str());  // the bar owns it from now on
  }
  return bar;
}

void updateMenu(HMENU menu, const frmVBACode& form) {
  if (isRecentMenu(menu)) fillRecentMenu(menu, form.memory.recent());
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const auto command =
        static_cast<Command>(static_cast<int>(GetMenuItemID(menu, i)) - kCommandBase);
    if (command <= Command::None || command > Command::mnuAbbrechen) continue;
    const auto place = static_cast<UINT>(i);
    EnableMenuItem(menu, place, MF_BYPOSITION | (form.isEnabled(command) ? MF_ENABLED : MF_GRAYED));
    CheckMenuItem(menu, place,
                  MF_BYPOSITION | (form.isChecked(command) ? MF_CHECKED : MF_UNCHECKED));
    if (form.isChecked(command) && frmVBACode::isChoice(command))
      CheckMenuRadioItem(menu, place, place, place, MF_BYPOSITION);
  }
}

UniqueAccelerators makeAccelerators() {
  std::vector<ACCEL> table;
  for (const Accelerator& accelerator : accelerators()) {
    BYTE modifiers = FVIRTKEY;
    if ((accelerator.modifiers & kControl) != 0) modifiers |= FCONTROL;
    if ((accelerator.modifiers & kShift) != 0) modifiers |= FSHIFT;
    if ((accelerator.modifiers & kAlt) != 0) modifiers |= FALT;
    for (const WORD key : keysOf(accelerator))
      table.push_back({modifiers, key, static_cast<WORD>(commandId(accelerator.command))});
  }
  return UniqueAccelerators(CreateAcceleratorTableW(table.data(), static_cast<int>(table.size())));
}

}  // namespace tintline
