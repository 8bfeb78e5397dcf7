// The commands of the main window, and where they stand in menus and tool bar.
//
// Tested by tests/unit/app/dialogs_test.cpp.
#pragma once

#include <span>
#include <string_view>

namespace tintline {

// Everything that menus, tool bar and keys can start, named after its menu entry or
// button; `None` separates groups.
enum class Command {
  None,
  mnudatei,
  cmdExport,
  mnubeenden,
  mnuCopy,
  cmdVBAClp,
  mnuInsert,
  mnuSelectAll,
  mnuModul,
  mnuMakro,
  mnuAuswahl,
  mnuAlleModule,
  mnuFormat,
  mnuFormat2,
  mnuZeilenbreite,
  mnuUmbruch,
  mnuZeilennummern,
  mnuVorschau,
  mnuword,
  mnuexcel,
  mnutrennen,
  mnutrennen2,
  mnu2word,
  mnuexport,  // in the menus of the tree
  mnuexportall,
  mnuconvertall,
  mnuFarben,
  mnuFarbenSpeichern,
  mnuPrePost,
  mnuSchluesselworte,
  mnuhelp,
  mnuInfo,
  mnuFormatiertKopieren,
  mnuKlassisch,
  mnuGenau,
  mnuSchliessen,  // of an Office file, in the menu of the tree
  mnuneu,
  mnuZuletzt,   // the menu of the files that were opened last
  mnuZuletzt1,  // the first of them
  mnuZuletzt8 = mnuZuletzt1 + 7,
  mnuSuchen,
  mnuWeitersuchen,
  mnuRueckwaerts,
  mnuGeheZu,
  mnuProzeduren,
  mnuDokumentieren,
  mnuGespeichertes,
  mnuNaechsterBereich,  // the keyboard goes to the next part of the window
  mnuVorigerBereich,
  mnuTeilerLinks,  // what divides the parts moves
  mnuTeilerRechts,
  mnuTeilerOben,
  mnuTeilerUnten,
  mnuHelligkeitSystem,  // as the system says
  mnuHell,
  mnuDunkel,
  mnuAbbrechen  // Esc
};

// Whether it is about the window alone: its view does it, at any time.
constexpr bool isOfWindow(Command command) {
  return command >= Command::mnuNaechsterBereich && command <= Command::mnuTeilerUnten;
}

struct MenuEntry {
  Command command;            // None: a line between groups
  std::wstring_view caption;  // "&" in front of the access key
  std::wstring_view keys;     // shown behind the caption, in the user's language; "" for none
};

struct Menu {
  std::wstring_view caption;
  std::span<const MenuEntry> entries;
};

// The menu bar, from left to right.
std::span<const Menu> menuBar();

// The menus of the tree, for a component and for a document.
std::span<const MenuEntry> mnuModulExport();
std::span<const MenuEntry> mnuModulAll();

// The menu of a list, and that of the preview.
std::span<const MenuEntry> listMenu();
std::span<const MenuEntry> previewMenu();
// And for a document of an Office file; for one without modules.
std::span<const MenuEntry> mnuOfficeDatei();
std::span<const MenuEntry> mnuOfficeDateiLeer();

struct ToolbarButton {
  std::string_view key;  // names the command's picture; "" for a gap between groups
  Command command;
  std::wstring_view toolTip;
};

// The tool bar, from left to right; gaps count as buttons. Button 6 of it (from 1)
// needs the control file, button 9 loaded code, and button 13 narrows the indentation.
std::span<const ToolbarButton> toolbar();

// Key combinations.
enum KeyModifier : unsigned { kNoModifier = 0, kControl = 1, kShift = 2, kAlt = 4 };
enum class Key { Letter, F1, F3, F5, F6, F7, Plus, Minus, Left, Right, Up, Down, Escape };

struct Accelerator {
  unsigned modifiers;
  Key key;
  char letter;  // for Key::Letter, upper case, or a digit
  Command command;
};

std::span<const Accelerator> accelerators();

}  // namespace tintline
