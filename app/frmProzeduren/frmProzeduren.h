// The dialog that goes to a procedure: a list of them, and a field that filters it.
//
// Tested by tests/app/search_test.cpp.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "app/controls/form.h"
#include "app/controls/list_box.h"
#include "app/line_search.h"

namespace tintline {

class frmProzeduren final : public Form {
 public:
  frmProzeduren();

  // Lets the user choose one; `current` is the line that he is in. Its line, or nothing.
  std::optional<std::size_t> choose(std::vector<ProcedureLine> procedures, std::size_t current);

  Label lblFilter;
  TextBox txtFilter;  // what its words are parts of is shown
  ListBox lstProzeduren;
  Label lblAnzahl;
  CommandButton OKButton;      // answers Enter
  CommandButton CancelButton;  // answers Escape and the close box

  // Makes the line the current one that is so many lines below.
  void move(std::ptrdiff_t lines);

 private:
  void Form_Load() override;
  void filter();
  void OKButton_Click();

  std::vector<ProcedureLine> procedures_;
  std::vector<std::size_t> shown_;  // those that the list shows
  std::size_t current_ = 0;
  std::optional<std::size_t> chosen_;
};

}  // namespace tintline
