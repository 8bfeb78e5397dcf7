// Tests of sources/module_header.h.
#include "sources/module_header.h"

#include <gtest/gtest.h>

namespace tintline {
namespace {

TEST(Modulkopf, rulesAreAsLongAsTheName) {
  const std::array<std::string, 3> header = Modulkopf("Module1");
  EXPECT_EQ(header[0], "'--------------");
  EXPECT_EQ(header[1], "' Modul:Module1");
  EXPECT_EQ(header[2], header[0]);
  EXPECT_EQ(Modulkopf("")[0], "'-------");
}

}  // namespace
}  // namespace tintline
