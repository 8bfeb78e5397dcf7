// See document.h. Tested by tests/golden/exact.
#include "listing/document.h"

#include "listing/html_document.h"
#include "listing/json_document.h"
#include "listing/markdown_document.h"
#include "listing/rtf_document.h"

namespace tintline::listing {

DocumentMaker::DocumentMaker(Format format, const Options& options, Place place)
    : format_(format), options_(options), place_(place) {
  if (format == Format::Page || format == Format::Body || format == Format::Lines)
    look_ = std::make_unique<HtmlLook>(format, options, place);
}

DocumentMaker::~DocumentMaker() = default;

std::unique_ptr<Document> DocumentMaker::make(std::ostream& out, const Targets& targets,
                                              std::u8string_view title,
                                              const Companion* companion) const {
  switch (format_) {
    case Format::Rtf:
      return std::make_unique<RtfDocument>(out, options_);
    case Format::Markdown:
      return std::make_unique<MarkdownDocument>(out, options_, targets);
    case Format::Json:
      return std::make_unique<JsonDocument>(out, options_, targets);
    default:
      return std::make_unique<HtmlDocument>(*look_, out, targets, title, companion);
  }
}

}  // namespace tintline::listing
