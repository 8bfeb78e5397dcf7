// Tests of base/cStringBuilder.h.
#include "base/cStringBuilder.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tintline {
namespace {

cStringBuilder holding(std::string_view text) {
  cStringBuilder builder;
  builder.TheString(text);
  return builder;
}

TEST(StringBuilder, IsEmptyAtFirst) {
  const cStringBuilder builder;
  EXPECT_EQ(builder.Length(), 0u);
  EXPECT_EQ(builder.Capacity(), 0u);
  EXPECT_EQ(builder.ChunkSize(), 8192u);
  EXPECT_EQ(builder.ToString(), "");
}

TEST(StringBuilder, GrowsByChunks) {
  cStringBuilder builder;
  builder.Append("0123456789");
  EXPECT_EQ(builder.Length(), 10u);
  EXPECT_EQ(builder.Capacity(), 8192u);
  builder.AppendByVal(std::string(8182, 'x'));
  EXPECT_EQ(builder.Capacity(), 8192u) << "just full";
  builder.Append("y");
  EXPECT_EQ(builder.Capacity(), 2 * 8192u);
  EXPECT_EQ(builder.ToString(), "0123456789" + std::string(8182, 'x') + "y");
}

TEST(StringBuilder, AnAppendGrowsByOneChunkOnly) {
  cStringBuilder builder;
  builder.ChunkSize(4);
  builder.Append("ab");
  EXPECT_EQ(builder.appendLimit(), 6u);
  EXPECT_THROW(builder.Append("1234567"), std::length_error);
  EXPECT_THROW(builder.Insert(1, "1234567"), std::length_error);
  EXPECT_EQ(builder.ToString(), "ab") << "a refused text changes nothing";
  EXPECT_EQ(builder.Capacity(), 4u);
  builder.Append("123456");
  EXPECT_EQ(builder.ToString(), "ab123456");
  EXPECT_EQ(builder.Capacity(), 8u);
}

TEST(StringBuilder, TheStringReplacesAll) {
  cStringBuilder builder = holding("alt, lang");
  builder.TheString("neu");
  EXPECT_EQ(builder.ToString(), "neu");
  EXPECT_EQ(builder.Capacity(), 8192u);
  builder.TheString(std::string(20'000, 'x'));
  EXPECT_EQ(builder.Length(), 20'000u);
  EXPECT_EQ(builder.Capacity(), 3 * 8192u);
  builder.TheString("");
  EXPECT_EQ(builder.Length(), 0u);
  EXPECT_EQ(builder.Capacity(), 0u);
  builder.HeapMinimize();
  EXPECT_EQ(builder.Capacity(), 0u);
}

TEST(StringBuilder, InsertsWithinTheContent) {
  const struct {
    std::size_t index;
    std::string_view text, content;
  } rows[] = {
      {0, "xy", "xyabc"}, {1, "xy", "axybc"}, {3, "xy", "abcxy"}, {4, "xy", "abc"}, {1, "", "abc"},
  };
  for (const auto& row : rows) {
    cStringBuilder builder = holding("abc");
    builder.InsertByVal(row.index, std::string(row.text));
    EXPECT_EQ(builder.ToString(), row.content) << row.index;
  }
}

TEST(StringBuilder, RemovesWithinTheContent) {
  constexpr std::size_t kHuge = static_cast<std::size_t>(-1);
  const struct {
    std::size_t index, count;
    std::string_view content;
  } rows[] = {
      {0, 3, ""},    {0, 1, "bc"},  {1, 2, "a"},   {1, 1, "ac"},      {3, 0, "abc"},
      {0, 4, "abc"}, {2, 2, "abc"}, {4, 0, "abc"}, {kHuge, 1, "abc"}, {1, kHuge, "abc"},
  };
  for (const auto& row : rows) {
    cStringBuilder builder = holding("abc");
    builder.Remove(row.index, row.count);
    EXPECT_EQ(builder.ToString(), row.content) << row.index << ' ' << row.count;
  }
}

TEST(StringBuilder, FindsNothingBehindTheContent) {
  const struct {
    const char* name;
    std::string_view content, text;
    std::size_t start;
    CompareMode mode;
    std::size_t position;
  } rows[] = {
      {"first", "abab", "ab", 1, CompareMode::Binary, 1},
      {"from a start", "ababc", "ab", 2, CompareMode::Binary, 3},
      {"case counts", "abcAb", "Ab", 1, CompareMode::Binary, 4},
      {"case does not count", "abcAb", "AB", 1, CompareMode::Text, 1},
      {"missing", "abc", "x", 1, CompareMode::Binary, 0},
      {"the reserve", "ab", " ", 1, CompareMode::Binary, 0},
      {"reaching into the reserve", "abc", "b", 2, CompareMode::Binary, 2},
      {"the last character is not found", "abc", "c", 1, CompareMode::Binary, 0},
      {"a start of 0", "abc", "a", 0, CompareMode::Binary, 0},
      {"a start behind the buffer", "abc", "a", 9000, CompareMode::Binary, 0},
      {"an empty text", "abc", "", 2, CompareMode::Binary, 2},
      {"empty content", "", "a", 1, CompareMode::Binary, 0},
  };
  for (const auto& row : rows)
    EXPECT_EQ(holding(row.content).Find(row.text, row.start, row.mode), row.position) << row.name;
}

TEST(StringBuilder, KeepsAtMostOneChunkInReserve) {
  cStringBuilder builder;
  builder.ChunkSize(4);
  builder.TheString("0123456789");
  builder.Remove(1, 9);
  builder.HeapMinimize();
  EXPECT_EQ(builder.Capacity(), 4u);
  EXPECT_EQ(builder.ToString(), "0");
  builder.Remove(0, 1);
  builder.HeapMinimize();
  EXPECT_EQ(builder.Capacity(), 4u) << "a reserve of one chunk stays";
}

TEST(StringBuilder, RefusesChunksThatCannotBe) {
  cStringBuilder builder;
  EXPECT_THROW(builder.ChunkSize(0), std::invalid_argument);
  EXPECT_THROW(builder.ChunkSize(cStringBuilder::kMaxLength + 1), std::overflow_error);
  EXPECT_EQ(builder.ChunkSize(), 8192u);
}

TEST(StringBuilder, OverflowLeavesTheContent) {
  cStringBuilder builder;
  builder.Append("ab");
  builder.ChunkSize(cStringBuilder::kMaxLength);
  EXPECT_THROW(builder.Append(std::string(9000, 'x')), std::overflow_error);
  EXPECT_EQ(builder.ToString(), "ab");
}

TEST(StringBuilder, AnRvalueGivesItsBufferAway) {
  cStringBuilder builder = holding("abc");
  EXPECT_EQ(std::move(builder).ToString(), "abc");
  EXPECT_EQ(builder.Length(), 0u);
  EXPECT_EQ(builder.Capacity(), 0u);
}

}  // namespace
}  // namespace tintline
