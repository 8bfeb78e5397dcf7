// Random texts through the tokenizer.
#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>

#include "tests/support/check_tokens.h"
#include "vb/tokenizer.h"

namespace tintline::vb {
namespace {

const std::u8string_view kPieces[] = {u8" ",
                                      u8" ",
                                      u8" ",
                                      u8"\n",
                                      u8"\r\n",
                                      u8"\r",
                                      u8"\t",
                                      u8"\u3000",
                                      u8" _\n",
                                      u8" _ \r\n",
                                      u8"_",
                                      u8"x",
                                      u8"Foo",
                                      u8"größe",
                                      u8"変",
                                      u8"[a b]",
                                      u8"[",
                                      u8"]",
                                      u8"(",
                                      u8")",
                                      u8",",
                                      u8";",
                                      u8":",
                                      u8":=",
                                      u8".",
                                      u8"!",
                                      u8"#",
                                      u8"&",
                                      u8"%",
                                      u8"$",
                                      u8"@",
                                      u8"^",
                                      u8"=",
                                      u8"<>",
                                      u8"+",
                                      u8"?",
                                      u8"'",
                                      u8"'c",
                                      u8"Rem ",
                                      u8"\"",
                                      u8"\"s\"",
                                      u8"\"\"",
                                      u8"1",
                                      u8"10",
                                      u8"1.5",
                                      u8"&HF",
                                      u8"&O7",
                                      u8"#1/2/2000#",
                                      u8"#10:30 AM#",
                                      u8"If ",
                                      u8"Then ",
                                      u8"Else",
                                      u8"GoTo ",
                                      u8"On Error ",
                                      u8"Resume ",
                                      u8"Sub ",
                                      u8"Property ",
                                      u8"Get ",
                                      u8"Public ",
                                      u8"Declare ",
                                      u8"Lib ",
                                      u8"Type ",
                                      u8"Enum ",
                                      u8"End ",
                                      u8"As ",
                                      u8"New ",
                                      u8"Date",
                                      u8"Is ",
                                      u8"TypeOf ",
                                      u8"Debug.Print",
                                      u8"Name ",
                                      u8"Open ",
                                      u8"For ",
                                      u8"To ",
                                      u8"Step ",
                                      u8"Line ",
                                      u8"Input",
                                      u8"Option ",
                                      u8"Compare ",
                                      u8"Text",
                                      u8"Left",
                                      u8"vbCr",
                                      u8"#If ",
                                      u8"#End If",
                                      u8"Attribute ",
                                      u8"VERSION ",
                                      u8"Begin ",
                                      u8"BeginProperty ",
                                      u8"Object ",
                                      u8"{",
                                      std::u8string_view(u8"\0", 1),
                                      u8"\x7F",
                                      u8"\x19",
                                      u8"“",
                                      u8"\uFFFD",
                                      u8"😀"};

TEST(Tokenizer, coversAnyText) {
  const WordLists words;
  std::mt19937 random(20);  // NOLINT: the same texts each time
  for (int i = 0; i < 20000; ++i) {
    std::u8string text = i % 4 == 0 ? u8"VERSION 5\n" : u8"";
    for (auto pieces = random() % 40; pieces > 0; --pieces)
      text += kPieces[random() % std::size(kPieces)];
    if (i % 100 == 0) text.insert(random() % (text.size() + 1), std::u8string(600, u8' '));
    const char* const fault = faultOf(text, words);
    ASSERT_EQ(fault, nullptr) << fault << ": " << std::string(text.begin(), text.end());
  }
}

// Long runs of one character, the way to quadratic time and deep recursion.
TEST(Tokenizer, takesLongRunsOfAnything) {
  const WordLists words;
  for (const std::u8string_view piece : kPieces) {
    std::u8string text;
    while (text.size() < 100000) text += piece;
    EXPECT_EQ(faultOf(text, words), nullptr) << std::string(piece.begin(), piece.end());
  }
}

}  // namespace
}  // namespace tintline::vb
