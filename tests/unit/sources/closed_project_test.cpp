// The procedures of a module that no application has open, as its editor counts them.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "base/codepage.h"
#include "sources/editor_procedures.h"
#include "sources/project_analysis.h"

namespace tintline {
namespace {

// "2 Get A 3+4": two lines of declarations, a procedure from line 3 on with 4 lines.
std::string described(std::u8string text) {
  const auto lines = static_cast<std::int32_t>(std::ranges::count(text, u8'\n'));
  const EditorProcedures found = editorProcedures(std::move(text), lines);
  std::string result = std::to_string(found.declarationLines);
  for (const EditorProcedure& each : found.procedures)
    result += " " + toUtf8(std::wstring(kindPrefix(each.kind)) + each.name) + " " +
              std::to_string(each.start) + "+" + std::to_string(each.lines);
  return result;
}

TEST(editorProcedures, TakeWhatStandsInFrontOfThemAndTheLastOneTheRest) {
  const struct {
    std::u8string code;
    std::string expected;
  } rows[] = {
      {u8"", "0"},
      {u8"Option Explicit\r\n' nothing else\r\n", "2"},
      {u8"Sub A()\r\nEnd Sub\r\n", "0 A 1+2"},
      {u8"' about A\r\n\r\nSub A()\r\nEnd Sub\r\n", "0 A 1+4"},
      {u8"Dim x As _\r\nLong\r\n' about A\r\nSub A()\r\nEnd Sub\r\n", "2 A 3+3"},
      {u8"Dim x _\r\n  As Long\r\n\r\n' about A\r\nSub A()\r\nEnd Sub\r\n' the end\r\n", "2 A 3+5"},
      {u8"Sub A()\r\nEnd Sub\r\n\r\nRem about B\r\nPrivate Static Function B&()\r\nEnd "
       u8"Function\r\n",
       "0 A 1+2 B 3+4"},
      {u8"Property Get P()\r\nEnd Property\r\nProperty Let P(x)\r\nEnd Property\r\n"
       u8"Friend Property Set P(x)\r\nEnd Property\r\n",
       "0 Get P 1+2 Let P 3+2 Set P 5+2"},
      {u8"#If VBA7 Then\r\nSub A(x)\r\n#Else\r\nSub A()\r\n#End If\r\nEnd Sub\r\n", "1 A 2+5"},
      {u8"Sub A()\r\nSub B()\r\nEnd Sub\r\n", "0 A 1+1 B 2+2"},  // without an end
      {u8"Sub A(): End Sub: Sub B(): End Sub\r\n", "0 A 1+1"},
      {u8"Declare Sub A Lib \"a\" ()\r\nx = \"Sub B()\" ' Sub C()\r\nSub [Ä b]()\r\nEnd Sub\r\n",
       "2 Ä b 3+2"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(described(row.code), row.expected) << std::string(row.code.begin(), row.code.end());
  const std::u8string longest = u8"Sub A()\n" + std::u8string(65'533, u8'\n');
  EXPECT_EQ(described(longest), "0 A 1+65534");
  EXPECT_EQ(described(longest + u8'\n'), "65535") << "no editor holds it";
}

}  // namespace
}  // namespace tintline
