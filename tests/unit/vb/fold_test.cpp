// Names compared without regard to case (vb/fold.h), and their numbers (vb/name_table.h).
#include "vb/fold.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "vb/name_table.h"

using namespace tintline::vb;

TEST(fold, DisregardsCaseInAllScripts) {
  const struct {
    std::u8string_view name, other;
  } kEqual[] = {{u8"", u8""},
                {u8"A", u8"a"},
                {u8"Count", u8"COUNT"},
                {u8"ALongNameOfMany_Letters1", u8"alongnameofmany_lEtters1"},
                {u8"Größe", u8"GRÖßE"},
                {u8"ÀÞŸŽŁŐ", u8"àþÿžłő"},
                {u8"ΆΏΑΣΩ", u8"άώασω"},
                {u8"ЀЯЖҐЁ", u8"ѐяжґё"},
                {u8"ĀĮĲĶĹŇŊŶŹŽƠƤǍǛǞǮǸȞȢȲѠҀҊҾӁӍӐԮḀẔẠỾ",
                 u8"āįĳķĺňŋŷźžơƥǎǜǟǯǹȟȣȳѡҁҋҿӂӎӑԯḁẕạỿ"},
                {u8"ＡＺÁÙΉΏΒΤБԲＢ", u8"ａｚáùήώβτбբｂ"}};
  for (const auto& [name, other] : kEqual) {
    EXPECT_TRUE(equalFolded(name, other)) << reinterpret_cast<const char*>(other.data());
    NameTable names;
    names.add(name, name);
    EXPECT_EQ(names.find(name, NameKey(other)), 0U) << reinterpret_cast<const char*>(other.data());
  }
  for (const auto& [name, other] : {std::pair{u8"a", u8"b"},
                                    {u8"a@", u8"a`"},
                                    {u8"[", u8"{"},
                                    {u8"×", u8"÷"},
                                    {u8"abcdefghi", u8"abcdefghj"}})
    EXPECT_FALSE(equalFolded(name, other)) << reinterpret_cast<const char*>(name);
}

TEST(fold, EqualNamesHaveOneNumber) {
  std::u8string text;
  NameTable names;
  const auto add = [&](const std::u8string& name) {
    const std::uint32_t number = names.add(text, NameKey(name), text.size());
    if (number == names.size() - 1) text += name;
    return number;
  };
  for (unsigned i = 0; i < 1000; ++i) {
    const std::string digits = std::to_string(i);
    const std::u8string name = u8"Name" + std::u8string(digits.begin(), digits.end());
    EXPECT_EQ(names.find(text, NameKey(name)), NameTable::kUnknown);
    EXPECT_EQ(add(name), i);
  }
  EXPECT_EQ(names.find(text, NameKey(u8"NAME500")), 500U);
  EXPECT_EQ(add(u8"nAME999"), 999U);
}

// Names that differ by the same bits in both halves, as somebody could write them on purpose.
TEST(fold, RelatedNamesHaveDifferentHashes) {
  std::set<std::uint32_t> hashes;
  for (unsigned bits = 0; bits < 256; ++bits) {
    std::u8string name = u8"ddddddddaaaaaaaa";
    for (unsigned i = 0; i < 8; ++i)
      if ((bits >> i & 1) != 0) name[i] ^= 1, name[8 + (i + 4) % 8] ^= 8;
    hashes.insert(NameKey(name).hash());
  }
  EXPECT_GT(hashes.size(), 250U);
}
