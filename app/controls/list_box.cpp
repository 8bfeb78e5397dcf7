// See list_box.h. Tested by tests/app/ and tests/unit/app/controls_test.cpp.
#include "app/controls/list_box.h"

#include <algorithm>
#include <utility>

namespace tintline {

void ListBox::AddItem(std::string_view line, std::size_t index) {
  const bool moves = index < lines_.size();
  lines_.insert(index, line);
  selected_.insert(selected_.begin() + static_cast<std::ptrdiff_t>(index), false);
  if (moves && listIndex_ >= static_cast<std::ptrdiff_t>(index)) ++listIndex_;
  if (moves) ++selectionVersion_;
  ++lineVersion_;
  changed();
}

void ListBox::Clear(TextEncoding encoding) { setLines({}, encoding); }

void ListBox::setLines(LineList lines, TextEncoding encoding) {
  lines_ = std::move(lines);
  encoding_ = encoding;
  selected_.assign(lines_.size(), false);
  selectedCount_ = 0;
  listIndex_ = kNone;
  ++lineVersion_;
  ++selectionVersion_;
  changed();
}

void ListBox::setListIndex(std::ptrdiff_t index) {
  index = existing(index);
  if (index == listIndex_) return;
  listIndex_ = index;
  ++selectionVersion_;
  changed();
}

void ListBox::setSelected(std::size_t index, bool selected) {
  if (selected_[index] == selected) return;
  selected_[index] = selected;
  selectedCount_ += selected ? 1 : -1;
  ++selectionVersion_;
  changed();
}

void ListBox::selectAll() {
  selected_.assign(lines_.size(), true);
  selectedCount_ = lines_.size();
  ++selectionVersion_;
  changed();
}

void ListBox::selectOnly(std::size_t index) {
  selected_.assign(lines_.size(), false);
  selected_[index] = true;
  selectedCount_ = 1;
  listIndex_ = static_cast<std::ptrdiff_t>(index);
  ++selectionVersion_;
  changed();
}

void ListBox::setMarks(Marks marks) {
  if (marks.selection.size() != lines_.size()) return;
  take(std::move(marks));
  ++selectionVersion_;
  changed();
}

void ListBox::setPlace(Place place) {
  wantedPlace_ = place;
  ++scrollVersion_;
  changed();
}

void ListBox::userSelected(std::vector<bool> selection, std::ptrdiff_t listIndex) {
  selection.resize(lines_.size());
  take({std::move(selection), listIndex});
  if (Click) Click();
}

void ListBox::take(Marks marks) {
  selected_ = std::move(marks.selection);
  selectedCount_ = static_cast<std::size_t>(std::count(selected_.begin(), selected_.end(), true));
  listIndex_ = existing(marks.listIndex);
}

std::ptrdiff_t ListBox::existing(std::ptrdiff_t index) const {
  return index >= 0 && index < static_cast<std::ptrdiff_t>(ListCount()) ? index : kNone;
}

}  // namespace tintline
