// Tests of convert/exact_source.h on code of every kind. What the window shows of it is in
// tests/app.
#include "convert/exact_source.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/file.h"
#include "convert/exact.h"
#include "convert/source_text.h"

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
}

}  // namespace
}  // namespace tintline
