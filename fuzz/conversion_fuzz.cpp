// Fuzzes the runs over source lines (all lines, chosen lines, indentation) against the
// literal transcription of their rules.
//
// The input's last characters decide about options and names, which are stretches of the
// text in front of them; that text holds the lines.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cassert>

#include "base/text.h"
#include "reformat/indentation.h"
#include "reformat/selection.h"
#include "tests/support/convert.h"
#include "tests/support/literal_engine.h"

using namespace tintline;

namespace {

constexpr std::size_t kChoices = 24;  // characters of the input
constexpr std::size_t kMaxNames = 4;  // every name can multiply a line

const literal::KeywordLists kLists = {literal::KeywordText({"Dim", "Sub", "If", "Left$", "span"}),
                                      literal::KeywordText({"hwnd", "If", "class", "True"})};

struct Case {
  std::vector<std::string> lines;
  ProcedureNames names;
  std::vector<bool> selected;
  ConversionOptions options;
  StyleMode style;
  ColorScheme colors;
  int abortAt;
  int unit;
};

Case makeCase(std::string_view text, FuzzedDataProvider& choices) {
  Case made;
  for (const std::string_view line : Split(text, '\n')) made.lines.emplace_back(line);
  const auto stretch = [&](std::size_t longest) {
    const auto at = choices.ConsumeIntegralInRange<std::size_t>(0, text.size());
    return std::string(text.substr(at, choices.ConsumeIntegralInRange<std::size_t>(0, longest)));
  };
  made.options = {.lineNumbers = choices.ConsumeBool(), .blnPaste = choices.ConsumeBool()};
  made.style = choices.ConsumeBool() ? StyleMode::Inline : StyleMode::Class;
  made.colors = test::defaultColors();
  made.abortAt = choices.ConsumeIntegralInRange(-20, 10);
  made.unit = choices.ConsumeIntegralInRange(0, 3);
  for (auto more = choices.ConsumeIntegralInRange<std::size_t>(0, kMaxNames); more > 0; --more)
    made.names.push_back(" " + stretch(10));
  if (choices.ConsumeBool()) {
    auto& category =
        made.colors[choices.ConsumeIntegralInRange<std::size_t>(0, kColorCategories - 1)];
    category[kTextColor] = stretch(13);
    category[kTransparency] = stretch(4);
  }
  const auto selection = choices.ConsumeIntegral<std::uint8_t>();
  for (std::size_t i = 0; i < made.lines.size(); ++i)
    made.selected.push_back((selection >> i % 8 & 1) != 0);
  return made;
}

// Esc is pressed at a line, from 0.
struct Escape final : SilentObserver {
  explicit Escape(int line) : linesLeft(line) {}
  bool abortRequested() override { return linesLeft-- == 0; }
  int linesLeft;
};

literal::Colours literalColours(const ColorScheme& colors) {
  literal::Colours result;
  for (std::size_t category = 0; category < kColorCategories; ++category)
    std::ranges::copy(colors[category], result.fields[category]);
  return result;
}

void checkLines(const HtmlLines& List2, const literal::Result& expected) {
  assert(test::strings(List2) == expected.List2);
  for (std::size_t i = 0; i < List2.size(); ++i)
    assert((List2.route(i) == Route::Wrapper) == expected.wrapped[i]);
}

void checkRun(const Case& c, const KeywordTable& table) {
  Highlighter fast(table);
  Escape observer(c.abortAt);
  const Conversion run = Verarbeiten(test::lineList(c.lines), c.names, c.options,
                                     DocumentFrame(c.colors, c.style), fast, observer);
  literal::Highlighter slow(kLists);
  const literal::Result expected = literal::Verarbeiten(
      c.lines, c.names, {c.options.lineNumbers, c.style == StyleMode::Inline, c.options.blnPaste},
      literalColours(c.colors), slow, c.abortAt);
  checkLines(run.List2, expected);
  assert(run.body() == expected.html);
  assert(run.aborted == expected.aborted);
  assert(run.body().empty() == (run.aborted || c.lines.empty()));
  for (std::size_t i = 1; i < run.List2.size(); ++i)  // the lines follow each other in the text
    assert(run.List2[i - 1].data() + run.List2[i - 1].size() < run.List2[i].data());
}

void checkSelection(const Case& c, const KeywordTable& table) {
  Highlighter fast(table);
  SilentObserver observer;
  const SelectionConversion run =
      AuswahlKonvertieren(test::lineList(c.lines), c.selected, c.options,
                          DocumentFrame(c.colors, c.style), fast, observer);
  literal::Highlighter slow(kLists);
  const literal::Result expected = literal::AuswahlKonvertieren(
      c.lines, c.selected, {c.options.lineNumbers, c.style == StyleMode::Inline},
      literalColours(c.colors), slow);
  checkLines(run.List2, expected);
  assert(run.body() == expected.html);
  assert(run.table == expected.table);
}

// Only the blanks in front of lines change, and a second pass finds nothing left to do.
void checkIndentation(const Case& c) {
  int unit = c.unit, again = c.unit;
  const LineList once = Formatieren(test::lineList(c.lines), unit);
  assert(once.size() == c.lines.size());
  for (std::size_t i = 0; i < once.size(); ++i) assert(LTrim(once[i]) == LTrim(c.lines[i]));
  assert(test::strings(Formatieren(once, again)) == test::strings(once));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const KeywordTable table(kLists.Keywords1, kLists.Keywords2);
  const std::size_t tail = std::min(size, kChoices);
  FuzzedDataProvider choices(data + size - tail, tail);
  const std::string_view text(reinterpret_cast<const char*>(data), size - tail);
  const Case made = makeCase(text, choices);
  checkSelection(made, table);
  checkIndentation(made);
  checkRun(made, table);
  return 0;
}
