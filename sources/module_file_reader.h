// Reads one module file (.bas, .frm, .cls) into source lines and collects the
// names of the procedures that it declares.
//
// Tested by tests/unit/sources/sources_test.cpp.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "base/line_list.h"
#include "engine/document_frame.h"

namespace tintline {

struct ModuleSource {
  LineList List1;             // every line as read, followed by one blank
  ProcedureNames ProzNamen;   // every name with one blank in front
  bool tooManyLines = false;  // the source goes on behind line 32,767; the rest was not read
  std::size_t replaced = 0;   // characters of a UTF-16 file that did not fit and became "?"
};

// Called after every line with the number of lines read so far.
using LineProgress = std::function<void(std::size_t lines)>;

// Reads a module from the bytes of its file. A line ends at a carriage return,
// with or without a line feed behind it; in a file without any carriage return,
// at a line feed. A UTF-8 byte-order mark is dropped, a UTF-16 file (byte-order
// mark) is converted to the ANSI code page.
ModuleSource ModulDateiLesen(std::string_view file, const LineProgress& progress = {});

// The bytes of a file as 8-bit text: byte-order marks handled as above. `replaced`, when given,
// is set to the number of characters that became "?".
std::string decodeModuleText(std::string_view file, std::size_t* replaced = nullptr);

// True when the line holds a procedure head by a plain word test: anywhere in
// the line, knowing nothing of comments or of "Property". Kept on purpose.
bool fkt_IstProzedurZeile(std::string_view line);

// If the line is a procedure head, adds its name (one blank in front) to the list.
void collectProcedureName(std::string_view line, ProcedureNames& ProzNamen);

}  // namespace tintline
