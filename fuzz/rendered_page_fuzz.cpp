// Fuzzes the preview of a page: any bytes give a page whose parts fit together, and rich text
// that reads back as the page's text.
#include <cassert>
#include <cstdint>

#include "fuzz/rich_text.h"
#include "output/link_target.h"
#include "output/rich_text.h"
#include "tests/support/rendered_page.h"

using namespace tintline;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view html(reinterpret_cast<const char*>(data), size);
  const RenderedPage page = renderPage(html);
  assert(test::faultOf(page).empty());
  for (const std::wstring& target : page.targets)
    assert((classifyLink(target).kind == LinkTarget::Kind::Refused) ==
               classifyLink(target).value.empty() ||
           target == L"#");
  std::wstring pieces;
  for (std::size_t from = 0; from < page.text.size();) {
    const std::size_t end = pieceEnd(page, from, 20);
    assert(end > from && end <= page.text.size());
    pieces += test::plainText(richText(page, from, end));
    from = end;
  }
  assert(pieces == page.text);
  return 0;
}
