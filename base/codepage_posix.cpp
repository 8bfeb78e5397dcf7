// Windows-1252 and UTF-8 file names, where no system code page is known. See codepage.h.
// Tested by tests/unit/base/codepage_test.cpp.
#include "base/codepage.h"

namespace tintline {

std::string toAnsi(std::wstring_view text) {
  std::string result;
  result.reserve(text.size());
  for (const wchar_t character : text) {
    const int code = detail::windows1252Code(static_cast<char32_t>(character));
    result += code < 0 ? '?' : static_cast<char>(code);
  }
  return result;
}

std::wstring fromAnsi(std::string_view text) {
  std::wstring result;
  result.reserve(text.size());
  for (const char code : text)
    result += static_cast<wchar_t>(detail::windows1252Character(static_cast<unsigned char>(code)));
  return result;
}

unsigned ansiCodePage() { return 1252; }

std::wstring pathText(const std::filesystem::path& path) { return fromUtf8(path.native()); }

std::string pathBytes(const std::filesystem::path& path) { return path.native(); }

std::filesystem::path pathFromText(std::wstring_view text) { return toUtf8(text); }

}  // namespace tintline
