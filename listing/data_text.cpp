// See data_text.h. Tested by tests/unit/listing/listing_test.cpp.
#include "listing/data_text.h"

namespace tintline::listing {

void writeJsonString(Output& out, std::u8string_view text) {
  out << "\"";
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char8_t c = text[i];
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    out << text.substr(begin, i - begin);
    begin = i + 1;
    if (c >= 0x20)
      out << "\\" << text.substr(i, 1);
    else
      out << (c < 0x10 ? "\\u000" : "\\u001")
          << std::string_view("0123456789abcdef").substr(c % 16, 1);
  }
  out << text.substr(begin) << "\"";
}

}  // namespace tintline::listing
