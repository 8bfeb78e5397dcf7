// Fuzzes the preview of a page: any bytes give a page whose parts fit together, and rich text
// that reads back as the page's text.
#include <cassert>
#include <cstdint>
#include <string>

#include "fuzz/rich_text.h"
#include "output/link_target.h"
#include "output/rendered_page.h"
#include "output/rich_text.h"

using namespace tintline;

namespace {

// What is wrong with the page; "" when nothing is.
std::string faultOf(const RenderedPage& page) {
  std::size_t end = 0;
  for (const TextRun& run : page.runs) {
    if (run.start != end) return "a gap or overlap at " + std::to_string(run.start);
    if (run.length == 0) return "an empty run at " + std::to_string(run.start);
    if (run.looks.link && *run.looks.link >= page.targets.size()) return "a link to nowhere";
    end += run.length;
  }
  if (end != page.text.size()) return "runs end at " + std::to_string(end);
  std::size_t before = 0;
  for (const Anchor& anchor : page.anchors) {
    if (anchor.position < before || anchor.position > page.text.size())
      return "an anchor at " + std::to_string(anchor.position);
    before = anchor.position;
  }
  for (const wchar_t c : page.text)
    if (c < L' ' && c != L'\t' && c != L'\n') return "a control character";
  if (page.text.ends_with(L'\n')) return "a line end behind the last line";
  return {};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view html(reinterpret_cast<const char*>(data), size);
  const RenderedPage page = renderPage(html);
  assert(faultOf(page).empty());
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
