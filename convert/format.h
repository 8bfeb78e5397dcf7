// What is made of a source: by which conversion, and in which form.
//
// Tested by tests/unit/cli/cli_test.cpp and tests/cli/run.py.
#pragma once

#include <cstdint>
#include <string_view>

namespace tintline {

enum class Mode : std::uint8_t {
  Exact,   // code as the language means it: vb/ and listing/
  Classic  // word by word: engine/ and output/
};

// The forms of a result.
enum class Format : std::uint8_t {
  Page,       // a whole document, with index
  Body,       // the HTML text alone
  Lines,      // the HTML lines, each closed by a line feed
  Preview,    // the page of the preview
  Clipboard,  // the text that copying the HTML puts on the clipboard
  Table,      // the converted lines as table rows
  Rtf,
  Markdown,
  Json,
  Source,  // the code of Office files as one text
  Csv      // of whole projects only
};

// Whether a mode has the form.
constexpr bool has(Mode mode, Format format) {
  if (format <= Format::Lines) return true;
  return mode == (format <= Format::Table ? Mode::Classic : Mode::Exact);
}

// What the name of a file in that form ends in.
constexpr std::string_view extensionOf(Format format) {
  switch (format) {
    case Format::Rtf:
      return ".rtf";
    case Format::Markdown:
      return ".md";
    case Format::Json:
      return ".json";
    default:
      return ".htm";
  }
}

}  // namespace tintline
