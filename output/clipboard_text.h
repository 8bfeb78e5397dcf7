// The texts that copying puts on the clipboard and the lines that pasting makes
// of one.
//
// Tested by tests/unit/output/clipboard_text_test.cpp.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "sources/module_file_reader.h"

namespace tintline {

// One list of lines with the user's selection, however it is stored.
struct SelectableLines {
  std::size_t count;
  std::function<std::string_view(std::size_t)> line;
  std::function<bool(std::size_t)> selected;
};

// PreCode, the selected HTML lines, PostCode. All lines are taken only when
// nothing is selected and PreCode is empty: a PreCode alone is copied alone.
std::string HTMLKopieren(std::string_view PreCode, const SelectableLines& List2,
                         std::string_view PostCode);

// The selected source lines, or all when none is selected, each behind a CR LF.
std::string Kopieren(const SelectableLines& List1);

// The lines of a pasted text: split at carriage returns (line feeds where there
// are none), without tabs, each followed by one blank; with the procedure heads
// among them. An empty text gives no lines.
ModuleSource Einfügen(std::string_view text);

}  // namespace tintline
