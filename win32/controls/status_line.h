// The status line: labels side by side that share the line as their texts need.
//
// Tested by tests/win32/controls/layout_test.cpp.
#pragma once

#include <windows.h>

#include <array>
#include <functional>
#include <string>

#include "app/controls/control.h"
#include "win32/controls/widgets.h"

namespace tintline {

// The widths of three labels in a line of that width, by what their texts need. They have
// their usual places as long as every text fits: a quarter, a quarter, a half. Otherwise each
// gets what it needs; where that is more than there is, the longest are cut alike.
std::array<int, 3> shareLine(int width, const std::array<int, 3>& needed);

// The text with as much of its middle left out as it takes to fit. Where there is room, all of
// what ends it stays: a path's file name, or the reason behind a name ("a.bas: …").
std::wstring shortened(const std::wstring& text,
                       const std::function<bool(const std::wstring&)>& fits);

// A label in the status line: drawn in one go, so that quick changes do not flicker. What there
// is no room for can be read as its tool tip.
class StatusWidget final : public LabelWidget {
 public:
  StatusWidget(WidgetHost& host, Label& model, int id);
  void setFont(HFONT font, unsigned dpi) override;
  void draw(const DRAWITEMSTRUCT& item) override;
  HCURSOR pointer() const override;  // a hand over what can be clicked

  // The width of the whole text; 0 for none.
  int needed() const;

 private:
  bool isLink() const;
  static void underline(HDC dc, const RECT& area, const std::wstring& text, int top);
  void tellWhole(bool cut);

  HFONT font_ = nullptr;
  std::wstring tip_;
};

}  // namespace tintline
