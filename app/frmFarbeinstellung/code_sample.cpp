// See code_sample.h. Tested by tests/unit/app/dialogs_test.cpp.
#include "app/frmFarbeinstellung/code_sample.h"

#include <algorithm>
#include <sstream>

#include "base/codepage.h"
#include "base/resources.h"
#include "convert/classic.h"
#include "convert/exact.h"
#include "convert/exact_source.h"
#include "engine/keyword_table.h"
#include "output/html_document.h"

namespace tintline {
namespace {

// All five categories occur.
constexpr const wchar_t* kCode =
    L"Sub Anzeigen(ByVal Betrag As Long)\r\n"
    L"    ' Nur große Beträge\r\n"
    L"    If Betrag > 1000 Then\r\n"
    L"        MsgBox \"Hoch\", Buttons:=vbYesNo\r\n"
    L"    End If\r\n"
    L"End Sub\r\n";

RenderedPage classicPage(const ColorScheme& colors) {
  static const KeywordTable kWords =
      StandardSchluesselworteLaden(programResource(101), programResource(102));
  const ModuleSource source = readClassic(toAnsi(kCode), false);
  const DocumentFrame frame(colors, StyleMode::Class);
  Highlighter highlighter(kWords);
  SilentObserver nobody;
  const ClassicResult result =
      convertClassic(source.List1, source.ProzNamen, {}, {}, frame, highlighter, nobody);
  std::ostringstream page;
  HTMLDateierstellen(page, frame, result.body());
  return renderPage(page.str());
}

RenderedPage exactPage(const ColorScheme& colors) {
  ExactSource source;
  source.append(exactText(kCode));
  listing::Options options;
  options.colors = exactColors(colors);
  return renderPage(convertExact(source, {}, options, {}, u8"").page);
}

std::vector<CodeSample::Line> linesOf(const RenderedPage& page) {
  std::vector<CodeSample::Line> lines(1);
  for (const TextRun& run : page.runs) {
    std::wstring_view rest = std::wstring_view(page.text).substr(run.start, run.length);
    for (std::size_t end; !rest.empty(); rest.remove_prefix(end)) {
      if (rest.front() == L'\n') {
        lines.emplace_back();
        end = 1;
      } else {
        end = std::min(rest.find(L'\n'), rest.size());
        lines.back().pieces.push_back({std::wstring(rest.substr(0, end)), run.looks});
      }
    }
  }
  return lines;
}

bool isBlankOrRule(const CodeSample::Line& line) {
  return line.pieces.empty() || line.pieces.front().text.front() == kRuleCharacter;
}

// What is above the code has no place in a sample, nor has what stands between its lines.
void keepCode(std::vector<CodeSample::Line>& lines) {
  std::erase_if(lines, isBlankOrRule);
  const auto count = std::ranges::count(std::wstring_view(kCode), L'\n');
  if (lines.size() > static_cast<std::size_t>(count))
    lines.erase(lines.begin(), lines.end() - count);
}

}  // namespace

std::wstring CodeSample::text() const {
  std::wstring result;
  for (const Line& line : lines) {
    for (const Piece& piece : line.pieces) result += piece.text;
    result += L"\r\n";
  }
  return result;
}

CodeSample codeSample(Mode mode, const ColorScheme& colors) {
  CodeSample sample;
  sample.lines = linesOf(mode == Mode::Classic ? classicPage(colors) : exactPage(colors));
  keepCode(sample.lines);
  if (mode == Mode::Classic) return sample;
  const listing::Palette palette = listing::lightPalette(exactColors(colors));
  sample.ink = palette[static_cast<std::size_t>(listing::Tint::Text)];
  sample.ground = palette[static_cast<std::size_t>(listing::Tint::Page)];
  for (CodeSample::Line& line : sample.lines)  // the heads of procedures are blocks
    line.ground = line.pieces.front().looks.background;
  return sample;
}

}  // namespace tintline
