// A shell that only writes down what it is asked to do.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ports/shell.h"

namespace tintline::test {

class FakeShell final : public Shell {
 public:
  int open(const std::wstring& target) override {
    opened.push_back(target);
    return result;
  }

  void showHelp(const std::filesystem::path& helpFile, std::string_view topic) override {
    shownHelp.emplace_back(helpFile, topic);
  }

  void closeHelp() override { ++helpClosed; }

  std::vector<std::wstring> opened;
  int result = 33;  // what open answers: above 32 is success
  std::vector<std::pair<std::filesystem::path, std::string>> shownHelp;  // file, topic
  int helpClosed = 0;
};

}  // namespace tintline::test
