// The bytes of a source as text. See source_text.h.
// Tested by tests/cli/run.py.
#include "convert/source_text.h"

#include <utility>

#include "base/codepage.h"

namespace tintline {

vb::Decoded decodeSource(std::string_view bytes, vb::CodePage page) {
  if (page != kAutomatic && !vb::hasMark(bytes)) return vb::decode(bytes, page);
  const auto ansi = static_cast<vb::CodePage>(ansiCodePage());
  return vb::decode(bytes, {}, vb::isKnown(ansi) ? ansi : vb::CodePage{1252});
}

std::string htmlCharset(vb::CodePage page) {
  static constexpr std::pair<vb::CodePage, const char*> kNames[] = {
      {866, "ibm866"},   {874, "windows-874"}, {932, "shift_jis"},   {936, "gbk"},
      {949, "euc-kr"},   {950, "big5"},        {10000, "macintosh"}, {10007, "x-mac-cyrillic"},
      {20866, "koi8-r"}, {21866, "koi8-u"},    {vb::kUtf8, "utf-8"}};
  for (const auto& [known, name] : kNames)
    if (known == page) return name;
  return page >= 1250 && page <= 1258 ? "windows-" + std::to_string(page) : std::string();
}

std::string ansiSource(std::string_view bytes, vb::CodePage page, std::size_t& replaced) {
  const std::u8string text = decodeSource(bytes, page).text;
  return utf8ToAnsi({reinterpret_cast<const char*>(text.data()), text.size()}, &replaced);
}

}  // namespace tintline
