// The bytes of a source as text. See source_text.h.
// Tested by tests/cli/run.py.
#include "convert/source_text.h"

#include "base/codepage.h"

namespace tintline {

vb::Decoded decodeSource(std::string_view bytes, vb::CodePage page) {
  if (page != kAutomatic && !vb::hasMark(bytes)) return vb::decode(bytes, page);
  const auto ansi = static_cast<vb::CodePage>(ansiCodePage());
  return vb::decode(bytes, {}, vb::isKnown(ansi) ? ansi : vb::CodePage{1252});
}

std::string ansiSource(std::string_view bytes, vb::CodePage page, std::size_t& replaced) {
  const std::u8string text = decodeSource(bytes, page).text;
  return utf8ToAnsi({reinterpret_cast<const char*>(text.data()), text.size()}, &replaced);
}

}  // namespace tintline
