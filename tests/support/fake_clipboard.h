// A clipboard of the test's own.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "ports/clipboard.h"

namespace tintline::test {

class FakeClipboard final : public Clipboard {
 public:
  void setText(std::string_view text) override {
    check();
    content = text;
    ++writes;
  }

  std::string text() override {
    check();
    return content;
  }

  std::string content;
  int writes = 0;
  bool broken = false;  // as when another program holds the clipboard open

 private:
  void check() const {
    if (broken) throw std::runtime_error("the clipboard is in use");
  }
};

}  // namespace tintline::test
