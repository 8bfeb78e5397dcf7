// A source that the exact conversion takes from where the window has it: decoded text of one
// module, or of several that know each other.
//
// Tested by tests/unit/convert/exact_source_test.cpp and tests/app/exact_test.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_list.h"
#include "convert/line_anchors.h"
#include "convert/reformatting.h"
#include "listing/options.h"
#include "vb/module.h"
#include "vb/word.h"

namespace tintline {

struct ExactModule {
  std::u8string name;  // where the text itself tells none
  vb::ModuleKind kind = vb::ModuleKind::Standard;
  std::u8string text;
};

// The lines of a decoded text, without their ends.
LineList exactLines(std::u8string_view text);

class ExactSource {
 public:
  void clear() { modules_.clear(); }
  void add(ExactModule module) { modules_.push_back(std::move(module)); }

  // Appends a text to the last module, to a new one where there is none. It begins a line.
  void append(std::u8string_view text);

  void reformat(const Reformatting& pass);

  const std::vector<ExactModule>& modules() const { return modules_; }

  // The lines of all modules, one behind the other, without their ends.
  LineList lines() const;

 private:
  std::vector<ExactModule> modules_;
};

// Which lines of all are chosen, one flag a line of ExactSource::lines(); nothing: all.
using ChosenLines = std::optional<std::vector<bool>>;

struct ExactResult {
  LineList lines;       // the HTML of each line that is shown
  std::string page;     // the document
  std::string preview;  // the same for a window: with an id for each line; all three in UTF-8
  LineAnchors anchors;  // these ids, of all lines of the source
};

// Told now and then how much of a conversion is done. What it throws ends the conversion and comes
// out of it.
using Progress = std::function<void(std::size_t done, std::size_t all)>;

// Reads and converts the modules; several become one document. `darkPreview`: the preview is dark,
// whatever the options say. Throws std::length_error when the result would be too large.
ExactResult convertExact(const ExactSource& source, const ChosenLines& chosen,
                         const listing::Options& options, const vb::WordLists& words,
                         std::u8string_view title, const Progress& progress = {},
                         bool darkPreview = false);

// Code to be pasted with its colours.
struct FormattedCopy {
  std::string html;   // one element in UTF-8, which needs nothing around it
  std::string rtf;    // a whole document of ASCII
  std::wstring text;  // the lines, CR LF behind each
};

// Without links. Of the options colours and line numbers count.
FormattedCopy formattedCopy(const ExactSource& source, const ChosenLines& chosen,
                            const listing::Options& options, const vb::WordLists& words,
                            const Progress& progress = {});

}  // namespace tintline
