// See page_head.h. Tested by tests/unit/listing/listing_test.cpp and tests/browser/exact.py.
#include "listing/page_head.h"

#include <algorithm>

#include "listing/html_text.h"

namespace tintline::listing {
namespace {

// A second wall behind the escaping of all text: nothing runs and nothing is loaded.
constexpr std::string_view kPolicy =
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
    "'unsafe-inline'; base-uri 'none'; form-action 'none'\">\n";

}  // namespace

void writeHead(Output& out, const Words& words, std::u8string_view title,
               std::initializer_list<std::string_view> styles) {
  out << "<!DOCTYPE html>\n<html lang=\"" << words.tag << "\">\n<head>\n<meta charset=\"utf-8\">\n"
      << kPolicy
      << "<meta http-equiv=\"X-UA-Compatible\" content=\"IE=edge\">\n"
         "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\">\n"
         "<meta name=\"generator\" content=\"TINTLINE\">\n<title>"
      << toHtml(title) << "</title>\n";
  if (!std::ranges::all_of(styles, &std::string_view::empty)) {
    out << "<style>\n";
    for (const std::string_view style : styles) out << style;
    out << "</style>\n";
  }
  out << "</head>\n";
}

}  // namespace tintline::listing
