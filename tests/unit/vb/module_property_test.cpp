// Random texts through the reader and the resolver.
#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>

#include "tests/support/check_module.h"

namespace tintline::vb {
namespace {

const std::u8string_view kPieces[] = {u8"\n",
                                      u8"\n",
                                      u8"\r\n",
                                      u8": ",
                                      u8" _\n",
                                      u8" ",
                                      u8"a",
                                      u8"b",
                                      u8"[a]",
                                      u8"c$",
                                      u8"größe ",
                                      u8"10 ",
                                      u8"a: ",
                                      u8"(",
                                      u8")",
                                      u8",",
                                      u8".",
                                      u8"!",
                                      u8"=",
                                      u8"* 5",
                                      u8"'c _\n",
                                      u8"\"s\"",
                                      u8" As ",
                                      u8" As New ",
                                      u8" Long",
                                      u8"Sub ",
                                      u8"Function ",
                                      u8"Property Get ",
                                      u8"Property Set ",
                                      u8"End Sub\n",
                                      u8"End Property\n",
                                      u8"Public ",
                                      u8"Private ",
                                      u8"Static ",
                                      u8"Dim ",
                                      u8"Const ",
                                      u8"ReDim ",
                                      u8"ReDim Preserve a",
                                      u8"Type ",
                                      u8"End Type\n",
                                      u8"Enum ",
                                      u8"End Enum\n",
                                      u8"Declare Sub ",
                                      u8"Event ",
                                      u8"RaiseEvent a",
                                      u8"Implements A",
                                      u8"Optional ",
                                      u8"ParamArray ",
                                      u8"WithEvents ",
                                      u8"With ",
                                      u8"End With\n",
                                      u8"Me",
                                      u8"Set ",
                                      u8"New ",
                                      u8"TypeOf ",
                                      u8" Is ",
                                      u8"If ",
                                      u8" Then ",
                                      u8" Else ",
                                      u8"GoTo a\n",
                                      u8"#If a Then\n",
                                      u8"#Else\n",
                                      u8"#End If\n",
                                      u8"Attribute ",
                                      u8"Attribute a.VB_UserMemId = 0\n",
                                      u8"VB_Name = \"B\"\n",
                                      u8"VERSION 5.00\n",
                                      u8"Begin ",
                                      u8"Begin P.A a\n",
                                      u8"Index = 0\n",
                                      u8"BeginProperty x\n",
                                      u8"End\n"};

TEST(Module, readsAnyText) {
  const WordLists words;
  std::mt19937 random(11);  // NOLINT: the same texts each time
  for (int i = 0; i < 20000; ++i) {
    std::u8string text = i % 4 == 0 ? u8"VERSION 5.00\nBegin VB.Form A\n" : u8"";
    for (auto pieces = random() % 60; pieces > 0; --pieces)
      text += kPieces[random() % std::size(kPieces)];
    const char* const fault = moduleFault(text, words);
    ASSERT_EQ(fault, nullptr) << fault << ": " << std::string(text.begin(), text.end());
  }
}

// Long runs of one thing, the way to quadratic time and deep recursion.
TEST(Module, takesLongRunsOfAnything) {
  const WordLists words;
  for (const std::u8string_view piece : kPieces) {
    std::u8string text = u8"Sub a()\n";
    while (text.size() < 100000) text.append(piece).append(u8"a");
    EXPECT_EQ(readModule(text, u8"A", ModuleKind::Standard, words).text, text);
  }
}

}  // namespace
}  // namespace tintline::vb
