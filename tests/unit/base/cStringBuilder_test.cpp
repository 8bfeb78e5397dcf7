// Tests of base/cStringBuilder.h.
#include "base/cStringBuilder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <tuple>

namespace tintline {
namespace {

cStringBuilder holding(std::string_view text, std::size_t chunk = 8192) {
  cStringBuilder builder;
  builder.ChunkSize(chunk);
  builder.TheString(text);
  return builder;
}

TEST(StringBuilder, GrowsByOneChunkAndRefusesMore) {
  cStringBuilder builder = holding("ab", 4);
  EXPECT_EQ(builder.appendLimit(), 6u);
  EXPECT_THROW(builder.Append("1234567"), std::length_error);
  EXPECT_THROW(builder.Insert(1, "1234567"), std::length_error);
  EXPECT_EQ(builder.Capacity(), 4u);
  builder.AppendByVal("12");
  EXPECT_EQ(builder.Capacity(), 4u) << "just full";
  builder.Append("3456");
  EXPECT_EQ(builder.Capacity(), 8u);
  EXPECT_EQ(builder.ToString(), "ab123456");
  builder.ChunkSize(cStringBuilder::kMaxLength);
  EXPECT_THROW(builder.Append("7"), std::overflow_error);
  EXPECT_EQ(std::move(builder).ToString(), "ab123456");
  EXPECT_EQ(builder.Length() + builder.Capacity(), 0u) << "the buffer was given away";
  EXPECT_THROW(builder.ChunkSize(0), std::invalid_argument);
  EXPECT_THROW(builder.ChunkSize(cStringBuilder::kMaxLength + 1), std::overflow_error);
  EXPECT_EQ(holding("x").Capacity(), 8192u);
}

TEST(StringBuilder, InsertsRemovesAndKeepsAtMostOneChunkInReserve) {
  constexpr std::size_t kHuge = static_cast<std::size_t>(-1);
  const std::pair<std::size_t, const char*> inserted[] = {
      {0, "xyabc"}, {1, "axybc"}, {3, "abcxy"}, {4, "abc"}};
  for (const auto& [index, content] : inserted) {
    cStringBuilder builder = holding("abc");
    builder.InsertByVal(index, "xy");
    EXPECT_EQ(builder.ToString(), content) << index;
  }
  const std::tuple<std::size_t, std::size_t, const char*> removed[] = {
      {0, 3, ""},    {0, 1, "bc"},  {1, 2, "a"},       {3, 0, "abc"},    {0, 4, "abc"},
      {2, 2, "abc"}, {4, 0, "abc"}, {kHuge, 1, "abc"}, {1, kHuge, "abc"}};
  for (const auto& [index, count, content] : removed) {
    cStringBuilder builder = holding("abc", 4);
    builder.Append("1234");
    builder.Remove(3, 4);
    builder.Remove(index, count);
    builder.HeapMinimize();
    EXPECT_EQ(builder.Capacity(), 4u);
    EXPECT_EQ(builder.ToString(), content) << index << ' ' << count;
  }
}

TEST(StringBuilder, FindsNothingAtTheLastCharacterAndBehind) {
  const struct {
    std::string_view content, text;
    std::size_t start;
    CompareMode mode;
    std::size_t position;
  } rows[] = {
      {"ababc", "ab", 2, CompareMode::Binary, 3}, {"abcAb", "Ab", 1, CompareMode::Binary, 4},
      {"abcAb", "AB", 1, CompareMode::Text, 1},   {"abc", "x", 1, CompareMode::Binary, 0},
      {"ab", " ", 1, CompareMode::Binary, 0},     {"abc", "bc ", 1, CompareMode::Binary, 2},
      {"abc", "c", 1, CompareMode::Binary, 0},    {"abc", "a", 0, CompareMode::Binary, 0},
      {"abc", "a", 9000, CompareMode::Binary, 0}, {"abc", "", 2, CompareMode::Binary, 2},
  };
  for (const auto& row : rows)
    EXPECT_EQ(holding(row.content).Find(row.text, row.start, row.mode), row.position)
        << row.content << ' ' << row.text << ' ' << row.start;
}

}  // namespace
}  // namespace tintline
