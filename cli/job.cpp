// The work on one input. See job.h.
// Tested by tests/unit/cli/job_test.cpp and tests/cli/run.py.
#include "cli/job.h"

#include <optional>
#include <utility>
#include <vector>

#include "engine/conversion.h"
#include "engine/line_highlighter.h"
#include "output/clipboard_text.h"
#include "output/html_document.h"
#include "reformat/indentation.h"
#include "reformat/selection.h"
#include "reformat/wrapping.h"
#include "sources/module_file_reader.h"
#include "sources/pasted_text.h"

namespace tintline {
namespace {

ModuleSource readSource(std::string_view file, bool pasted) {
  ModuleSource source = pasted ? Einfügen(decodeModuleText(file)) : ModulDateiLesen(file);
  if (source.tooManyLines) throw JobError(L"mehr als " + std::to_wstring(kMaxLines) + L" Zeilen");
  return source;
}

// Every pass of "format" indents anew from the trimmed line, so the last of
// `presses` passes alone gives what all of them give.
void indent(LineList& List1, int presses) {
  if (presses == 0) return;
  int unit = presses - 1;
  List1 = Formatieren(List1, unit);
}

void wrap(LineList& List1, int width, int unit) {
  std::optional<LineList> wrapped = wrapLines(List1, width, unit);
  if (!wrapped)
    throw JobError(L"mehr als " + std::to_wstring(kMaxLines) + L" Zeilen nach dem Umbruch");
  List1 = std::move(*wrapped);
}

// Without ranges all lines are selected.
std::vector<bool> selectedLines(const std::vector<LineRange>& ranges, std::size_t count) {
  std::vector<bool> selected(count, ranges.empty());
  for (const LineRange& range : ranges) {
    if (range.last > count)
      throw JobError(L"--lines reicht über das Ende hinaus, letzte Zeile ist " +
                     std::to_wstring(count));
    for (std::size_t line = range.first; line <= range.last; ++line) selected[line - 1] = true;
  }
  return selected;
}

std::string clipboardText(const HtmlLines& List2, const JobSettings& settings) {
  const SelectableLines lines{.count = List2.size(),
                              .line = [&](std::size_t index) { return List2[index]; },
                              .selected = [](std::size_t) { return true; }};
  return HTMLKopieren(settings.PreCode, lines, settings.PostCode);
}

}  // namespace

Converted convertSource(std::string file, const JobSettings& settings) {
  const Options& options = settings.options;
  ModuleSource source = readSource(file, options.pasted);
  std::string().swap(file);  // its lines are kept: do not hold them twice
  indent(source.List1, options.indent);
  if (options.wrap != 0) wrap(source.List1, options.wrap, options.indent);

  const ConversionOptions conversionOptions{.lineNumbers = options.lineNumbers,
                                            .blnPaste = options.pasted};
  Highlighter highlighter(settings.keywords);  // its own: no state reaches the next input
  SilentObserver observer;
  Converted converted;
  converted.sourceLines = source.List1.size();
  if (options.lines.empty() && options.format != Format::Table) {
    converted.List2 = Verarbeiten(source.List1, source.ProzNamen, conversionOptions, settings.frame,
                                  highlighter, observer)
                          .List2;
  } else {
    SelectionConversion selection =
        AuswahlKonvertieren(source.List1, selectedLines(options.lines, source.List1.size()),
                            conversionOptions, settings.frame, highlighter, observer);
    converted.List2 = std::move(selection.List2);
    converted.table = std::move(selection.table);
  }
  converted.ProzNamen = std::move(source.ProzNamen);
  return converted;
}

void writeConverted(const Converted& converted, const JobSettings& settings, std::ostream& datei) {
  const std::string_view body = converted.List2.text();
  switch (settings.options.format) {
    case Format::Page:
      return writeExport(datei, settings.frame, converted.ProzNamen, body);
    case Format::Body:
      datei << body;
      return;
    case Format::Lines:
      for (std::size_t i = 0; i < converted.List2.size(); ++i) datei << converted.List2[i] << '\n';
      return;
    case Format::Preview:
      return HTMLDateierstellen(datei, settings.frame, body);
    case Format::Clipboard:
      datei << clipboardText(converted.List2, settings);
      return;
    case Format::Table:
      datei << converted.table;
      return;
  }
}

}  // namespace tintline
