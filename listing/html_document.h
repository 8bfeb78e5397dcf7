// Listings in HTML: pages, fragments and lines, with classes or with inline styles.
//
// Tested by tests/golden/exact and tests/browser/run.py.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "listing/document.h"
#include "listing/html_code.h"
#include "listing/output.h"
#include "listing/sections.h"
#include "listing/words.h"

namespace tintline::listing {

class HtmlDocument : public Document {
 public:
  HtmlDocument(Format format, std::ostream& out, const Options& options, const Targets& targets,
               std::u8string_view title, const Companion* companion = nullptr);
  void add(const Source& source) override;
  void close() override;

 private:
  bool several() const { return targets_.place() == Place::OnePage; }
  bool isInline() const { return options_.style == Style::Inline; }
  void begin(const Source* first);
  void writeHead();
  void writePageHeader(const Source* first);
  void writeIndex(const Source* first);
  void writeGroups(const ModuleTargets& module);
  void writeInline(const Source& source);
  void writeLines(const Source& source);

  Output out_;
  const Format format_;
  const Options& options_;
  const Targets& targets_;
  const std::u8string title_;
  const Words& words_;
  const Markup markup_;
  const Companion* const companion_;
  bool begun_ = false;
};

}  // namespace tintline::listing
