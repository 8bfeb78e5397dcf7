// See message.h. Tested by tests/unit/base/message_test.cpp.
#include "base/message.h"

namespace tintline {
namespace {

bool isHarmful(wchar_t character) {
  const auto code = static_cast<char32_t>(character);
  return code < 0x20 || (code >= 0x7F && code < 0xA0) ||        // controls
         code == 0x2028 || code == 0x2029 || code == 0xFEFF ||  // line ends, nothing at all
         code == 0x200E || code == 0x200F || code == 0x61C ||   // directions of writing
         (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::wstring escaped(wchar_t character) {
  switch (character) {
    case L'\t':
      return L"\\t";
    case L'\n':
      return L"\\n";
    case L'\r':
      return L"\\r";
    default:
      break;
  }
  const auto code = static_cast<unsigned>(character);
  std::wstring text = code < 0x100 ? L"\\x" : L"\\u";
  for (int shift = code < 0x100 ? 4 : 12; shift >= 0; shift -= 4)
    text += L"0123456789ABCDEF"[code >> shift & 0xF];
  return text;
}

}  // namespace

std::wstring harmless(std::wstring_view text) {
  std::wstring result;
  result.reserve(text.size());
  for (const wchar_t character : text)
    if (isHarmful(character))
      result += escaped(character);
    else
      result += character;
  return result;
}

std::wstring detail::filled(std::wstring_view text, std::span<const Message> values,
                            Language language) {
  std::wstring result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'{') {
      result += text[i];
      continue;
    }
    result += values[static_cast<std::size_t>(text[i + 1] - L'1')].in(language);
    i += 2;
  }
  return result;
}

}  // namespace tintline
