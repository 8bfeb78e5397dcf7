// Writes the lines of one module as the blocks of a page: the file header, which can be folded,
// each procedure in a section with its head as heading, and what stands between them.
//
// Tested by tests/golden/exact.
#pragma once

#include <string_view>

#include "listing/html_code.h"
#include "listing/line_choice.h"
#include "listing/sections.h"
#include "listing/words.h"

namespace tintline::listing {

class HtmlModule {
 public:
  // `heading` is the element of heads: "h2"; `companion` may be missing.
  HtmlModule(Output& out, const Options& options, const Markup& markup, const Targets& targets,
             const Source& source, std::string_view heading, const Companion* companion);

  // Returns whether the last line that was written has an end.
  bool write();

 private:
  // What a line stands in.
  struct Place {
    const Section* section = nullptr;
    Part part = Part::Loose;
    bool gap = false;  // the lines in front of it are not shown
  };

  void open(const Place& place);
  void close();
  void openBlock();
  void closeBlock();
  bool isLong(const Section& section) const;
  std::uint32_t shownHeaderLines() const;

  Output& out_;
  const Options& options_;
  const Source& source_;
  const ModuleTargets& own_;
  const std::string_view heading_;
  const Companion* const companion_;
  const LineChoice choice_;
  HtmlCode code_;
  Parts parts_;
  Place place_;
  bool blockIsOpen_ = false;
};

}  // namespace tintline::listing
