// The main window's menu bar and key combinations, made of the tables of commands.
//
// Tested by tests/win32/forms/form_window_test.cpp.
#pragma once

#include <windows.h>

#include <span>

#include "app/frmVBACode/frmVBACode.h"
#include "win32/controls/gdi.h"

namespace tintline {

UniqueMenu makeMenuBar();

UniqueMenu makePopupMenu(std::span<const MenuEntry> entries);

// What is enabled and checked, and which files were opened last, when a menu is about to open.
void updateMenu(HMENU menu, const frmVBACode& form);

UniqueAccelerators makeAccelerators();

}  // namespace tintline
