// Tests of base/ini.h.
#include "base/ini.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tintline::ini {
namespace {

// Entries in readable form: each NUL as "|".
std::string section(std::string_view file, std::size_t limit = 100) {
  std::string text = sectionText(file, "S", limit);
  std::replace(text.begin(), text.end(), '\0', '|');
  return text;
}

TEST(Ini, ASectionHoldsItsLinesAsTheyStand) {
  const struct {
    const char *name, *file, *text;
  } rows[] = {
      {"every line end", "[S]\r\nAbs\r\nAnd\nAs\rIs", "Abs|And|As|Is|"},
      {"blanks, equals signs and comments", "[S]\n a=b \n\t\n;x\n", " a=b |\t|;x|"},
      {"empty lines are skipped", "[S]\n\n\r\nAbs\n\nAnd\n\n", "Abs|And|"},
      {"up to the next section, the first counts", "[R]\nx\n[S]\nAbs\n[T]\ny\n[S]\nz", "Abs|"},
      {"case and blanks around the header do not count", "  [ s ] x\nAbs\n", "Abs|"},
      {"a bracket that is not closed opens nothing", "[S]\nAbs\n[T\nAnd\n", "Abs|[T|And|"},
      {"a UTF-8 byte-order mark hides no section", "\xEF\xBB\xBF[S]\nAbs\n", "Abs|"},
      {"missing", "[SS]\nAbs\n", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(section(row.file), row.text) << row.name;
  const std::pair<std::size_t, const char*> cut[] = {
      {0, ""},       {2, "Ab|"},      {3, "Abs|"},        {4, "Abs|"},
      {5, "Abs|A|"}, {8, "Abs|And|"}, {10, "Abs|And|As|"}};
  for (const auto& [limit, text] : cut)
    EXPECT_EQ(section("[S]\nAbs\nAnd\nAs\n", limit), text) << limit;
}

TEST(Ini, AValueIsEverythingBehindTheFirstEqualsSign) {
  const struct {
    const char *name, *file;
    std::optional<std::string> value;
  } rows[] = {
      {"blanks, quotes and equals signs stay", "[S]\r\nK= \"a=b\", \r\n", " \"a=b\", "},
      {"empty", "[S]\nK=\n", ""},
      {"case and blanks around the key do not count", "[s]\n k =a\n", "a"},
      {"the first key", "[S]\nK=a\nK=b\n", "a"},
      {"the first section, even without the key", "[S]\nX=a\n[S]\nK=b\n", std::nullopt},
      {"a comment", "[S]\n;K=a\nK=b\n", "b"},
      {"a line without equals sign", "[S]\nK\n", std::nullopt},
      {"another section or none", "K=a\n[T]\nK=a\n", std::nullopt},
  };
  for (const auto& row : rows) EXPECT_EQ(value(row.file, "S", "K"), row.value) << row.name;
}

TEST(Ini, WritingChangesOneLine) {
  const struct {
    const char *name, *before, *after;
  } rows[] = {
      {"new file", "", "[S]\r\nK=v,\r\n"},
      {"new section behind an open line", "[R]\nx", "[R]\nx\r\n[S]\r\nK=v,\r\n"},
      {"new key", "[S]\r\nA=1\r\n\r\n[T]\r\n", "[S]\r\nA=1\r\nK=v,\r\n\r\n[T]\r\n"},
      {"new key in an empty section", "[R]\nK=1\n[S]\n\n[T]\n", "[R]\nK=1\n[S]\nK=v,\r\n\n[T]\n"},
      {"new key behind an open header", "[S]", "[S]\r\nK=v,\r\n"},
      {"old key keeps its place and line end", "[S]\nk = alt\nA=1\n;K=c\n",
       "[S]\nk =v,\nA=1\n;K=c\n"},
      {"the first of two keys", "[S]\rK=1\rK=2\r", "[S]\rK=v,\rK=2\r"},
      {"old key on an open line", "[S]\nK=", "[S]\nK=v,"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(withValue(row.before, "S", "K", "v,"), row.after) << row.name;
    EXPECT_EQ(withValue(row.after, "S", "K", "v,"), row.after) << row.name;
  }
}

}  // namespace
}  // namespace tintline::ini
