// See error.h. Tested by tests/win32/system/ports_test.cpp.
#include "win32/error.h"

#include <iomanip>
#include <sstream>

#include "base/codepage.h"

namespace tintline {
namespace {

std::wstring textOf(HRESULT code) {
  constexpr DWORD kSize = 1024;
  wchar_t buffer[kSize];
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
      nullptr, static_cast<DWORD>(code), 0, buffer, kSize, nullptr);
  std::wstring text(buffer, length);
  text.resize(text.find_last_not_of(L" .\r\n") + 1);
  std::wostringstream whole;
  whole << (text.empty() ? L"Unbekannter Fehler" : text) << L" (0x" << std::hex << std::uppercase
        << std::setw(8) << std::setfill(L'0') << static_cast<DWORD>(code) << L")";
  return whole.str();
}

}  // namespace

Win32Error::Win32Error(HRESULT code) : std::runtime_error(toUtf8(textOf(code))), code_(code) {}

std::wstring Win32Error::text() const { return textOf(code_); }

void throwIfFailed(HRESULT result) {
  if (FAILED(result)) throw Win32Error(result);
}

void throwLastError() { throw Win32Error(HRESULT_FROM_WIN32(GetLastError())); }

}  // namespace tintline
