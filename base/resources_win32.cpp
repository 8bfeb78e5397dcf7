// The built-in texts on Windows: resources of the kind CUSTOM.
//
// Tested by tests/unit/engine/engine_test.cpp.
#include <windows.h>

#include <stdexcept>

#include "base/resources.h"

namespace tintline {

std::string_view programResource(int number) {
  HRSRC found = nullptr;
  if (number >= 101 && number <= 103) {
    found = FindResourceW(nullptr, MAKEINTRESOURCEW(number), L"CUSTOM");
  }
  HGLOBAL loaded = found != nullptr ? LoadResource(nullptr, found) : nullptr;
  if (loaded == nullptr) throw std::out_of_range("no such program resource");
  return {static_cast<const char*>(LockResource(loaded)), SizeofResource(nullptr, found)};
}

}  // namespace tintline
