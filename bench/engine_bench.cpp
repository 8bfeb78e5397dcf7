// The parts of a conversion one by one, each over modules made by bench/corpus.h.
// Bytes are those of the source, items are source lines.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "base/resources.h"
#include "bench/corpus.h"
#include "engine/color_scheme.h"
#include "engine/conversion.h"
#include "engine/document_frame.h"
#include "engine/line_highlighter.h"
#include "sources/module_file_reader.h"

namespace tintline::bench {
namespace {

constexpr std::size_t kBytes = 200 * kKB, kProcedures = 280;

const KeywordTable& keywords() {
  static const KeywordTable table =
      StandardSchluesselworteLaden(programResource(101), programResource(102));
  return table;
}

DocumentFrame frame(StyleMode mode) {
  ColorScheme colors;
  modColor::Farbesetzen(colors);
  return DocumentFrame(colors, mode);
}

std::string moduleText(std::size_t factor = 1) {
  return ModuleWriter(factor * kBytes, factor * kProcedures, 42).write().text;
}

// Names of the length of real ones, none of which any line holds.
ProcedureNames absentNames(std::size_t count) {
  ProcedureNames names;
  for (std::size_t i = 0; i < count; ++i)
    names.push_back(" " + std::string(kNouns[i % kNouns.size()]) +
                    std::string(kVerbs[i / kNouns.size() % kVerbs.size()]) + "Neu" +
                    std::to_string(i));
  return names;
}

void count(benchmark::State& state, std::size_t bytes, std::size_t lines) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(lines));
}

void convert(benchmark::State& state, const std::string& text, const ProcedureNames* names,
             StyleMode mode, bool lineNumbers = false) {
  const ModuleSource source = ModulDateiLesen(text);
  const DocumentFrame look = frame(mode);
  const ConversionOptions options{.lineNumbers = lineNumbers};
  for (auto _ : state) {
    Highlighter highlighter(keywords());
    SilentObserver observer;
    benchmark::DoNotOptimize(Verarbeiten(source.List1, names ? *names : source.ProzNamen, options,
                                         look, highlighter, observer));
  }
  count(state, text.size(), source.List1.size());
}

void Reader(benchmark::State& state) {
  const std::string text = moduleText();
  std::size_t lines = 0;
  for (auto _ : state) lines = ModulDateiLesen(text).List1.size();
  count(state, text.size(), lines);
}
BENCHMARK(Reader);

void LineHighlighter(benchmark::State& state) {
  const std::string text = moduleText();
  const ModuleSource source = ModulDateiLesen(text);
  for (auto _ : state) {
    Highlighter highlighter(keywords());
    for (std::size_t i = 0; i < source.List1.size(); ++i)
      benchmark::DoNotOptimize(highlighter.fkt_ZeileKonvertieren(source.List1[i]));
  }
  count(state, text.size(), source.List1.size());
}
BENCHMARK(LineHighlighter);

void ReplaceStyle(benchmark::State& state) {
  const std::string text = moduleText();
  const ModuleSource source = ModulDateiLesen(text);
  Highlighter highlighter(keywords());
  SilentObserver observer;
  const Conversion done = Verarbeiten(source.List1, source.ProzNamen, {}, frame(StyleMode::Class),
                                      highlighter, observer);
  const DocumentFrame look = frame(StyleMode::Inline);
  for (auto _ : state)
    for (std::size_t i = 0; i < done.List2.size(); ++i)
      benchmark::DoNotOptimize(look.fkt_ReplaceStyle(done.List2[i]));
  count(state, done.body().size(), done.List2.size());
}
BENCHMARK(ReplaceStyle);

void DriverAbsentNames(benchmark::State& state) {
  const ProcedureNames names = absentNames(static_cast<std::size_t>(state.range(0)));
  convert(state, moduleText(), &names, StyleMode::Class);
}
BENCHMARK(DriverAbsentNames)->Arg(0)->Arg(10)->Arg(100)->Arg(500)->Arg(1000);

void DriverOwnNames(benchmark::State& state) {
  convert(state, moduleText(), nullptr, StyleMode::Class);
}
BENCHMARK(DriverOwnNames);

void DriverLineNumbers(benchmark::State& state) {
  convert(state, moduleText(), nullptr, StyleMode::Class, true);
}
BENCHMARK(DriverLineNumbers);

void DriverInline(benchmark::State& state) {
  convert(state, moduleText(), nullptr, StyleMode::Inline);
}
BENCHMARK(DriverInline);

// The module that many times as long, with as many times the procedures.
void DriverGrowth(benchmark::State& state) {
  convert(state, moduleText(static_cast<std::size_t>(state.range(0))), nullptr, StyleMode::Class);
}
BENCHMARK(DriverGrowth)->Arg(1)->Arg(2)->Arg(4)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tintline::bench
