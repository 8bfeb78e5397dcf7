// Tests engine/call_linker.h.
#include "engine/call_linker.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tintline {
namespace {

constexpr std::string_view kRem = "<span class='Rem'>";

std::string anchor(std::string_view name) {
  return "<a HREF='#" + std::string(name) + "' class='Marks'>" + std::string(name) + "</a>";
}

std::string link(const ProcedureNames& names, std::string_view html) {
  CallLinker linker(names);
  return std::string(linker.link(html));
}

TEST(CallLinker, LinksCallsOutsideStringsCommentsAndAssignments) {
  const std::string comment = std::string(kRem) + "' Foo</span>";
  struct Case {
    std::string_view name;
    std::string html, expected;
  };
  for (const auto& [name, html, expected] : {
           Case{"an ordinary call gets a blank behind the link", "x Foo y",
                "x " + anchor("Foo") + "  y"},
           Case{"every occurrence is linked", "Foo Foo",
                anchor("Foo") + "  " + anchor("Foo") + " "},
           Case{"part of a longer word", "Foobar", anchor("Foo") + " bar"},
           Case{"found in any case, replaced letter for letter", "foo Foo",
                "foo " + anchor("Foo") + " "},
           Case{"assignment to the function result", "Foo = 1", "Foo = 1"},
           Case{"an assignment anywhere in the line", "Foo Bar.fOO = 1", "Foo Bar.fOO = 1"},
           Case{"inside a string literal", "\"Foo\"", "\"Foo\""},
           Case{"the first occurrence is judged", "\"foo\" Foo", "\"foo\" Foo"},
           Case{"behind a string literal", "\"x\" Foo", "\"x\" " + anchor("Foo") + " "},
           Case{"a comment line", std::string(kRem) + "Foo</span>",
                std::string(kRem) + "Foo</span>"},
           Case{"in front of a trailing comment, without the blank", "Foo " + comment,
                anchor("Foo") + " " + comment},
           Case{"a comment alone holds the name", "x " + comment, "x " + comment},
           Case{"neither at the end of a word nor of the code", "Foobar " + comment,
                "Foobar " + comment},
           Case{"behind a span", "<b>Foobar " + comment, "<b>" + anchor("Foo") + "bar " + comment},
           Case{"in front of a parenthesis", "Foo<span class='Marks'>(</span>" + comment,
                anchor("Foo") + "<span class='Marks'>(</span>" + comment},
           Case{"assignment in front of a comment", "Foo = 1 " + comment, "Foo = 1 " + comment},
           Case{"assignment in the comment alone does not count",
                "Foo " + std::string(kRem) + "' Foo = 1</span>",
                anchor("Foo") + " " + std::string(kRem) + "' Foo = 1</span>"},
       })
    EXPECT_EQ(link({" Foo"}, html), expected) << name;
}

TEST(CallLinker, NamesAreTakenInOrderAndOnce) {
  EXPECT_EQ(link({" Foo", " Foo"}, "Foo"), anchor("Foo") + " ");
  EXPECT_EQ(link({" ", ""}, "Foo"), "Foo");
  // A later name is found in the text that an earlier link brought.
  EXPECT_EQ(link({" Foo", " HREF"}, "Foo"),
            "<a " + anchor("HREF") + " ='#Foo' class='Marks'>Foo</a> ");
  EXPECT_EQ(link({" HREF", " Foo"}, "Foo"), anchor("Foo") + " ");
  EXPECT_EQ(link({" Foo", " foo"}, "foo Foo"),
            anchor("foo") + "  " + "<a HREF='#Foo' class='Marks'>Foo</a> ");
}

TEST(CallLinker, NamesOfEveryLengthAreFound) {
  for (const std::string name : {"x", "xy", "xyz", "xyzw", "xyzwv",
                                 "\xDC"
                                 "ber"}) {
    EXPECT_EQ(link({" " + name}, "(" + name), "(" + anchor(name) + " ") << name;
    EXPECT_EQ(link({" " + name}, name.substr(1)), name.substr(1)) << name;
  }
}

TEST(CallLinker, AFilterOverManyNamesFindsExactlyThoseThatOccur) {
  std::vector<std::string> texts;
  for (int i = 0; i < 1000; ++i) texts.push_back("Prozedur" + std::to_string(i));
  const std::vector<std::string_view> names(texts.begin(), texts.end());
  const NameFilter filter(names);
  std::vector<std::size_t> found;
  filter.find("x prozedur77 y PROZEDUR9", 0, found);
  EXPECT_EQ(found, (std::vector<std::size_t>{7, 9, 77}));
  filter.find("x prozedur77 y PROZEDUR9", 8, found);
  EXPECT_EQ(found, (std::vector<std::size_t>{9, 77}));
  filter.find("prozedu", 0, found);
  EXPECT_TRUE(found.empty());
}

TEST(CallLinker, LinksThatMultiplyALineWithoutEndAreRefused) {
  ProcedureNames names;
  for (const char c : std::string_view("HREFMacklrs")) names.push_back({' ', c});
  EXPECT_THROW(link(names, std::string(1000, 'H')), std::length_error);
}

}  // namespace
}  // namespace tintline
