// What every run over source lines shares: the number column, the test for
// continued lines, and the way of a finished HTML line into list and text.
//
// Tested by tests/unit/engine/engine_property_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/cStringBuilder.h"
#include "engine/conversion.h"
#include "engine/document_frame.h"
#include "engine/html_lines.h"

namespace tintline {

// In place of the number of a line that continues the one before.
inline constexpr std::string_view kNumberColumn = "     ";

// The blanks behind a line number: the column is five characters wide.
std::string_view numberFill(std::size_t number);

// The number column of an ordinary line.
std::string numberPrefix(std::size_t number);

// Whether the HTML of a line ends in a continuation mark; the highlighter may
// close a span behind it.
bool continuesInHtml(std::string_view html);

// Whether the source line ends in a continuation mark.
bool continuesInSource(std::string_view line);

// Takes the finished lines of a run, in order: into the text by a string
// builder, into the list by the route for their length.
class LineCollector {
 public:
  // `source` says how much to expect. Frame and observer must live as long as the
  // collector.
  LineCollector(const LineList& source, const DocumentFrame& frame, ConversionObserver& observer);

  // Adds a line, in inline mode with its classes replaced, and behind it
  // `lineEnd`, which belongs to the text only. `alwaysWrapper` sends a short line
  // through the wrapper too.
  void emit(std::string_view html, std::string_view lineEnd, bool alwaysWrapper = false);

  // Adds to the text only: frames.
  void append(std::string_view text) {
    if (text.size() > builder_.appendLimit()) return appendInPieces(text);
    builder_.Append(text);
  }

  // Ends the run: the lines with their text.
  HtmlLines take() &&;

 private:
  void appendInPieces(std::string_view text);

  const DocumentFrame& frame_;
  ConversionObserver& observer_;
  cStringBuilder builder_;
  HtmlLines lines_;
  std::string styled_;  // the line as inline mode writes it
};

}  // namespace tintline
