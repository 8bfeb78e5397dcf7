#include "app/window_memory.h"

#include <gtest/gtest.h>

#include "base/file.h"
#include "tests/support/temp_folder.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

TEST(WindowMemory, KeepsPlacesFoldersAndTheFilesOfAllWindows) {
  const TempFolder folder;
  const fs::path user = folder / "noch" / "nicht";
  WindowMemory first(user), second(user);
  first.load();
  first.place = {.left = -8, .top = 40, .width = 900, .height = 600, .maximized = true};
  first.shares = {.tree = 0.25, .preview = 0.4, .source = 0.5};
  first.brightness = Brightness::Dark;
  first.openFolder = folder / "Größe";
  for (int i = 0; i < 10; ++i) first.opened("/a/" + std::to_string(i) + ".bas");
  first.opened("/a/7.bas");
  first.opened("/a/line\n[Fenster]");
  second.opened("/b/ä.bas");
  first.forget("/a/9.bas");
  first.forget("/a/2.bas");
  first.opened("/a/2.bas");
  second.save();
  first.save();

  WindowMemory third(user);
  third.load();
  EXPECT_EQ(third.recent(),
            (std::vector<fs::path>{"/a/2.bas", "/a/7.bas", "/a/8.bas", "/a/6.bas", "/a/5.bas",
                                   "/a/4.bas", "/a/3.bas", "/b/ä.bas"}));
  EXPECT_EQ(third.openFolder, folder / "Größe");
  EXPECT_TRUE(third.place.maximized);
  EXPECT_EQ(third.brightness, Brightness::Dark);

  const auto write = [&](std::string_view text) {
    AtomicFile file(user / "Fenster.ini");
    file.stream() << text;
    file.commit();
    third.load();
  };
  write(
      "[Fenster]\r\nLinks=12\r\nBreite=-5\r\nHöhe=99999999999\r\nBaum=1001\r\nHelligkeit="
      "Grau\r\nQuellcode=500\r\n");
  EXPECT_EQ(third.place.left, 12);
  EXPECT_EQ(third.place.width, 0);
  EXPECT_EQ(third.place.height, 0);
  EXPECT_EQ(third.brightness, Brightness::System);
  EXPECT_EQ(third.shares.tree, 0);
  EXPECT_EQ(third.shares.source, 0.5);
  EXPECT_TRUE(third.recent().empty());
  WindowMemory none({});
  none.save();
}

}  // namespace
}  // namespace tintline::test
