// Tests of output/link_target.h.
#include "output/link_target.h"

#include <gtest/gtest.h>

namespace tintline {
namespace {

using Kind = LinkTarget::Kind;

TEST(LinkTarget, classes) {
  struct Case {
    std::wstring target;
    Kind kind;
  };
  const Case cases[] = {
      {L"#Index", Kind::Anchor},
      {L"#", Kind::Anchor},
      {L"#javascript:alert(1)", Kind::Anchor},  // a name like any other
      {L"http://example.org", Kind::External},
      {L"HTTPS://Example.org/a/b.htm?c=1&d=%20#e", Kind::External},
      {L"http://localhost:8080/", Kind::External},
      {L"http://[::1]/", Kind::External},
      {L"mailto:jemand@example.org", Kind::External},
      {L"http://" + std::wstring(1993, L'x'), Kind::External},
      {L"http://" + std::wstring(1994, L'x'), Kind::Refused},
      // schemes that run or open something
      {L"javascript:alert(1)", Kind::Refused},
      {L"vbscript:MsgBox(1)", Kind::Refused},
      {L"data:text/html,x", Kind::Refused},
      {L"file:///C:/Windows/notepad.exe", Kind::Refused},
      {L"res://x.dll/1", Kind::Refused},
      {L"ms-its:C:\\x.chm::/y.htm", Kind::Refused},
      {L"ftp://example.org/", Kind::Refused},
      {L"httpx://example.org/", Kind::Refused},
      // files and servers
      {L"", Kind::Refused},
      {L"\\\\server\\share\\x.exe", Kind::Refused},
      {L"//example.org/x", Kind::Refused},
      {L"C:\\Windows\\notepad.exe", Kind::Refused},
      {L"notepad.exe", Kind::Refused},
      {L"Seite.htm#Index", Kind::Refused},
      // nearly an address
      {L"http:", Kind::Refused},
      {L"http://", Kind::Refused},
      {L"http:///x", Kind::Refused},
      {L"http:\\\\example.org", Kind::Refused},
      {L"http:example.org", Kind::Refused},
      {L"http://@x", Kind::Refused},
      {L"mailto:", Kind::Refused},
      {L"mailto:?attach=x", Kind::Refused},
      {L"  http://example.org", Kind::Refused},
      {L"ht\ntp://example.org", Kind::Refused},
      {L"http://example.org/a b", Kind::Refused},
      {L"http://example.org/\" -x", Kind::Refused},
      {L"http://example.org/\t", Kind::Refused},
      {L"http://example.org/" + std::wstring(1, L'\0') + L"x", Kind::Refused},
      {L"http://ex\u00E4mple.org/", Kind::Refused},
      {L"http://example.org\u202E/", Kind::Refused},
      {L"\u017Fhttp://example.org/", Kind::Refused},
  };
  for (const Case& c : cases) {
    const LinkTarget found = classifyLink(c.target);
    const std::string shown(c.target.begin(), c.target.end());
    EXPECT_EQ(found.kind, c.kind) << shown;
    const std::wstring value = c.kind == Kind::Anchor     ? c.target.substr(1)
                               : c.kind == Kind::External ? c.target
                                                          : L"";
    EXPECT_EQ(found.value, value) << shown;
  }
}

}  // namespace
}  // namespace tintline
