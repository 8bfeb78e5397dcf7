// Tests of win32/forms/menus.h.
#include "win32/forms/menus.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "win32/control_ids.h"

namespace tintline {
namespace {

TEST(menus, theBarHoldsEveryEntryWithItsKeysAndNumber) {
  const UniqueMenu bar = makeMenuBar();
  ASSERT_EQ(GetMenuItemCount(bar.get()), static_cast<int>(menuBar().size()));
  HMENU file = GetSubMenu(bar.get(), 0);
  wchar_t text[60]{};
  GetMenuStringW(file, 0, text, 60, MF_BYPOSITION);
  EXPECT_EQ(std::wstring(text), L"&Öffnen…\tStrg+O");
  EXPECT_EQ(GetMenuItemID(file, 0), static_cast<UINT>(commandId(Command::mnudatei)));
  for (std::size_t i = 0; i < menuBar().size(); ++i)
    EXPECT_EQ(GetMenuItemCount(GetSubMenu(bar.get(), static_cast<int>(i))),
              static_cast<int>(menuBar()[i].entries.size()));
}

TEST(menus, everyKeyCombinationIsThereOnce) {
  const UniqueAccelerators table = makeAccelerators();
  std::vector<ACCEL> keys(static_cast<std::size_t>(CopyAcceleratorTableW(table.get(), nullptr, 0)));
  CopyAcceleratorTableW(table.get(), keys.data(), static_cast<int>(keys.size()));
  EXPECT_EQ(keys.size(), accelerators().size() + 2);  // plus and minus stand on two keys each
  std::set<std::pair<int, int>> seen;
  for (const ACCEL& key : keys)
    EXPECT_TRUE(seen.emplace(key.fVirt & (FCONTROL | FSHIFT | FALT), key.key).second) << key.key;
  const auto is = [&](int modifiers, WORD key, Command command) {
    for (const ACCEL& entry : keys)
      if ((entry.fVirt & FCONTROL) == modifiers && entry.key == key)
        return entry.cmd == commandId(command);
    return false;
  };
  EXPECT_TRUE(is(FCONTROL, 'O', Command::mnudatei));
  EXPECT_TRUE(is(0, VK_F5, Command::mnuMakro));
  EXPECT_TRUE(is(FCONTROL, VK_ADD, Command::mnuFormat));
  EXPECT_TRUE(is(FCONTROL, VK_OEM_MINUS, Command::mnuFormat2));
  EXPECT_TRUE(is(0, VK_ESCAPE, Command::mnuAbbrechen));
}

}  // namespace
}  // namespace tintline
