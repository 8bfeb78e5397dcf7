// See document.h. Tested by tests/golden/exact.
#include "listing/document.h"

#include "listing/html_document.h"
#include "listing/json_document.h"
#include "listing/markdown_document.h"
#include "listing/rtf_document.h"

namespace tintline::listing {

std::unique_ptr<Document> makeDocument(Format format, std::ostream& out, const Options& options,
                                       const Targets& targets, std::u8string_view title,
                                       const Companion* companion) {
  switch (format) {
    case Format::Rtf:
      return std::make_unique<RtfDocument>(out, options);
    case Format::Markdown:
      return std::make_unique<MarkdownDocument>(out, options, targets);
    case Format::Json:
      return std::make_unique<JsonDocument>(out, options, targets);
    default:
      return std::make_unique<HtmlDocument>(format, out, options, targets, title, companion);
  }
}

}  // namespace tintline::listing
