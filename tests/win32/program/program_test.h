// What the tests of the running program stand on. Starting takes two seconds, the splash's
// time; so tests share a running program as long as all goes well, each with files of its own.
//
// Tested by every test in this folder.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "tests/win32/program/main_window.h"
#include "tests/win32/program/program_folder.h"

namespace tintline::test {

// A program that was started in a folder of its own, with its start-up behind it.
struct RunningProgram {
  explicit RunningProgram(const ProgramFolder& folder) : app(folder.program()), main(app) {}

  App app;
  MainWindow main;
};

// A test with a program that earlier tests may have used: it opens a file of its own, and
// leaves no window open.
class SharedProgramTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  const ProgramFolder& folder() const { return *folder_; }
  const App& app() const { return program_->app; }
  const MainWindow& main() const { return program_->main; }

  // A place for a file that does not exist yet.
  std::filesystem::path newFile() const;

  static std::unique_ptr<ProgramFolder> folder_;
  static std::unique_ptr<RunningProgram> program_;

 private:
  friend class ProgramEnvironment;
  static void end();
};

// Whether two long texts are the same; if not, where they part.
testing::AssertionResult sameText(std::string_view actual, std::string_view expected);

// The file that the program last asked the shell to open; waits for it.
std::filesystem::path openedFile(const App& app);

}  // namespace tintline::test
