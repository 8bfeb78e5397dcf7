// Where a link of a page may lead. Comments of the source stand in the page as
// they are, so anybody's text can make a link.
//
// Tested by tests/unit/output/output_test.cpp.
#pragma once

#include <string>
#include <string_view>

namespace tintline {

struct LinkTarget {
  enum class Kind {
    Anchor,    // a place in the same page
    External,  // a web or mail address that the shell may open
    Refused    // everything else
  };
  Kind kind;
  std::wstring value;  // the anchor's name, or the address as it is written; "" when refused
};

// `target`: the link as it is written, references replaced. External are only
// http, https and mailto addresses of at most 2000 characters that may stand in
// an address: no blanks, no control characters, no quotes, nothing beyond ASCII.
LinkTarget classifyLink(std::wstring_view target);

}  // namespace tintline
