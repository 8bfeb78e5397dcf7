// The built-in texts where the system knows no resources: bytes that
// resources_posix.S puts into the program.
//
// Tested by tests/unit/engine/engine_test.cpp.
#include <stdexcept>

#include "base/resources.h"

extern "C" {
extern const char tintline_keywords1[];
extern const char tintline_keywords1_end[];
extern const char tintline_keywords2[];
extern const char tintline_keywords2_end[];
extern const char tintline_codepages[];
extern const char tintline_codepages_end[];
}

namespace tintline {

std::string_view programResource(int number) {
  switch (number) {
    case 101:
      return {tintline_keywords1, tintline_keywords1_end};
    case 102:
      return {tintline_keywords2, tintline_keywords2_end};
    case 103:
      return {tintline_codepages, tintline_codepages_end};
    default:
      throw std::out_of_range("no such program resource");
  }
}

}  // namespace tintline
