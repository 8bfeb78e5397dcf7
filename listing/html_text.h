// Any text as text of an HTML document, of which nothing is lost and nothing becomes markup.
//
// Of the characters that HTML does not allow, a control character is shown by its picture
// (U+2400 ...), the others by U+FFFD; in code a title tells which it was. Characters that change
// the direction of what follows are kept, but change nothing outside of their element.
//
// Tested by tests/unit/listing/document_test.cpp and listing_property_test.cpp.
#pragma once

#include <string>
#include <string_view>

#include "listing/output.h"

namespace tintline::listing {

// Text between tags, or in an attribute that stands in double quotes.
void appendHtml(std::u8string& html, std::u8string_view text);
std::u8string toHtml(std::u8string_view text);

// Writes text of the code (UTF-8, without line ends) between tags. `end` is the end of the memory
// that may be read, at or behind the end of the text.
void writeHtml(Output& out, std::u8string_view text, const char8_t* end);

}  // namespace tintline::listing
