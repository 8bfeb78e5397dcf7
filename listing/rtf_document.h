// Listings in RTF, for word processors. Format: Rich Text Format Specification 1.9.1.
//
// Tested by tests/golden/exact.
#pragma once

#include "listing/document.h"
#include "listing/output.h"

namespace tintline::listing {

class RtfDocument : public Document {
 public:
  RtfDocument(std::ostream& out, const Options& options);
  void add(const Source& source) override;  // each module behind the first begins a page
  void close() override;

 private:
  Output out_;
  const Options& options_;
  bool isFirst_ = true;
};

}  // namespace tintline::listing
