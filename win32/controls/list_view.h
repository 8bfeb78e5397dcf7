// A real list box over the lines of a ListBox: it holds no lines of its own but draws
// those that show.
//
// Tested by tests/win32/controls/list_view_test.cpp.
#pragma once

#include <windows.h>

#include <functional>
#include <string_view>

#include "app/controls/list_box.h"
#include "win32/controls/fonts.h"
#include "win32/controls/gdi.h"
#include "win32/controls/widget.h"

namespace tintline {

class ListView final : public Widget {
 public:
  // `designCharacterWidth`: of the list font at 96 dpi, in which the model's
  // HorizontalExtent is measured.
  ListView(WidgetHost& host, ListBox& model, int id, int designCharacterWidth);
  ~ListView() override;

  // Called when the list gets or loses the keyboard.
  std::function<void(bool)> focused;

  void setFont(HFONT font, unsigned dpi) override;
  void command(WORD code) override;
  void draw(const DRAWITEMSTRUCT& item) override;

 private:
  void show() override;
  void showLines();
  void showSelection();
  void showCurrent();
  void showExtent();
  void showPlace(ListBox::Place place);
  std::wstring spokenName() const;
  void userSelected();
  void rightPressed(LPARAM place);
  void drawLine(const DRAWITEMSTRUCT& item) const;
  bool setColors(const DRAWITEMSTRUCT& item) const;
  void drawHint() const;
  bool isCurrent(const DRAWITEMSTRUCT& item) const;
  LRESULT copyLine(std::size_t index, char* buffer) const;
  LRESULT copyText(std::size_t index, wchar_t* buffer) const;
  static LRESULT CALLBACK listProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                        UINT_PTR, DWORD_PTR self);

  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(hwnd(), message, wParam, lParam);
  }

  ListBox& model_;
  int designCharacterWidth_;
  UniqueFont font_;
  CharacterSize character_{1, 1};
  unsigned shownLines_ = 0, shownSelection_ = 0, shownScroll_ = 0;  // versions of the model
  int shownExtent_ = -1;
  std::wstring shownHint_;
  LineInks shownInks_;
  HFONT hintFont_ = nullptr;
};

}  // namespace tintline
