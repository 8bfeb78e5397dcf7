// Tests of tests/support/vb_meaning.h: what it takes for the same and what not.
#include "tests/support/vb_meaning.h"

#include <gtest/gtest.h>

namespace tintline::literal {
namespace {

using Lines = std::vector<std::string>;

TEST(VbMeaning, IsTheSame) {
  const std::pair<Lines, Lines> kCases[] = {
      {{"x = 1 + 2 ' a b"}, {"x = _", "\t1  _", " + _ ", "  2 ' a b "}},
      {{"x = 1 ' a b"}, {"' a b", "x = 1"}},
      {{"' a b c _", "d"}, {"' a", "' b", "' c d"}},
      {{"a: Rem b"}, {"Rem b", "a:"}},
      {{"Debug.Print ( .x)"}, {"Debug.Print ( _", ".x)"}},
      {{"a = b + .c"}, {"a = b + _", "  .c"}},
  };
  for (const auto& [one, other] : kCases) EXPECT_EQ(meaningOf(one), meaningOf(other)) << one[0];
}

TEST(VbMeaning, IsAnother) {
  const std::pair<Lines, Lines> kCases[] = {
      {{"x = \"a b\""}, {"x = \"a _", "b\""}},
      {{"x = #1/2/2000 3 PM#"}, {"x = #1/2/2000 _", "3 PM#"}},
      {{"x = [a b]"}, {"x = [a _", "b]"}},
      {{"Debug.Print .x"}, {"Debug.Print _", ".x"}},
      {{"10 x"}, {"10 _", "x"}},
      {{"Foo : x"}, {"Foo _", ": x"}},
      {{"x = 1"}, {"x", "= 1"}},
      {{"x = 1 ' a"}, {"x = 1", "' a"}},
      {{"' a _ b"}, {"' a _", "' b"}},
      {{"If a Then Rem b"}, {"Rem b", "If a Then"}},
      {{"#If a Then ' b"}, {"' b", "#If a Then"}},
      {{"Attribute VB_Name = \"a\""}, {"Attribute VB_Name = _", "\"a\""}},
      {{"VERSION 5", "Begin a", "b 'c", "End"}, {"VERSION 5", "Begin a", "'c", "b", "End"}},
  };
  for (const auto& [one, other] : kCases)
    EXPECT_FALSE(meaningOf(one) == meaningOf(other)) << one[0];
}

TEST(VbMeaning, KnowsLinesThatCanBeBroken) {
  const struct {
    Lines lines;
    bool expected;
  } kCases[] = {
      {{"abcdef = ghijklmnop + qrst"}, true},         {{"abcdefghijklmnopqrs = ghij"}, false},
      {{"Foo(\"a b c d e f g h i j k\")"}, false},    {{"Foo: abcdefghijklmnopqrstuv"}, false},
      {{"Print #1, \"abcdefghijklmno\""}, true},      {{"x = abcdefghijklmn ' a"}, true},
      {{"abcdefghijklmnop ' abc def _", "b"}, false}, {{"' abcdefghijklmnopqrstu vwx"}, true},
      {{"' abcdefghijklmnopqrstuvwxyz"}, false},      {{"#If abc And def And ghi Then"}, false},
  };
  for (const auto& row : kCases)
    EXPECT_EQ(canBeBroken(row.lines, 0, 20), row.expected) << row.lines[0];
}

TEST(VbMeaning, CountsContinuations) {
  EXPECT_EQ(meaningOf({"a", "b _", "c _", "d", "' e _", "f _", "g _", "h"}).continuations, 2u);
}

}  // namespace
}  // namespace tintline::literal
