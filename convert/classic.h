// The classic conversion as a whole: from the bytes of a file, or lines that came from
// elsewhere, to a result and each of its forms. The command line and the window both ask here.
//
// Tested by tests/golden/run.py and tests/cli/run.py.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "base/message.h"
#include "convert/format.h"
#include "engine/conversion.h"
#include "sources/module_file_reader.h"
#include "vb/text.h"

namespace tintline {

struct ClassicResult {
  HtmlLines List2;    // the HTML lines, also those of an aborted run
  std::string table;  // of chosen lines only: the same lines as table rows
  bool aborted = false;

  // The HTML text, "" after an abort.
  std::string_view body() const { return aborted ? std::string_view() : List2.text(); }
};

// The lines of a source: of the bytes of its file, or of such that were pasted. `encoding` is a
// code page or kAutomatic; without it they are taken as 8-bit text or, by a mark, UTF-16.
ModuleSource readClassic(std::string_view file, bool pasted,
                         std::optional<vb::CodePage> encoding = {});

// The warning about characters that did not fit (ModuleSource::replaced), empty when all did.
Message replacedText(std::size_t replaced);

// Converts all lines or, one by one, those whose flag in `selected` (one a line) is set. Throws
// std::length_error and std::overflow_error when the result would be too large.
ClassicResult convertClassic(const LineList& List1, const ProcedureNames& ProzNamen,
                             const std::optional<std::vector<bool>>& selected,
                             const ConversionOptions& options, const DocumentFrame& frame,
                             Highlighter& highlighter, ConversionObserver& observer);

// What the user wants in front of and behind copied HTML lines.
struct ClipboardFrame {
  std::string PreCode;
  std::string PostCode;
};

// Writes a result in one of the forms that the classic mode has.
void writeClassic(std::ostream& datei, Format format, const ClassicResult& result,
                  const ProcedureNames& ProzNamen, const DocumentFrame& frame,
                  const ClipboardFrame& clipboard);

}  // namespace tintline
