// Fuzzes vb/text.h: the input's first byte chooses the page, none the text's own.
#include <cassert>
#include <cstdint>

#include "vb/text.h"

using namespace tintline;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr vb::CodePage kPages[] = {vb::kUtf8, 1200, 1201, 1252, 20127, 932, 936, 949, 950, 10000};
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t choice = size > 0 ? data[0] % 16 : 15;
  const bool own = choice >= std::size(kPages);
  const vb::Decoded decoded = own ? vb::decode(bytes) : vb::decode(bytes.substr(1), kPages[choice]);
  assert(own || decoded.codePage == kPages[choice]);
  // What comes out is UTF-8, and stays as it is. (A U+FEFF in front would be taken for a mark.)
  const std::string again(decoded.text.begin(), decoded.text.end());
  const vb::Decoded same = vb::decode(again, vb::kUtf8);
  assert(same.replaced == 0);
  assert(again.starts_with("\xEF\xBB\xBF") || same.text == decoded.text);
  std::size_t replacements = 0;
  for (std::size_t at = 0; (at = again.find("\xEF\xBF\xBD", at)) != std::string::npos; at += 3)
    ++replacements;
  assert(replacements >= decoded.replaced);
  return 0;
}
