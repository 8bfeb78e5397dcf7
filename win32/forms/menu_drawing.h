// Menus drawn by us while the look of the windows is not the system's, which has no other colours
// for them. Screen readers learn the entries' texts as the system asks of menus that are drawn so
// (MSAAMENUINFO of Microsoft Active Accessibility).
//
// Tested by tests/win32/controls/theme_test.cpp.
#pragma once

#include <windows.h>
#include <oleacc.h>

#include <map>
#include <string>
#include <vector>

namespace tintline {

class MenuDrawing {
 public:
  // Has the entries of a menu drawn by the window when the look wants it: of a menu bar whenever
  // the look has changed, of any other menu when it is about to open and has all its entries.
  void dress(HMENU menu);

  // The menu has closed, or its entries are to be the system's again.
  void undress(HMENU menu);

  // The answers to WM_MEASUREITEM, WM_DRAWITEM and WM_MENUCHAR of a dressed menu in that window;
  // the system knows no access keys of entries that it does not draw.
  static void measure(HWND window, MEASUREITEMSTRUCT& item);
  static void draw(HWND window, const DRAWITEMSTRUCT& item);
  LRESULT entryOf(HMENU menu, wchar_t accessKey) const;

  // What the system leaves light of a dressed menu bar, once it has painted the window's frame.
  static void paintRestOfBar(HWND window);

 private:
  struct Entry {
    MSAAMENUINFO accessible;  // the first of all, where screen readers look for it
    HMENU menu;
    UINT type;  // MFT_…
    bool opensMenu;
    std::wstring text, keys;
  };
  static Entry readEntry(HMENU menu, UINT place);
  static void setEntry(HMENU menu, UINT place, UINT type, const Entry* entry);

  std::map<HMENU, std::vector<Entry>> dressed_;
};

}  // namespace tintline
