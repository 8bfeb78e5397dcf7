// The model of a list box with extended selection. The lines live here and only
// here: the view asks for those that it draws.
//
// Tested by tests/app/ and tests/unit/app/controls_test.cpp.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/controls/control.h"
#include "app/controls/line_colors.h"
#include "base/codepage.h"
#include "base/line_list.h"

namespace tintline {

class ListBox : public Control {
 public:
  static constexpr std::ptrdiff_t kNone = -1;

  const LineList& lines() const { return lines_; }
  std::size_t ListCount() const { return lines_.size(); }

  // What the bytes of the lines are, and a line as the user reads it.
  TextEncoding encoding() const { return encoding_; }
  std::wstring text(std::size_t index) const { return toWide(lines_[index], encoding_); }

  // Adds a line, not selected: at the end, or in front of line `index` (at most
  // ListCount()). The selection and the current item stay with their lines.
  void AddItem(std::string_view line) { AddItem(line, ListCount()); }
  void AddItem(std::string_view line, std::size_t index);

  // No lines, no selection. Those that come now are of that encoding.
  void Clear(TextEncoding encoding = TextEncoding::Ansi);

  // Replaces all lines; nothing is selected then.
  void setLines(LineList lines, TextEncoding encoding = TextEncoding::Ansi);

  // The current item, or kNone; an index without a line counts as kNone.
  std::ptrdiff_t ListIndex() const { return listIndex_; }
  void setListIndex(std::ptrdiff_t index);

  // The selection, one flag a line.
  const std::vector<bool>& selection() const { return selected_; }
  bool Selected(std::size_t index) const { return selected_[index]; }
  void setSelected(std::size_t index, bool selected);
  void selectAll();

  // Selects that item alone and makes it the current one.
  void selectOnly(std::size_t index);
  std::size_t SelCount() const { return selectedCount_; }

  // What is selected, and the current item.
  struct Marks {
    std::vector<bool> selection;
    std::ptrdiff_t listIndex;
  };
  Marks marks() const { return {selected_, listIndex_}; }

  // Sets them again, when there are as many lines as there were.
  void setMarks(Marks marks);

  // Brings that line to the top of the list, or as far up as the lines behind it allow.
  void scrollTo(std::size_t index) { setPlace({index, place().left}); }

  // Where the list is scrolled to: the line at its top, and pixels sideways.
  struct Place {
    std::size_t top = 0;
    int left = 0;
  };
  Place place() const { return shownPlace ? shownPlace() : wantedPlace_; }
  void setPlace(Place place);
  Place wantedPlace() const { return wantedPlace_; }
  std::function<Place()> shownPlace;  // set by the view, which knows

  // How its lines are coloured.
  Property<LineInks> Inks{*this, {}};

  // What an empty list says.
  Property<std::wstring> Hint{*this, {}};

  // The range that can be scrolled through sideways, in pixels.
  Property<int> HorizontalExtent{*this, 0};

  // Grows whenever lines or selection change from here, or a line is scrolled to: how a view
  // knows whether what it shows is still right.
  unsigned lineVersion() const { return lineVersion_; }
  unsigned selectionVersion() const { return selectionVersion_; }
  unsigned scrollVersion() const { return scrollVersion_; }

  // The view reports what the user selected and where the focus is; then comes Click.
  void userSelected(std::vector<bool> selection, std::ptrdiff_t listIndex);
  Event Click;
  Event DblClick;

 private:
  void take(Marks marks);
  std::ptrdiff_t existing(std::ptrdiff_t index) const;

  LineList lines_;
  TextEncoding encoding_ = TextEncoding::Ansi;
  std::vector<bool> selected_;
  std::size_t selectedCount_ = 0;
  std::ptrdiff_t listIndex_ = kNone;
  unsigned lineVersion_ = 0;
  unsigned selectionVersion_ = 0;
  Place wantedPlace_;
  unsigned scrollVersion_ = 0;
};

}  // namespace tintline
