// Tests of sources/pasted_text.h.
#include "sources/pasted_text.h"

#include <gtest/gtest.h>

#include "tests/support/convert.h"

namespace tintline {
namespace {

using Lines = std::vector<std::string>;
using test::strings;

TEST(Pasting, splitsTheText) {
  const struct {
    const char* name;
    const char* text;
    Lines lines;
  } rows[] = {
      {"empty", "", {}},
      {"one line", "a", {"a "}},
      {"behind the last line end stands one line more", "a\r\nb\r\n", {"a ", "b ", " "}},
      {"CR alone", "a\rb", {"a ", "b "}},
      {"LF alone", "a\nb\n", {"a ", "b ", " "}},
      {"every LF goes where there is a CR", "a\nb\r\n\nc", {"ab ", "c "}},
      {"tabs go, blanks stay", "\ta\tb \r\t\r", {"ab  ", " ", " "}},
  };
  for (const auto& row : rows) EXPECT_EQ(strings(Einfügen(row.text).List1), row.lines) << row.name;
}

TEST(Pasting, collectsProcedureNames) {
  EXPECT_EQ(Einfügen("Sub\t a()\r\nEnd Sub\r\nPrivate Function b(x)").ProzNamen,
            (ProcedureNames{" a", " b"}));
}

TEST(Pasting, stopsBehindTheLastCountableLine) {
  const ModuleSource full = Einfügen(std::string(kMaxLines - 1, '\r'));
  EXPECT_EQ(full.List1.size(), kMaxLines);
  EXPECT_FALSE(full.tooManyLines);
  const ModuleSource over = Einfügen(std::string(kMaxLines, '\r'));
  EXPECT_EQ(over.List1.size(), kMaxLines);
  EXPECT_TRUE(over.tooManyLines);
}

}  // namespace
}  // namespace tintline
