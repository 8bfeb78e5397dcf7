// The main window.
//
// Tested by the tests that drive the program.
#pragma once

#include <array>
#include <vector>

#include "app/frmVBACode/frmVBACode.h"
#include "ports/shell.h"
#include "win32/controls/layout.h"
#include "win32/controls/list_view.h"
#include "win32/controls/status_line.h"
#include "win32/controls/tool_bar.h"
#include "win32/controls/tree_view.h"
#include "win32/controls/widgets.h"
#include "win32/forms/form_window.h"
#include "win32/forms/menu_drawing.h"
#include "win32/preview/browser_view.h"

namespace tintline {

class MainWindow final : public FormWindow {
 public:
  // `designCharacterWidth`: see ListView.
  MainWindow(MessagePump& pump, frmVBACode& form, Shell& shell, int designCharacterWidth);

  void show() override;
  bool translate(MSG& message) override;

 private:
  void addControls(int designCharacterWidth);
  void followFocus(ListView& list, ListBox& model);

  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool command(int id, WORD code) override;
  void closeRequested() override;
  void flushed() override;
  void fontsChanged() override;
  void themeChanged() override;
  HCURSOR ownPointer() override;

  void layout() override;
  int openingState() override;
  void rememberPlace();
  SIZE clientSize() override { return {px(1160), px(740)}; }
  MainLayout currentLayout();
  LayoutMetrics metrics() const;
  void placeOptions(const RECT& row);
  std::array<int, 3> shareStatus() const;
  int statusRoom() const;
  void placeStatus();
  void limitSize(MINMAXINFO& limits) const;

  void startDrag(POINT point);
  void drag(POINT point);
  void moveSplitter(Splitter splitter, POINT point);

  // By keys.
  void arrange(Command command);
  std::vector<HWND> panes();
  void focusNextPane(bool forward);
  void stepSplitter(Command command);

  void filesDropped(WPARAM drop);
  void popUp(std::span<const MenuEntry> entries, POINT place);
  bool contextMenu(HWND control, LPARAM place);
  POINT placeOfMenu(HWND control) const;

  struct Controls {
    TreeWidget* tree;
    Widget *list1, *modul, *makro, *auswahl, *vbaClp, *check1, *check2, *optKlassisch, *optGenau,
        *optClass, *optStyle, *list2, *htmClp, *exportButton, *word, *frame1, *frame2,
        *framePreview;
    std::array<StatusWidget*, 3> status;
    Widget* progress;
    ToolBarWidget* toolBar;
  };

  frmVBACode& form_;
  UniqueMenu menu_;
  MenuDrawing menus_;
  UniqueAccelerators accelerators_;
  Controls controls_{};
  BrowserView browser_;
  Division division_;
  Splitter dragged_ = Splitter::None;
  bool previewShown_ = false;
  RECT statusLine_{};
  bool progressShown_ = false;
  std::array<int, 3> statusWidths_{};
};

}  // namespace tintline
