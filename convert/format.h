// What is made of a source: by which conversion, and in which form.
//
// Tested by tests/golden/run.py and tests/cli/run.py.
#pragma once

#include <cstdint>

namespace tintline {

// The forms of a result.
enum class Format : std::uint8_t {
  Page,       // the exported document, with index
  Body,       // the HTML text alone
  Lines,      // the HTML lines, each closed by a line feed
  Preview,    // the page of the preview
  Clipboard,  // the text that copying the HTML puts on the clipboard
  Table       // the converted lines as table rows
};

}  // namespace tintline
