// Fuzzes vb/tokenizer.h. A first line that begins with "@" is the user's second list, the rest is
// the source.
#include <cassert>
#include <cstdint>

#include "tests/support/check_tokens.h"
#include "vb/text.h"

using namespace tintline;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u8string text = vb::decode({reinterpret_cast<const char*>(data), size}).text;
  if (text.starts_with(u8'@')) {
    const std::size_t line = std::min(text.find(u8'\n'), text.size());
    const vb::WordLists lists({}, std::u8string_view(text).substr(1, line - 1));
    assert(vb::faultOf(std::u8string_view(text).substr(line), lists) == nullptr);
  } else {
    static const vb::WordLists kWords;
    assert(vb::faultOf(text, kWords) == nullptr);
  }
  return 0;
}
