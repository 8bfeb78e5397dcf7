// Tests of base/ini.h.
#include "base/ini.h"

#include <gtest/gtest.h>

namespace tintline::ini {
namespace {

using namespace std::string_literals;

TEST(IniSection, givesItsLinesAsTheyStand) {
  const struct {
    const char* name;
    std::string file;
    std::string text;
  } rows[] = {
      {"CR LF", "[S]\r\nAbs\r\nAnd\r\n", "Abs\0And\0"s},
      {"LF", "[S]\nAbs\nAnd\n", "Abs\0And\0"s},
      {"CR", "[S]\rAbs\rAnd\r", "Abs\0And\0"s},
      {"no line end at the end", "[S]\nAbs\nAnd", "Abs\0And\0"s},
      {"blanks and equals signs belong to the line", "[S]\n a=b \n\t\n", " a=b \0\t\0"s},
      {"empty lines are skipped", "[S]\n\n\r\nAbs\n\nAnd\n\n", "Abs\0And\0"s},
      {"comments are entries", "[S]\n;x\nAbs\n", ";x\0Abs\0"s},
      {"ends at the next section", "[R]\nx\n[S]\nAbs\n[T]\ny\n", "Abs\0"s},
      {"the first of several counts", "[S]\nAbs\n[S]\nAnd\n", "Abs\0"s},
      {"the name's case does not count", "[s]\nAbs\n", "Abs\0"s},
      {"blanks around header and name do not count", "  [ S ] x\nAbs\n", "Abs\0"s},
      {"a bracket that is not closed opens nothing", "[S]\nAbs\n[T\nAnd\n", "Abs\0[T\0And\0"s},
      {"a UTF-8 byte-order mark hides no section", "\xEF\xBB\xBF[S]\nAbs\n", "Abs\0"s},
      {"missing", "[SS]\nAbs\n", ""},
      {"empty", "[S]\n[T]\nAbs\n", ""},
      {"empty file", "", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(sectionText(row.file, "S", 100), row.text) << row.name;
}

TEST(IniSection, isCutAtItsLimit) {
  const std::string file = "[S]\nAbs\nAnd\nAs\n";
  const struct {
    std::size_t limit;
    std::string text;
  } rows[] = {
      {0, ""},          {2, "Ab\0"s},       {3, "Abs\0"s},           {4, "Abs\0"s},
      {5, "Abs\0A\0"s}, {8, "Abs\0And\0"s}, {10, "Abs\0And\0As\0"s}, {11, "Abs\0And\0As\0"s},
  };
  for (const auto& row : rows) EXPECT_EQ(sectionText(file, "S", row.limit), row.text) << row.limit;
}

TEST(IniValue, isEverythingBehindTheFirstEqualsSign) {
  const struct {
    const char* name;
    std::string file;
    std::optional<std::string> value;
  } rows[] = {
      {"plain", "[S]\r\nK=abc,\r\n", "abc,"},
      {"blanks and quotes stay", "[S]\nK= \"a\" \n", " \"a\" "},
      {"further equals signs stay", "[S]\nK=a=b\n", "a=b"},
      {"empty", "[S]\nK=\n", ""},
      {"case does not count", "[s]\nk=a\n", "a"},
      {"blanks around the key do not count", "[S]\n K =a\n", "a"},
      {"first key", "[S]\nK=a\nK=b\n", "a"},
      {"first section, even without the key", "[S]\nX=a\n[S]\nK=b\n", std::nullopt},
      {"comment", "[S]\n;K=a\nK=b\n", "b"},
      {"a line without equals sign", "[S]\nK\n", std::nullopt},
      {"other section", "[T]\nK=a\n", std::nullopt},
      {"in front of any section", "K=a\n", std::nullopt},
      {"empty file", "", std::nullopt},
  };
  for (const auto& row : rows) EXPECT_EQ(value(row.file, "S", "K"), row.value) << row.name;
}

TEST(IniWriting, changesOneLine) {
  const struct {
    const char* name;
    std::string before;
    std::string after;
  } rows[] = {
      {"new file", "", "[S]\r\nK=v,\r\n"},
      {"new section", "[R]\nx\n", "[R]\nx\n[S]\r\nK=v,\r\n"},
      {"new section behind an open line", "[R]\nx", "[R]\nx\r\n[S]\r\nK=v,\r\n"},
      {"new key", "[S]\r\nA=1\r\n\r\n[T]\r\n", "[S]\r\nA=1\r\nK=v,\r\n\r\n[T]\r\n"},
      {"new key in an empty section", "[S]\n\n[T]\n", "[S]\nK=v,\r\n\n[T]\n"},
      {"new key behind an open line", "[S]\nA=1", "[S]\nA=1\r\nK=v,\r\n"},
      {"new key behind an open header", "[S]", "[S]\r\nK=v,\r\n"},
      {"old key keeps its place and line end", "[S]\nk = alt\nA=1\n;K=c\n",
       "[S]\nk =v,\nA=1\n;K=c\n"},
      {"the first of two keys", "[S]\rK=1\rK=2\r", "[S]\rK=v,\rK=2\r"},
      {"old key on an open line", "[S]\nK=", "[S]\nK=v,"},
      {"the key of another section stays", "[R]\nK=1\n[S]\n", "[R]\nK=1\n[S]\nK=v,\r\n"},
  };
  for (const auto& row : rows) {
    const std::string after = withValue(row.before, "S", "K", "v,");
    EXPECT_EQ(after, row.after) << row.name;
    EXPECT_EQ(value(after, "S", "K"), "v,") << row.name;
    EXPECT_EQ(withValue(after, "S", "K", "v,"), after) << row.name;
  }
}

}  // namespace
}  // namespace tintline::ini
