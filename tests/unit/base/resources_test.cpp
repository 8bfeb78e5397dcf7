// The built-in texts are in the program, whole and unchanged.
#include "base/resources.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace tintline {
namespace {

std::string fileBytes(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(resources, each_number_gives_the_bytes_of_its_file) {
  EXPECT_EQ(programResource(101), fileBytes("data/keywords1.txt"));
  EXPECT_EQ(programResource(102), fileBytes("data/keywords2.txt"));
  EXPECT_EQ(programResource(101).substr(0, 5), "Abs\r\n");
}

TEST(resources, any_other_number_is_refused) {
  for (const int number : {-1, 0, 100, 103, 65536 + 101}) {
    EXPECT_THROW(programResource(number), std::out_of_range) << number;
  }
}

}  // namespace
}  // namespace tintline
