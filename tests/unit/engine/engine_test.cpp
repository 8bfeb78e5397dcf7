// Tests of what golden files and the literal transcription leave open: colour texts, keyword lists,
// many names.
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "base/file.h"
#include "base/resources.h"
#include "base/text.h"
#include "engine/call_linker.h"
#include "engine/color_scheme.h"
#include "engine/keyword_table.h"

namespace tintline {
namespace {

using namespace std::string_literals;

TEST(ColorScheme, ColourTextsTakeRedFromTheLowByte) {
  const auto systemColor = [](std::uint32_t index) { return index == 5 ? 0x0A0B0CU : 0x112233U; };
  EXPECT_EQ(modColor::fkt_FarbText(0x123456u, systemColor), "#563412");
  EXPECT_EQ(modColor::fkt_FarbText(0x80000005u, systemColor), "#0C0B0A") << "two digits a part";
  EXPECT_EQ(modColor::fkt_FarbText(" -2147483643 ", systemColor), "#0C0B0A");
  EXPECT_EQ(modColor::fkt_FarbText("4294967295", systemColor), "#332211");
  for (const std::string_view text : {"", "x", "12x", "4294967296", "-2147483649"})
    EXPECT_THROW(modColor::fkt_FarbText(text, systemColor), std::invalid_argument) << text;
}

TEST(KeywordTable, FindsEveryWordOfItsListsAndNoOther) {
  const KeywordTable table =
      StandardSchluesselworteLaden(programResource(101), programResource(102));
  std::size_t entries = 0;
  for (const std::string* list : {&table.Keywords1(), &table.Keywords2()})
    for (const std::string_view word : Split(*list, '\0')) {
      const auto listed = "\0"s.append(word).append("\0"s);
      if (word.empty()) continue;
      const bool first = table.Keywords1().find(listed) != std::string::npos;
      EXPECT_EQ(table.lookup(word), first ? WordClass::Code : WordClass::Parms) << word;
      EXPECT_EQ(table.lookup(std::string(word) + '_'), WordClass::None) << word;
      ++entries;
    }
  EXPECT_EQ(entries, 1315u + 2259u);
  EXPECT_EQ(StandardSchluesselworteLaden("Dim\r\nSub", "").Keywords1(), "\0Dim\0Sub\0"s);
  EXPECT_EQ(KeywordTable().lookup("Dim"), WordClass::None);
  EXPECT_TRUE(fkt_NurBuchstaben("AZaz$"));
  for (const char* text : {"Int2", "[", "@", "`", "{", "\xC4"})
    EXPECT_FALSE(fkt_NurBuchstaben(text));
  for (const int number : {0, 100, 65536 + 101})
    EXPECT_THROW(programResource(number), std::out_of_range);
}

TEST(ControlFile, SectionsBecomeTheTwoLists) {
  const struct {
    const char* file;
    KeywordOutcome outcome;
    std::size_t entries;
    std::string list1, list2;
  } rows[] = {
      {"[keywords 1]\r\nDim\r\n;Sub\r\nAs \r\na=b\r\n[Other]\r\nNo\r\n[Keywords 2]\r\nTrue",
       KeywordOutcome::Loaded, 4, "\0Dim\0;Sub\0As \0a=b\0"s, "\0True\0"s},
      {"[Keywords 2]\r\nTrue\r\n", KeywordOutcome::Keywords1Missing, 0, "", ""},
      {"[Keywords 1]\r\nDim\r\n[Keywords 2]", KeywordOutcome::Keywords2Missing, 1, "\0Dim\0"s, ""},
  };
  for (const auto& row : rows) {
    const KeywordLoad load = SchluesselworteLaden(row.file);
    EXPECT_EQ(load.outcome, row.outcome) << row.file;
    EXPECT_EQ(load.entries, row.entries) << row.file;
    EXPECT_EQ(load.table.Keywords1(), row.list1) << row.file;
    EXPECT_EQ(load.table.Keywords2(), row.list2) << row.file;
  }
  std::string file = "[Keywords 1]\r\n";  // cut at 65000 characters
  for (int i = 0; i < 6500; ++i) file += "ABCDEFGHI\r\n";
  EXPECT_EQ(SchluesselworteLaden(file + "Zuviel\r\n").entries, 6500u);
}

// What the packaged file holds beside comments; what is left out of a list fails here, too.
TEST(ControlFile, ThePackagedOneHoldsTheBuiltInLists) {
  const auto words = [](const std::string& list) {
    std::string text;
    for (const std::string_view entry : Split(list, '\0'))
      if (!entry.empty() && !entry.starts_with(';')) text.append(entry) += '\n';
    return text;
  };
  const KeywordTable packaged = SchluesselworteLaden(readFile("data/vb.ini")).table;
  EXPECT_EQ(words(packaged.Keywords1()), Replace(programResource(101), "\r", ""));
  EXPECT_EQ(words(packaged.Keywords2()), Replace(programResource(102), "\r", ""));
}

TEST(CallLinker, AFilterOverManyNamesFindsExactlyThoseThatOccur) {
  std::vector<std::string> texts;
  for (int i = 0; i < 1000; ++i) texts.push_back("Prozedur" + std::to_string(i));
  const std::vector<std::string_view> names(texts.begin(), texts.end());
  const NameFilter filter(names, {7, 8, 9, 77});
  std::vector<std::size_t> found;
  filter.find("x prozedur77 y PROZEDUR9 prozedur99", found);
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found, (std::vector<std::size_t>{7, 9, 9, 77}));
  for (const std::string name : {"x", "xy", "xyz", "xyzw", "\xDC\x62\x65r"}) {
    const ProcedureNames list = {" " + name};
    CallLinker linker(list);
    const std::string call = "(" + name, part = name.substr(1);
    EXPECT_EQ(linker.link(call, call), "(<a HREF='#" + name + "' class='Marks'>" + name + "</a> ");
    EXPECT_EQ(linker.link(part, part), part);
  }
}

}  // namespace
}  // namespace tintline
