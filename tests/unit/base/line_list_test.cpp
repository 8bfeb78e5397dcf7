// Tests of base/line_list.h.
#include "base/line_list.h"

#include <gtest/gtest.h>

namespace tintline {
namespace {

TEST(LineList, GivesLinesAsTheyWereAdded) {
  LineList lines;
  EXPECT_TRUE(lines.empty());
  lines.reserveBytes(100);
  lines.append("a", " ");
  lines.append("");
  lines.append(std::string_view("\0\n", 2));
  lines.append(std::string(1000, 'x'));
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0], "a ");
  EXPECT_EQ(lines[1], "");
  EXPECT_EQ(lines[2], std::string_view("\0\n", 2));
  EXPECT_EQ(lines[3], std::string(1000, 'x'));
}

TEST(LineList, InsertsALineInFrontOfAnother) {
  const struct {
    std::size_t index;
    const char* lines[3];
  } rows[] = {{0, {"new", "a", "bc"}}, {1, {"a", "new", "bc"}}, {2, {"a", "bc", "new"}}};
  for (const auto& row : rows) {
    LineList lines;
    lines.append("a");
    lines.append("bc");
    lines.insert(row.index, "new");
    ASSERT_EQ(lines.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(lines[i], row.lines[i]) << row.index;
  }
}

TEST(LineList, IsEmptyAfterClear) {
  LineList lines;
  lines.append("a");
  lines.clear();
  EXPECT_TRUE(lines.empty());
  lines.append("b");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0], "b");
}

}  // namespace
}  // namespace tintline
