// What must hold for the tokens, the modules and the listings of any text whatever.
#include <gtest/gtest.h>

#include "tests/support/check_module.h"
#include "tests/support/check_tokens.h"
#include "tests/support/listing_check.h"
#include "tests/support/random_text.h"
#include "vb/text.h"

namespace tintline::test {
namespace {

const vb::WordLists kWords;

TEST(AnyText, HasTokensDeclarationsAndNames) {
  std::mt19937 random(20);
  for (int i = 0; i < 20'000; ++i) {
    std::string bytes = i % 4 == 0 ? "VERSION 5.00\nBegin VB.Form A\n" : "";
    bytes += randomText(random, "token", random() % 60);
    if (i % 100 == 0) bytes.insert(random() % (bytes.size() + 1), std::string(600, ' '));
    const std::u8string text = vb::decode(bytes).text;
    ASSERT_EQ(vb::faultOf(text, kWords), nullptr) << bytes;
    ASSERT_EQ(vb::moduleFault(text, kWords), nullptr) << bytes;
  }
}

TEST(AnyText, MayEndAnywhere) {
  const std::u8string all =
      u8"VERSION 1.0 CLASS\nBegin VB.Form A\n  Begin VB.Label b\n    Index = 0\n  End\nEnd\n"
      "Attribute VB_PredeclaredId = True\nAttribute c.VB_UserMemId = 0\n#If d Then\n"
      "Public Property Get e(Optional ByVal f As g.h = 1, i()) As New j\n#End If\n"
      "1 With k(l).m: .n = \"o\" & _\n p: GoTo 1: End With 'q _\nr\nEnd Property f GoTo 1";
  for (const std::size_t from : {std::size_t{0}, all.find(u8"Attribute"), all.find(u8"Public")})
    for (std::size_t size = 0; size <= all.size() - from; ++size)
      EXPECT_EQ(vb::moduleFault(all.substr(from, size), kWords), nullptr) << from << " + " << size;
}

// The way to quadratic time and deep recursion.
TEST(AnyText, MayRepeatOnePieceVeryOften) {
  for (const std::string& piece : piecesOf("token")) {
    std::string bytes = "Sub a()\n", run;
    while (bytes.size() < 100'000) bytes.append(piece).append("a");
    while (run.size() < 100'000) run += piece.empty() ? " " : piece;
    const std::u8string text = vb::decode(bytes).text;
    EXPECT_EQ(vb::readModule(text, u8"A", vb::ModuleKind::Standard, kWords).text, text);
    EXPECT_EQ(vb::faultOf(vb::decode(run).text, kWords), nullptr) << piece;
  }
}

TEST(AnyText, IsShownAsItIs) {
  std::mt19937 random(4711);
  for (int i = 0; i < 2000; ++i) {
    std::string bytes = randomText(random, "token", random() % 60);
    if (i % 8 == 0) bytes.insert(random() % (bytes.size() + 1), "\x80\xFF");  // no UTF-8
    const std::u8string fault = faultOfListings(bytes, static_cast<std::uint32_t>(random()));
    ASSERT_EQ(fault, u8"") << reinterpret_cast<const char*>(fault.data()) << "\nin:\n" << bytes;
  }
}

}  // namespace
}  // namespace tintline::test
