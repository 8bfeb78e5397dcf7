// The language layer part by part, over modules made by bench/corpus.h. Bytes are those of the
// source.
#include <benchmark/benchmark.h>

#include <string>

#include "bench/corpus.h"
#include "vb/text.h"
#include "vb/tokenizer.h"

namespace tintline::bench {
namespace {

std::string moduleText() { return ModuleWriter(200 * kKB, 280, 42).write().text; }

void Decoding(benchmark::State& state) {
  std::string text = moduleText();
  for (std::size_t i = 0; i < text.size(); i += 100)  // some letters beyond ASCII
    if (text[i] >= 'a' && text[i] <= 'z') text[i] = '\xFC';
  for (auto _ : state) benchmark::DoNotOptimize(vb::decode(text));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(Decoding);

void Tokenizer(benchmark::State& state) {
  const std::u8string text = vb::decode(moduleText()).text;
  const vb::WordLists words;
  std::size_t tokens = 0;
  for (auto _ : state) tokens = vb::tokenize(text, words).size();
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(tokens));
}
BENCHMARK(Tokenizer);

void Words(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(vb::WordLists());
}
BENCHMARK(Words)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tintline::bench
