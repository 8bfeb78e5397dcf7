// Tests of convert/exact_source.h on code of every kind. What the window shows of it is in
// tests/app.
#include "convert/exact_source.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/file.h"
#include "convert/exact.h"
#include "convert/source_text.h"
#include "output/rendered_page.h"

namespace tintline {
namespace {

// Several modules in one document, each with a part of the lines chosen.
TEST(ExactSource, HasOneHtmlLineForEachChosenLine) {
  ExactSource source;
  for (const auto& entry : std::filesystem::directory_iterator("data/examples")) {
    const std::filesystem::path& file = entry.path();
    source.add(
        {exactText(file.stem().wstring()), moduleKindOf(file), decodeSource(readFile(file)).text});
  }
  source.append(u8"a\r\nb\n\nc\rd");
  const std::size_t count = source.lines().size();
  std::vector<bool> chosen(count);
  std::size_t some = 0;
  for (std::size_t i = 0; i < count; ++i) some += chosen[i] = i % 7 > 2;
  EXPECT_EQ(convertExact(source, {}, {}, {}, u8"x").lines.size(), count);
  EXPECT_EQ(convertExact(source, chosen, {}, {}, u8"x").lines.size(), some);
  EXPECT_EQ(convertExact(source, std::vector<bool>(count), {}, {}, u8"x").lines.size(), 0U);
  EXPECT_EQ(source.lines()[count - 1], "d");

  // Each line has an id in the preview, whatever the style.
  for (const auto style : {listing::Style::Class, listing::Style::Inline}) {
    const ExactResult result = convertExact(source, {}, {.style = style}, {}, u8"x");
    ASSERT_EQ(result.anchors.lines(), count);
    EXPECT_EQ(result.anchors.anchorOf(count), std::nullopt);
    const RenderedPage preview = renderPage(result.preview);
    for (std::size_t i = 0; i < count; ++i) {
      const std::wstring anchor = result.anchors.anchorOf(i).value();
      EXPECT_EQ(result.anchors.lineOf(anchor), i);
      EXPECT_TRUE(preview.anchorPosition(anchor)) << i;
    }
  }
}

}  // namespace
}  // namespace tintline
