// Tests of output/clipboard_text.h.
#include "output/clipboard_text.h"

#include <gtest/gtest.h>

#include <vector>

namespace tintline {
namespace {

using Texts = std::vector<std::string>;

// A list whose lines are selected when they begin with "*".
SelectableLines list(const Texts& lines) {
  return {lines.size(), [&lines](std::size_t i) -> std::string_view { return lines[i]; },
          [&lines](std::size_t i) { return lines[i].starts_with('*'); }};
}

TEST(ClipboardText, html) {
  const struct {
    const char* name;
    const char* PreCode;
    Texts lines;
    const char* PostCode;
    const char* text;
  } rows[] = {
      {"selected lines only", "A", {"*x", "n", "*y"}, "B", "A\r\n*x\r\n*y\r\nB"},
      {"all lines when none is selected", "", {"x", "y"}, "", "\r\nx\r\ny"},
      {"all lines, PostCode", "", {"x"}, "B", "\r\nx\r\nB"},
      {"a PreCode without selected lines is copied alone", "A", {"x", "y"}, "", "A"},
      {"PreCode and PostCode without selected lines", "A", {"x"}, "B", "A\r\nB"},
      {"an empty PreCode leaves a line end in front", "", {"*x", "y"}, "", "\r\n*x"},
      {"no lines", "", {}, "", ""},
  };
  for (const auto& row : rows)
    EXPECT_EQ(HTMLKopieren(row.PreCode, list(row.lines), row.PostCode), row.text) << row.name;
}

TEST(ClipboardText, source) {
  EXPECT_EQ(Kopieren(list({"*x ", "n ", "*y "})), "\r\n*x \r\n*y ");
  EXPECT_EQ(Kopieren(list({"x ", "y "})), "\r\nx \r\ny ");
  EXPECT_EQ(Kopieren(list({})), "");
}

}  // namespace
}  // namespace tintline
