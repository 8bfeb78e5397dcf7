// What must hold for the listings of any text whatever.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/support/listing_check.h"

namespace tintline::test {
namespace {

using namespace std::string_view_literals;

// What code is made of, and what could be taken for something else.
constexpr std::string_view kPieces[] = {
    "\n",
    "\n",
    "\n",
    "\r\n",
    "\r",
    " ",
    "  ",
    "\t",
    " _\n",
    " _\r\n",
    ":",
    "'",
    "Rem ",
    "\"",
    "\"\"",
    "Sub ",
    "Public Function ",
    "Private Sub ",
    "Property Get ",
    "Property Let ",
    "End Sub\n",
    "End Function\n",
    "End Property\n",
    "Type ",
    "End Type\n",
    "Enum ",
    "End Enum\n",
    "Const ",
    "Dim ",
    "Declare Sub ",
    "Event ",
    "Lib \"x\" ",
    "WithEvents ",
    "As ",
    "As New ",
    "Long",
    "String",
    "(",
    ")",
    ",",
    "=",
    ".",
    "!",
    "#If a Then\n",
    "#Else\n",
    "#End If\n",
    "#1/2/2000#",
    "12",
    "&HFF",
    "GoTo ",
    "VERSION 5.00\nBegin VB.Form F\n  Begin VB.CommandButton b\n  End\nEnd\n",
    "Attribute VB_Name = \"",
    "Attribute VB_Description = \"",
    "A",
    "a",
    "B",
    "b_Click",
    "[A]",
    "[1 <b>]",
    "[A.B]",
    "[a.2]",
    "[\"'&]",
    "[",
    "]",
    "12: ",
    "code",
    "constructor",
    "</code></pre></main>",
    "<script>",
    "alert(1)",
    "<!--",
    "-->",
    "]]>",
    "&lt;",
    "&amp",
    "javascript:",
    "onclick=",
    "<img src=x onerror=a>",
    "\0"sv,
    "\x01",
    "\x0B",
    "\f",
    "\x19",
    "\x1A",
    "\x7F",
    "\xC2\x81",
    "\xC3\xA4",
    "\xE2\x80\xAE",
    "\xE2\x81\xA6",
    "\xEF\xBF\xBE",
    "\xEF\xB7\x90",
    "\xF0\x9F\xBF\xBF",
    "\xF0\x9F\x98\x80",
    "\xE3\x80\x80",
    "\x80",
    "\xFF",
    "\0\x01"sv,
    "```",
    "{\\rtf",
    "%",
    "#",
    "^",
    "~"};

std::string randomText(std::mt19937& random) {
  std::string text;
  for (auto count = random() % 60; count > 0; --count)
    text += kPieces[random() % std::size(kPieces)];
  return text;
}

TEST(listing_property, AnyTextIsShownAsItIs) {
  std::mt19937 random(4711);
  for (int i = 0; i < 2000; ++i) {
    const std::string text = randomText(random);
    const std::u8string fault = faultOfListings(text, static_cast<std::uint32_t>(random()));
    ASSERT_EQ(fault, u8"") << reinterpret_cast<const char*>(fault.data()) << "\nin:\n" << text;
  }
}

}  // namespace
}  // namespace tintline::test
