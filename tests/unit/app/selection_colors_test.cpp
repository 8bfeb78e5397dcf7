// Tests of app/controls/selection_colors.h.
#include "app/controls/selection_colors.h"

#include <gtest/gtest.h>

namespace tintline {
namespace {

TEST(selection_colors, stand_out_from_every_ground_and_can_be_read) {
  EXPECT_DOUBLE_EQ(contrast(0xFFFFFF, 0x000000), 21);
  EXPECT_NEAR(contrast(0x0000FF, 0xFFFFFF), 4.0, 0.01) << "red is the low byte";
  EXPECT_NEAR(contrast(0x00FF00, 0xFFFFFF), 1.37, 0.01) << "green is the brightest";
  EXPECT_EQ(unfocusedSelection(0xFFFFFF, 0x000000).back, 0x949494U) << "a grey without a tinge";
  const struct {
    const char* scheme;
    std::uint32_t window, text;
  } rows[] = {
      {"light", 0xFFFFFF, 0x000000},
      {"dark", 0x202020, 0xFFFFFF},
      {"high contrast black", 0x000000, 0xFFFFFF},
      {"high contrast white", 0xFFFFFF, 0x000000},
      {"high contrast 1", 0x000000, 0x00FFFF},
      {"high contrast 2", 0x000000, 0x00FF00},
      {"aquatic", 0x202020, 0xFFFFFF},
      {"desert", 0xEFFAFF, 0x3D3D3D},
      {"grey", 0x808080, 0x000000},
      {"a text that cannot be read", 0x777777, 0x808080},
  };
  for (const auto& row : rows) {
    const SelectionColors colors = unfocusedSelection(row.window, row.text);
    EXPECT_GE(contrast(colors.back, row.window), kShapeContrast) << row.scheme;
    EXPECT_LT(contrast(colors.back, row.window), kTextContrast) << row.scheme << ": pale";
    EXPECT_GE(contrast(colors.text, colors.back), kTextContrast) << row.scheme;
  }
}

}  // namespace
}  // namespace tintline
