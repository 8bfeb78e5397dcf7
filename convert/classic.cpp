// The classic conversion as a whole. See classic.h.
// Tested by tests/golden/run.py and tests/cli/run.py.
#include "convert/classic.h"

#include <utility>

#include "convert/source_text.h"
#include "output/clipboard_text.h"
#include "output/html_document.h"
#include "reformat/selection.h"
#include "sources/pasted_text.h"

namespace tintline {
namespace {

std::string clipboardText(const HtmlLines& List2, const ClipboardFrame& clipboard) {
  const SelectableLines lines{.count = List2.size(),
                              .line = [&](std::size_t index) { return List2[index]; },
                              .selected = [](std::size_t) { return true; }};
  return HTMLKopieren(clipboard.PreCode, lines, clipboard.PostCode);
}

}  // namespace

ModuleSource readClassic(std::string_view file, bool pasted, std::optional<vb::CodePage> encoding) {
  std::size_t lost = 0, lostOfMarked = 0;
  const std::string decoded = encoding ? ansiSource(file, *encoding, lost) : std::string();
  if (encoding) file = decoded;
  ModuleSource source =
      pasted ? Einfügen(decodeModuleText(file, &lostOfMarked)) : ModulDateiLesen(file);
  source.replaced += lost + lostOfMarked;
  return source;
}

Message replacedText(std::size_t replaced) {
  static constexpr Text<0> kOne{"characters-lost",
                                L"1 character does not fit the code page and became \"?\"",
                                L"1 Zeichen passt nicht in die Codepage und wurde zu \"?\""};
  static constexpr Text<1> kMany{"characters-lost",
                                 L"{1} characters do not fit the code page and became \"?\"",
                                 L"{1} Zeichen passen nicht in die Codepage und wurden zu \"?\""};
  if (replaced == 0) return {};
  return replaced == 1 ? kOne() : kMany(replaced);
}

ClassicResult convertClassic(const LineList& List1, const ProcedureNames& ProzNamen,
                             const std::optional<std::vector<bool>>& selected,
                             const ConversionOptions& options, const DocumentFrame& frame,
                             Highlighter& highlighter, ConversionObserver& observer) {
  if (selected) {
    SelectionConversion selection =
        AuswahlKonvertieren(List1, *selected, options, frame, highlighter, observer);
    return {.List2 = std::move(selection.List2), .table = std::move(selection.table)};
  }
  Conversion conversion = Verarbeiten(List1, ProzNamen, options, frame, highlighter, observer);
  return {.List2 = std::move(conversion.List2), .table = {}, .aborted = conversion.aborted};
}

void writeClassic(std::ostream& datei, Format format, const ClassicResult& result,
                  const ProcedureNames& ProzNamen, const DocumentFrame& frame,
                  const ClipboardFrame& clipboard) {
  const std::string_view body = result.body();
  switch (format) {
    case Format::Page:
      return writeExport(datei, frame, ProzNamen, body);
    case Format::Body:
      datei << body;
      return;
    case Format::Lines:
      for (std::size_t i = 0; i < result.List2.size(); ++i) datei << result.List2[i] << '\n';
      return;
    case Format::Preview:
      return HTMLDateierstellen(datei, frame, body);
    case Format::Clipboard:
      datei << clipboardText(result.List2, clipboard);
      return;
    case Format::Table:
      datei << result.table;
      return;
    case Format::Rtf:
    case Format::Markdown:
    case Format::Json:
    case Format::Source:
    case Format::Csv:
      break;  // the exact mode's
  }
}

}  // namespace tintline
