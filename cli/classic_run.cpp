// A run in the classic mode. See classic_run.h.
// Tested by tests/golden/run.py and tests/cli/run.py.
#include "cli/classic_run.h"

#include <optional>
#include <utility>

#include "base/parallel.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "convert/reformatting.h"
#include "engine/line_highlighter.h"
#include "runs/office_inputs.h"

namespace tintline {
namespace {

// What all inputs are converted with.
struct Classic {
  const Options& options;
  const ClipboardFrame& clipboard;
  KeywordTable keywords;
  DocumentFrame frame;
};

struct Converted {
  ClassicResult result;
  ProcedureNames ProzNamen;
  std::size_t sourceLines;
  std::size_t replaced;  // characters that do not fit the code page
};

ModuleSource readSource(std::string_view file, const Options& options) {
  ModuleSource source = readClassic(file, options.pasted, options.encoding);
  if (source.tooManyLines) throw JobError(atLine(kMaxLines, messages::kTooManyLines(kMaxLines)));
  return source;
}

void reformat(LineList& List1, const Reformatting& pass) {
  std::optional<LineList> lines = reformatted(List1, pass);
  if (!lines) throw JobError(messages::kTooManyLinesWrapped(kMaxLines));
  List1 = std::move(*lines);
}

// The lines to be converted one by one; nothing when all of them are converted as a module.
std::optional<std::vector<bool>> selectedLines(const Options& options, std::size_t count) {
  if (options.lines.empty() && options.format != Format::Table) return {};
  checkLines(options.lines, count);
  std::vector<bool> selected(count, options.lines.empty());
  for (const LineRange& range : options.lines)
    for (std::size_t line = range.first; line <= range.last; ++line) selected[line - 1] = true;
  return selected;
}

Converted convertSource(std::string file, const Classic& classic) {
  const Options& options = classic.options;
  ModuleSource source = readSource(file, options);
  std::string().swap(file);  // its lines are kept: do not hold them twice
  for (const Reformatting& pass : passesOf(options)) reformat(source.List1, pass);
  Highlighter highlighter(classic.keywords);  // its own: no state reaches the next input
  SilentObserver observer;
  const std::size_t lines = source.List1.size();
  return {.result = convertClassic(source.List1, source.ProzNamen, selectedLines(options, lines),
                                   {.lineNumbers = options.lineNumbers, .blnPaste = options.pasted},
                                   classic.frame, highlighter, observer),
          .ProzNamen = std::move(source.ProzNamen),
          .sourceLines = lines,
          .replaced = source.replaced};
}

Outcome convert(const Task& task, const Classic& classic, const Surroundings& surroundings) {
  // An Office module is read as the editor shows it, as if its application were running.
  const OfficeModule* const office = task.input.module.get();
  const Converted converted =
      convertSource(office != nullptr ? office->code : readInput(task.input), classic);
  writeTarget(task, classic.options, surroundings, [&](std::ostream& datei) {
    writeClassic(datei, classic.options.format, converted.result, converted.ProzNamen,
                 classic.frame, classic.clipboard);
  });
  return {.failure = {},
          .warning = warningOf(task.input, replacedText(converted.replaced)),
          .sourceLines = converted.sourceLines};
}

}  // namespace

void runClassic(const std::vector<Task>& tasks, const Options& options, const Settings& settings,
                const Surroundings& surroundings, Report& report) {
  const Classic classic{.options = options,
                        .clipboard = settings.clipboard,
                        .keywords = classicKeywords(settings),
                        .frame = DocumentFrame(settings.colors, options.style)};
  const std::size_t jobs = jobsOf(options, tasks.size());
  const std::vector<std::size_t> order = workOrder(tasks, jobs);
  inParallel(order.size(), jobs, [&](std::size_t place) {
    const std::size_t index = order[place];
    report.finished(index, outcomeOf([&] { return convert(tasks[index], classic, surroundings); }));
  });
}

}  // namespace tintline
