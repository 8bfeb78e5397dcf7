// Listings in Markdown: an index, and the code in a fenced block. Format: CommonMark 0.31.
//
// Tested by tests/golden/exact.
#pragma once

#include "listing/document.h"
#include "listing/output.h"
#include "listing/words.h"

namespace tintline::listing {

class MarkdownDocument : public Document {
 public:
  MarkdownDocument(std::ostream& out, const Options& options, const Targets& targets);
  void add(const Source& source) override;
  void close() override;

 private:
  void writeIndex(const Source& source);
  void writeCode(const Source& source);

  Output out_;
  const Options& options_;
  const Targets& targets_;
  const Words& words_;
  bool isFirst_ = true;
};

}  // namespace tintline::listing
