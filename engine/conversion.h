// The main conversion loop: passes every source line to the highlighter and adds
// anchors, links back to the index, line numbers, module frames, separators and
// links from calls to procedure definitions.
//
// Tested by tests/unit/engine/engine_property_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_list.h"
#include "engine/document_frame.h"
#include "engine/html_lines.h"
#include "engine/line_highlighter.h"

namespace tintline {

struct ConversionOptions {
  bool lineNumbers = false;  // Check1
  bool blnPaste = false;     // pasted code: calls are never linked
};

// What a run tells while it works. Indexes count from 0.
class ConversionObserver {
 public:
  virtual ~ConversionObserver() = default;

  // Line `index` of `count` is read next ("Lese Zeile: ").
  virtual void reading(std::size_t index, std::size_t count) = 0;

  // Let the user interface process pending events: three times a line.
  virtual void yield() = 0;

  // Polled once a line; true ends the run. The request is taken back by asking.
  virtual bool abortRequested() = 0;

  // A finished HTML line goes to List2 by that route; the view lives during the call.
  virtual void emitted(std::string_view line, Route route) = 0;

  // Line `index` of `count` is done ("Bearbeite Zeile: "); not told for procedure heads.
  virtual void processed(std::size_t index, std::size_t count) = 0;
};

// For runs that nobody watches.
class SilentObserver : public ConversionObserver {
 public:
  void reading(std::size_t, std::size_t) override {}
  void yield() override {}
  bool abortRequested() override { return false; }
  void emitted(std::string_view, Route) override {}
  void processed(std::size_t, std::size_t) override {}
};

struct Conversion {
  HtmlLines List2;  // the HTML lines, also those of an aborted run
  bool aborted = false;

  // The HTML text: the body of the result, "" after an abort.
  std::string_view body() const { return aborted ? std::string_view() : List2.text(); }
};

// Converts the whole of `List1` (at most kMaxLines lines, else
// std::length_error). `ProzNamen` are the procedures that calls are linked to.
// Throws std::overflow_error when the HTML text outgrows its string builder.
Conversion Verarbeiten(const LineList& List1, const ProcedureNames& ProzNamen,
                       const ConversionOptions& options, const DocumentFrame& frame,
                       Highlighter& highlighter, ConversionObserver& observer);

}  // namespace tintline
