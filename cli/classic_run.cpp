// A run in the classic mode. See classic_run.h.
// Tested by tests/golden/run.py and tests/cli/run.py.
#include "cli/classic_run.h"

#include <optional>
#include <utility>

#include "base/codepage.h"
#include "base/parallel.h"
#include "cli/job.h"
#include "cli/messages.h"
#include "convert/reformatting.h"
#include "convert/source_text.h"
#include "engine/line_highlighter.h"
#include "runs/office_inputs.h"

namespace tintline {
namespace {

// What all inputs are converted with.
struct Classic {
  const Options& options;
  const ClipboardFrame& clipboard;
  KeywordTable keywords;
  const ColorScheme& colors;
};

// How the bytes of an input are taken.
struct Decoding {
  std::optional<vb::CodePage> encoding;  // none: as they are
  std::string charset{};                 // told in its page, when that is not the usual one
};

struct Converted {
  ClassicResult result;
  ProcedureNames ProzNamen;
  std::size_t sourceLines;
  std::size_t replaced;  // characters that do not fit the code page
};

// The bytes of an Office module stay, too, in a page that tells their code page. Where browsers do
// not know that, or text is wanted, they become text of the usual one.
Decoding decodingOf(const Input& input, const Options& options) {
  if (!input.module) return {.encoding = options.encoding};
  const vb::CodePage page = input.module->codePage;
  if (options.encoding) return {.encoding = page};
  if (page == ansiCodePage()) return {};
  std::string charset = htmlCharset(page);
  if (charset.empty()) return {.encoding = page};
  return {.encoding = {}, .charset = std::move(charset)};
}

ModuleSource readSource(std::string_view file, const Options& options, const Decoding& decoding) {
  ModuleSource source = readClassic(file, options.pasted, decoding.encoding);
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

Converted convertSource(std::string file, const Classic& classic, const Decoding& decoding,
                        const DocumentFrame& frame) {
  const Options& options = classic.options;
  ModuleSource source = readSource(file, options, decoding);
  std::string().swap(file);  // its lines are kept: do not hold them twice
  for (const Reformatting& pass : passesOf(options)) reformat(source.List1, pass);
  Highlighter highlighter(classic.keywords);  // its own: no state reaches the next input
  SilentObserver observer;
  const std::size_t lines = source.List1.size();
  return {.result = convertClassic(source.List1, source.ProzNamen, selectedLines(options, lines),
                                   {.lineNumbers = options.lineNumbers, .blnPaste = options.pasted},
                                   frame, highlighter, observer),
          .ProzNamen = std::move(source.ProzNamen),
          .sourceLines = lines,
          .replaced = source.replaced};
}

Outcome convert(const Task& task, const Classic& classic, const Surroundings& surroundings) {
  const Decoding decoding = decodingOf(task.input, classic.options);
  const DocumentFrame frame(classic.colors, classic.options.style, decoding.charset);
  const Converted converted = convertSource(readInput(task.input), classic, decoding, frame);
  writeTarget(task, classic.options, surroundings, [&](std::ostream& datei) {
    writeClassic(datei, classic.options.format, converted.result, converted.ProzNamen, frame,
                 classic.clipboard);
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
                        .colors = settings.colors};
  const std::size_t jobs = jobsOf(options, tasks.size());
  const std::vector<std::size_t> order = workOrder(tasks, jobs);
  inParallel(order.size(), jobs, [&](std::size_t place) {
    const std::size_t index = order[place];
    report.finished(index, outcomeOf([&] { return convert(tasks[index], classic, surroundings); }));
  });
}

}  // namespace tintline
