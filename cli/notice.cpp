// See notice.h. Tested by tests/cli/run.py.
#include "cli/notice.h"

#include <string_view>

#include "base/codepage.h"
#include "cli/messages.h"
#include "cli/options.h"

namespace tintline {
namespace {

std::wstring jsonText(std::wstring_view text) {
  std::wstring result = L"\"";
  for (const wchar_t character : text) {
    if (character == L'"' || character == L'\\') result += L'\\';
    if (character >= 0x20 && character != 0x7F) {
      result += character;
      continue;
    }
    constexpr std::wstring_view kHex = L"0123456789abcdef";
    const auto code = static_cast<unsigned>(character);
    result += {L'\\', L'u', L'0', L'0', kHex[code >> 4 & 15], kHex[code & 15]};
  }
  return result += L'"';
}

std::wstring_view severityName(Notice::Severity severity) {
  using enum Notice::Severity;
  return severity == Error ? L"error" : severity == Warning ? L"warning" : L"note";
}

std::wstring json(const Notice& notice, Language language) {
  const Message& message = notice.message;
  std::wstring text = L"{";
  if (!notice.file.empty()) text += L"\"file\":" + jsonText(notice.file) + L',';
  if (message.line != 0) text += L"\"line\":" + std::to_wstring(message.line) + L',';
  text += L"\"severity\":" + jsonText(severityName(notice.severity));
  text += L",\"code\":" + jsonText(fromUtf8(message.code));
  return text + L",\"message\":" + jsonText(message.in(language)) + L"}\n";
}

}  // namespace

std::wstring noticeText(const Notice& notice, NoticeFormat format, Language language) {
  if (format == NoticeFormat::Json) return json(notice, language);
  const bool standardInput = notice.file == fromUtf8(kStandardStream);
  const Message name = standardInput ? messages::kStandardInput() : valueOf(notice.file);
  return messages::kTold(name.empty() ? notice.message : messages::kAbout(name, notice.message))
      .in(language);
}

}  // namespace tintline
