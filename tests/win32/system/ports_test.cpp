// Tests of the ports that need no user (win32/system/) and of win32/error.h.
#include <windows.h>
#include <gtest/gtest.h>
#include <richedit.h>

#include <algorithm>

#include "convert/exact_source.h"
#include "output/html_format.h"
#include "win32/controls/window.h"
#include "win32/error.h"
#include "win32/handle.h"
#include "win32/system/clipboard.h"
#include "win32/system/clock.h"
#include "win32/system/locale.h"

namespace tintline {
namespace {

TEST(system_ports, tellWhatTheSystemKnows) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  EXPECT_NEAR(SystemClock().timer(), now.wHour * 3600 + now.wMinute * 60 + now.wSecond, 2);
  EXPECT_EQ(SystemLocale().decimalSeparator(), L',');
  const std::wstring denied = Win32Error(E_ACCESSDENIED).text();
  EXPECT_TRUE(denied.ends_with(L" (0x80070005)") && denied.size() > 20);
  EXPECT_EQ(Win32Error(static_cast<HRESULT>(0xA1234567)).text(),
            L"Unbekannter Fehler (0xA1234567)");
}

// A receiver cuts "HTML Format" where its head says; a rich-edit control takes the RTF.
TEST(system_ports, theClipboardHoldsCodeInAllItsFormats) {
  ExactSource source;
  source.append(u8"Sub \u00DC()\r\n\tx = \"{\\}\u65E5\U0001F600\"\r\n\r\nEnd Sub");
  const FormattedCopy copy = formattedCopy(source, {}, {}, {});
  SystemClipboard clipboard;
  clipboard.setFormats({.html = htmlFormat(copy.html), .rtf = copy.rtf, .text = copy.text});
  EXPECT_EQ(clipboard.text(), copy.text);
  const UINT html = RegisterClipboardFormatW(L"HTML Format");
  ASSERT_TRUE(OpenClipboard(nullptr));
  EXPECT_EQ(EnumClipboardFormats(0), html) << "the richest comes first";
  EXPECT_EQ(EnumClipboardFormats(html), RegisterClipboardFormatW(L"Rich Text Format"));
  HANDLE memory = GetClipboardData(html);
  const std::string text = static_cast<const char*>(GlobalLock(memory));
  GlobalUnlock(memory);
  CloseClipboard();
  const auto place = [&](const std::string& name) {
    return std::stoul(text.substr(text.find("\n" + name + ":") + name.size() + 2));
  };
  EXPECT_EQ(text.substr(place("StartFragment"), place("EndFragment") - place("StartFragment")),
            copy.html);
  EXPECT_EQ(text.size(), place("EndHTML"));

  LoadLibraryW(L"msftedit.dll");
  const UniqueWindow edit(CreateWindowExW(0, MSFTEDIT_CLASS, L"", WS_POPUP | ES_MULTILINE, 0, 0,
                                          300, 200, nullptr, nullptr, nullptr, nullptr));
  SendMessageW(edit.get(), WM_PASTE, 0, 0);
  std::wstring shown = windowText(edit.get());
  std::ranges::replace(shown, L'\v', L' ');  // a line end inside a paragraph is one or the other
  EXPECT_EQ(shown, L"Sub \u00DC() \tx = \"{\\}\u65E5\U0001F600\"  End Sub ");
  EXPECT_EQ(SendMessageW(edit.get(), EM_GETLINECOUNT, 0, 0), 5);
  SendMessageW(edit.get(), EM_SETSEL, 0, 3);
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  SendMessageW(edit.get(), EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
  EXPECT_EQ(format.crTextColor, RGB(0, 0, 0xC8));
}

}  // namespace
}  // namespace tintline
