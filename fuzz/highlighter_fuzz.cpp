// Fuzzes the highlighter: the input's lines in order, against the literal transcription of its
// rules.
#include <cassert>
#include <cstdint>

#include "base/text.h"
#include "engine/line_highlighter.h"
#include "tests/support/literal_engine.h"

using namespace tintline;

namespace {

// The text between the tags, without its blanks.
std::string visible(std::string_view html) {
  std::string text;
  bool inTag = false;
  for (const char c : html) {
    inTag = inTag || c == '<';
    if (!inTag && c != ' ') text += c;
    inTag = inTag && c != '>';
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const literal::KeywordLists lists = {
      literal::KeywordText({"Dim", "If", "As", "Left$", "x", "span"}),
      literal::KeywordText({"hwnd", "If", "class", "True"})};
  static const KeywordTable table(lists.Keywords1, lists.Keywords2);
  Highlighter fast(table);
  literal::Highlighter slow(lists);
  for (const std::string_view line : Split({reinterpret_cast<const char*>(data), size}, '\n')) {
    const std::string_view html = fast.fkt_ZeileKonvertieren(line);
    assert(html == slow.fkt_ZeileKonvertieren(std::string(line)));
    // Whatever else it does, it keeps the text: only blanks come and go.
    if (line.find_first_of("<>") == std::string_view::npos)
      assert(visible(html) == Replace(line, " ", ""));
  }
  return 0;
}
