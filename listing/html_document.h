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

// What documents of the same form and options have in common.
struct HtmlLook {
  HtmlLook(Format documents, const Options& chosen, Place place);

  const Format format;
  const Options& options;
  const Markup markup;
  std::string style, userStyle;  // of pages
};

class HtmlDocument : public Document {
 public:
  HtmlDocument(const HtmlLook& look, std::ostream& out, const Targets& targets,
               std::u8string_view title, const Companion* companion);
  void add(const Source& source) override;
  void close() override;

 private:
  bool several() const { return targets_.place() == Place::OnePage; }
  bool isInline() const { return look_.options.style == Style::Inline; }
  void begin(const Source* first);
  void writeHead();
  void writePageHeader(const Source* first);
  void writeIndex(const Source* first);
  void writeGroups(const ModuleTargets& module);
  void writeInline(const Source& source);
  void writeLines(const Source& source);

  const HtmlLook& look_;
  Output out_;
  const Targets& targets_;
  const std::u8string title_;
  const Words& words_;
  const Companion* const companion_;
  bool begun_ = false;
};

}  // namespace tintline::listing
