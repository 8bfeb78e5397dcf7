// Tests of sources/module_file_reader.h.
#include "sources/module_file_reader.h"

#include <gtest/gtest.h>

#include "tests/support/convert.h"
#include "tests/support/literal_text.h"
#include "tests/support/random_lines.h"

namespace tintline {
namespace {

using Lines = std::vector<std::string>;
using namespace std::string_literals;
using test::strings;

TEST(ModulDateiLesen, splitsAtCarriageReturns) {
  const struct {
    const char* name;
    std::string file;
    Lines lines;
  } rows[] = {
      {"empty file", "", {}},
      {"CR LF", "a\r\nb\r\n", {"a ", "b "}},
      {"CR", "a\rb\r", {"a ", "b "}},
      {"LF, when there is no CR at all", "a\nb\n", {"a ", "b "}},
      {"a lone LF is a character when there is a CR", "a\nb\r\n\nc\r\n", {"a\nb ", "\nc "}},
      {"only one LF belongs to a CR", "a\r\n\nb", {"a ", "\nb "}},
      {"CR CR LF is an empty line more", "a\r\r\nb", {"a ", " ", "b "}},
      {"last line without line end", "a\r\nb", {"a ", "b "}},
      {"single line", "a", {"a "}},
      {"empty lines", "\r\n\r\n", {" ", " "}},
      {"blanks and tabs stay", " a\t \r\n", {" a\t  "}},
      {"NUL and code 26 are characters", "a\0b\x1A\r\nc"s, {"a\0b\x1A "s, "c "}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(strings(ModulDateiLesen(row.file).List1), row.lines) << row.name;
}

TEST(ModulDateiLesen, understandsByteOrderMarks) {
  const struct {
    const char* name;
    std::string file;
    std::string text;
  } rows[] = {
      {"none", "\xE4\x80", "\xE4\x80"},
      {"UTF-8: the other bytes stay", "\xEF\xBB\xBF\xC3\xA4", "\xC3\xA4"},
      {"UTF-16, little-endian", "\xFF\xFE\xE4\0\xAC\x20\x00\x04"s, "\xE4\x80?"},
      {"UTF-16, big-endian", "\xFE\xFF\0\xE4\x20\xAC\x04\x00"s, "\xE4\x80?"},
      {"mark alone", "\xFF\xFE", ""},
      {"two bytes of the UTF-8 mark", "\xEF\xBB", "\xEF\xBB"},
  };
  for (const auto& row : rows) EXPECT_EQ(decodeModuleText(row.file), row.text) << row.name;
  EXPECT_EQ(strings(ModulDateiLesen("\xFF\xFE"
                                    "a\0\r\0\n\0b\0"s)
                        .List1),
            (Lines{"a ", "b "}));
  EXPECT_EQ(strings(ModulDateiLesen("\xEF\xBB\xBF"
                                    "a\r\n")
                        .List1),
            (Lines{"a "}));
}

TEST(ModulDateiLesen, stopsBehindTheLastCountableLine) {
  std::string file;
  for (std::size_t i = 0; i < kMaxLines; ++i) file += "Sub x()\r\n";
  const ModuleSource full = ModulDateiLesen(file);
  EXPECT_EQ(full.List1.size(), kMaxLines);
  EXPECT_EQ(full.ProzNamen.size(), kMaxLines);
  EXPECT_FALSE(full.tooManyLines);

  std::size_t last = 0;
  const ModuleSource over = ModulDateiLesen(file + "\r\nSub y()", [&](std::size_t n) { last = n; });
  EXPECT_EQ(over.List1.size(), kMaxLines);
  EXPECT_EQ(over.ProzNamen.size(), kMaxLines);
  EXPECT_TRUE(over.tooManyLines);
  EXPECT_EQ(last, kMaxLines);
}

TEST(ModulDateiLesen, tellsTheNumberOfLinesAfterEveryLine) {
  std::vector<std::size_t> counts;
  ModulDateiLesen("a\r\nb\r\nc", [&](std::size_t lines) { counts.push_back(lines); });
  EXPECT_EQ(counts, (std::vector<std::size_t>{1, 2, 3}));
}

TEST(ModulDateiLesen, collectsProcedureNames) {
  const struct {
    const char* line;
    ProcedureNames names;
  } rows[] = {
      {"Private Sub Form_Load()", {" Form_Load"}},
      {"Public Function Wert(ByVal a As Long) As Long", {" Wert"}},
      {"  private   sub  X (  )", {" X"}},
      {"PUBLIC FUNCTION Y(a, b)", {" Y"}},
      // Only the known words go, wherever they stand.
      {"Friend Sub X()", {" FriendX"}},
      {"Static Function X()", {" StaticX"}},
      {"Sub MySub Sub (x)", {" My"}},
      {"Private\tSub X()", {" Private\tX"}},
      {"Sub ()", {" "}},
      // A head is told by its words alone.
      {"' siehe Sub Test(", {" 'sieheTest"}},
      {"x = \"a Sub b(\"", {" x=\"ab"}},
      {"Call Sub_X: Function f(", {" CallSub_X:f"}},
      // No heads.
      {"End Sub", {}},
      {"End Sub ' (", {}},
      {"Exit Sub", {}},
      {"Sub X", {}},
      {"Subway(x)", {}},
      {"Private Declare Function F Lib \"x\" ()", {}},
      {"sub declared()", {}},
      {"Property Get Name() As String", {}},
      {"Friend Sub X() End ", {}},
      {"Private Sub Send (x)", {}},
      {"x = \"Sub x(\"", {}},
      {"x = \"FUNCTION x(\"", {}},
      {"", {}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ModulDateiLesen(row.line).ProzNamen, row.names) << row.line;
    EXPECT_EQ(fkt_IstProzedurZeile(row.line), !row.names.empty()) << row.line;
  }
  EXPECT_EQ(ModulDateiLesen("Sub a()\rx\rSub b()\rSub a()").ProzNamen,
            (ProcedureNames{" a", " b", " a"}));
}

// The name in a head by its rule: word after word is taken out, in whatever case.
std::string nameByRule(const std::string& head) {
  std::string name = literal::Left(head, head.find('('));
  for (const std::string word : {"Private ", "Public ", "Declare ", "Function ", "Sub ", " "}) {
    std::string kept, rest = name;
    while (const std::size_t position = literal::InStrText(rest, word)) {
      kept += literal::Left(rest, position - 1);
      rest = literal::Mid(rest, position + word.size());
    }
    name = kept + rest;
  }
  return " " + name;
}

TEST(ModulDateiLesen, takesOneWordAfterTheOtherOutOfAName) {
  std::size_t heads = 0;
  literal::forEachShortHead(4, [&](const std::string& head) {
    ProcedureNames names;
    collectProcedureName(head, names);
    heads += names.size();
    if (!names.empty()) {
      ASSERT_EQ(names[0], nameByRule(head)) << head;
    }
  });
  EXPECT_GT(heads, 10'000u);
}

}  // namespace
}  // namespace tintline
