// See menus.h.
#include "win32/forms/menus.h"

#include <string>
#include <vector>

#include "win32/control_ids.h"

namespace tintline {
namespace {

void append(HMENU menu, const MenuEntry& entry) {
  if (entry.command == Command::None) {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    return;
  }
  std::wstring text(entry.caption);
  if (!entry.keys.empty()) text.append(L"\t").append(entry.keys);
  AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(commandId(entry.command)), text.c_str());
}

// Plus and minus stand on two keys each.
std::vector<WORD> keysOf(const Accelerator& accelerator) {
  switch (accelerator.key) {
    case Key::Letter:
      return {static_cast<WORD>(accelerator.letter)};
    case Key::F1:
      return {VK_F1};
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
    for (const WORD key : keysOf(accelerator))
      table.push_back({modifiers, key, static_cast<WORD>(commandId(accelerator.command))});
  }
  return UniqueAccelerators(CreateAcceleratorTableW(table.data(), static_cast<int>(table.size())));
}

}  // namespace tintline
