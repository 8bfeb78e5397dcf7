// What holds for every rendered page, and pages of the sample modules.
#pragma once

#include <filesystem>
#include <sstream>
#include <string>

#include "base/file.h"
#include "base/resources.h"
#include "engine/keyword_table.h"
#include "output/html_document.h"
#include "output/rendered_page.h"
#include "sources/module_file_reader.h"
#include "tests/support/convert.h"

namespace tintline::test {

inline const std::wstring kRule(kRuleLength, kRuleCharacter);

// What is wrong with the page; "" when nothing is.
inline std::string faultOf(const RenderedPage& page) {
  std::size_t end = 0;
  for (const TextRun& run : page.runs) {
    if (run.start != end) return "a gap or overlap at " + std::to_string(run.start);
    if (run.length == 0) return "an empty run at " + std::to_string(run.start);
    if (run.looks.link && *run.looks.link >= page.targets.size()) return "a link to nowhere";
    end += run.length;
  }
  if (end != page.text.size()) return "runs end at " + std::to_string(end);
  std::size_t before = 0;
  for (const Anchor& anchor : page.anchors) {
    if (anchor.position < before || anchor.position > page.text.size())
      return "an anchor at " + std::to_string(anchor.position);
    before = anchor.position;
  }
  for (const wchar_t c : page.text)
    if (c < L' ' && c != L'\t' && c != L'\n') return "a control character";
  if (page.text.ends_with(L'\n')) return "a line end behind the last line";
  return {};
}

inline std::filesystem::path examplePath(const char* file) {
  return std::filesystem::path("data/examples") / file;
}

// The preview page of a sample module, as the program writes it.
inline std::string examplePage(const char* file, StyleMode style, bool lineNumbers) {
  static const KeywordTable table =
      StandardSchluesselworteLaden(programResource(101), programResource(102));
  const ModuleSource source = ModulDateiLesen(readFile(examplePath(file)));
  const DocumentFrame frame(defaultColors(), style);
  Highlighter highlighter(table);
  SilentObserver observer;
  const Conversion conversion =
      Verarbeiten(source.List1, source.ProzNamen, {.lineNumbers = lineNumbers, .blnPaste = false},
                  frame, highlighter, observer);
  std::ostringstream datei;
  HTMLDateierstellen(datei, frame, conversion.body());
  return datei.str();
}

}  // namespace tintline::test
