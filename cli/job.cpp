// The work on one input. See job.h.
// Tested by tests/golden/run.py and tests/cli/run.py.
#include "cli/job.h"

#include <optional>
#include <utility>
#include <vector>

#include "convert/reformatting.h"
#include "engine/line_highlighter.h"

namespace tintline {
namespace {

ModuleSource readSource(std::string_view file, bool pasted) {
  ModuleSource source = readClassic(file, pasted);
  if (source.tooManyLines) throw JobError(L"mehr als " + std::to_wstring(kMaxLines) + L" Zeilen");
  return source;
}

void reformat(LineList& List1, const Reformatting& pass) {
  std::optional<LineList> lines = reformatted(List1, pass);
  if (!lines)
    throw JobError(L"mehr als " + std::to_wstring(kMaxLines) + L" Zeilen nach dem Umbruch");
  List1 = std::move(*lines);
}

// The lines to be converted one by one; nothing when all of them are converted as a module.
std::optional<std::vector<bool>> selectedLines(const Options& options, std::size_t count) {
  if (options.lines.empty() && options.format != Format::Table) return {};
  std::vector<bool> selected(count, options.lines.empty());
  for (const LineRange& range : options.lines) {
    if (range.last > count)
      throw JobError(L"--lines reicht über das Ende hinaus, letzte Zeile ist " +
                     std::to_wstring(count));
    for (std::size_t line = range.first; line <= range.last; ++line) selected[line - 1] = true;
  }
  return selected;
}

}  // namespace

Converted convertSource(std::string file, const JobSettings& settings) {
  const Options& options = settings.options;
  ModuleSource source = readSource(file, options.pasted);
  std::string().swap(file);  // its lines are kept: do not hold them twice
  using enum Reformatting::Pass;
  if (options.indent != 0) reformat(source.List1, {.pass = Formatieren, .unit = options.indent});
  if (options.wrap != 0)
    reformat(source.List1, {.pass = Umbruch, .unit = options.indent, .width = options.wrap});
  Highlighter highlighter(settings.keywords);  // its own: no state reaches the next input
  SilentObserver observer;
  const std::size_t lines = source.List1.size();
  return {.result = convertClassic(source.List1, source.ProzNamen, selectedLines(options, lines),
                                   {.lineNumbers = options.lineNumbers, .blnPaste = options.pasted},
                                   settings.frame, highlighter, observer),
          .ProzNamen = std::move(source.ProzNamen),
          .sourceLines = lines,
          .replaced = source.replaced};
}

void writeConverted(const Converted& converted, const JobSettings& settings, std::ostream& datei) {
  writeClassic(datei, settings.options.format, converted.result, converted.ProzNamen,
               settings.frame, settings.clipboard);
}

}  // namespace tintline
