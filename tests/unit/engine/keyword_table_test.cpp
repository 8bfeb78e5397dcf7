// Tests engine/keyword_table.h.
#include "engine/keyword_table.h"

#include <gtest/gtest.h>

#include <vector>

#include "base/file.h"
#include "base/resources.h"
#include "base/text.h"

namespace tintline {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

TEST(KeywordTable, FindsExactlyTheEntriesOfTheListTexts) {
  const KeywordTable table("\0Dim\0SW_HIDE \0Left$\0Int2\0Both\0"s, "\0True\0Both\0"s);
  struct Case {
    std::string_view word;
    WordClass expected;
    std::string_view why;
  };
  for (const auto& [word, expected, why] : {
           Case{"Dim", WordClass::Code, "entry of the first list"},
           Case{"dim", WordClass::None, "letters count exactly"},
           Case{"Di", WordClass::None, "no part of an entry"},
           Case{"Dims", WordClass::None, "no more than an entry"},
           Case{"Left$", WordClass::Code, "$ belongs to the word"},
           Case{"SW_HIDE", WordClass::None, "an entry with a trailing blank never matches"},
           Case{"True", WordClass::Parms, "entry of the second list"},
           Case{"Both", WordClass::Code, "the first list goes first"},
       })
    EXPECT_EQ(table.lookup(word), expected) << word << ": " << why;
  EXPECT_EQ(KeywordTable().lookup("Dim"), WordClass::None);
}

TEST(KeywordTable, EveryWordOfTheBuiltInListsIsFoundAsASubstringTestFindsIt) {
  const KeywordTable table =
      StandardSchluesselworteLaden(programResource(101), programResource(102));
  EXPECT_TRUE(table.Keywords1().starts_with("\0Abs\0Access\0AddressOf\0"sv));
  EXPECT_TRUE(table.Keywords2().starts_with("\0True\0False\0hwnd\0"sv));
  std::size_t entries = 0;
  for (const std::string* list : {&table.Keywords1(), &table.Keywords2()}) {
    std::size_t begin = 1;
    for (std::size_t end; (end = list->find('\0', begin)) != std::string::npos; begin = end + 1) {
      const std::string word = list->substr(begin, end - begin);
      const bool first = table.Keywords1().find("\0"s + word + "\0"s) != std::string::npos;
      EXPECT_EQ(table.lookup(word), first ? WordClass::Code : WordClass::Parms) << word;
      ++entries;
    }
  }
  EXPECT_EQ(entries, 1315u + 2259u);
}

TEST(KeywordTable, LastWordOfAListCountsWithAndWithoutALineEnd) {
  EXPECT_EQ(StandardSchluesselworteLaden("Dim\r\nSub", "").Keywords1(), "\0Dim\0Sub\0"s);
  EXPECT_EQ(StandardSchluesselworteLaden("Dim\r\nSub\r\n", "").Keywords1(), "\0Dim\0Sub\0"s);
}

TEST(KeywordTable, OnlyLettersAndDollarAreLookedUp) {
  for (const std::string_view text : {"", "Dim", "LEFT$", "$"})
    EXPECT_TRUE(fkt_NurBuchstaben(text));
  for (const std::string_view text : {"Int2", "vb_x", "a b", "\xC4nderung", "Now()"})
    EXPECT_FALSE(fkt_NurBuchstaben(text)) << text;
}

TEST(ControlFile, SectionsBecomeTheTwoLists) {
  const KeywordLoad load = SchluesselworteLaden(
      "[keywords 1]\r\nDim\r\n\r\n;Sub\r\nAs \r\na=b\r\n[Other]\r\nNo\r\n[Keywords 2]\r\nTrue");
  EXPECT_EQ(load.outcome, KeywordOutcome::Loaded);
  EXPECT_EQ(load.entries, 4u);
  EXPECT_EQ(load.table.Keywords1(), "\0Dim\0;Sub\0As \0a=b\0"s);
  EXPECT_EQ(load.table.Keywords2(), "\0True\0"s);
}

std::vector<std::string> wordsOf(const std::string& list) {
  std::vector<std::string> words;
  for (const std::string_view entry : Split(list, '\0'))
    if (!entry.empty() && !entry.starts_with(';')) words.emplace_back(entry);
  return words;
}

TEST(ControlFile, ThePackagedOneHoldsTheBuiltInLists) {
  const KeywordLoad load = SchluesselworteLaden(readFile("data/vb.ini"));
  const KeywordTable builtIn =
      StandardSchluesselworteLaden(programResource(101), programResource(102));
  EXPECT_EQ(load.outcome, KeywordOutcome::Loaded);
  EXPECT_EQ(wordsOf(load.table.Keywords1()), wordsOf(builtIn.Keywords1()));
  EXPECT_EQ(wordsOf(load.table.Keywords2()), wordsOf(builtIn.Keywords2()));
}

TEST(ControlFile, MissingSectionsLeaveListsEmpty) {
  const KeywordLoad none = SchluesselworteLaden("[Keywords 2]\r\nTrue\r\n");
  EXPECT_EQ(none.outcome, KeywordOutcome::Keywords1Missing);
  EXPECT_EQ(none.table.lookup("True"), WordClass::None) << "both lists stay empty";

  const KeywordLoad onlyFirst = SchluesselworteLaden("[Keywords 1]\r\nDim\r\n[Keywords 2]\r\n");
  EXPECT_EQ(onlyFirst.outcome, KeywordOutcome::Keywords2Missing);
  EXPECT_EQ(onlyFirst.table.lookup("Dim"), WordClass::Code);
}

TEST(ControlFile, ASectionIsCutAt65000Characters) {
  std::string file = "[Keywords 1]\r\n";
  for (int i = 0; i < 6500; ++i) file += "ABCDEFGHI\r\n";  // 10 characters each with its NUL
  file += "Zuviel\r\n[Keywords 2]\r\nTrue\r\n";
  const KeywordLoad load = SchluesselworteLaden(file);
  EXPECT_EQ(load.entries, 6500u);
  EXPECT_EQ(load.table.lookup("ABCDEFGHI"), WordClass::Code);
  EXPECT_EQ(load.table.lookup("Zuviel"), WordClass::None);
}

}  // namespace
}  // namespace tintline
