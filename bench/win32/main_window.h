// The main window of a running program, by what a user does with it.
//
// Tested by every test in tests/win32/program/.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/win32/driver.h"
#include "win32/control_ids.h"

namespace tintline::test {

class MainWindow {
 public:
  // Waits until the start-up is over.
  explicit MainWindow(const App& app);

  const App& app() const { return app_; }
  Window window() const { return window_; }
  Window control(int id) const { return window_.control(id); }
  std::wstring text(int id) const { return control(id).text(); }

  // Waits until a control shows that text, or one that holds it.
  void untilShown(int id, std::wstring_view part) const;

  // Waits until commands are taken again.
  void untilIdle() const;

  // Starts a command, or presses a button, when none is at work any more; it may ask something
  // before it ends.
  Started start(Command command) const;
  Started press(int id) const;

  // The same, and waits for its end.
  void run(Command command) const { start(command).finish(kRunTime); }
  void pressAndWait(int id) const { press(id).finish(kRunTime); }

  // Whether the tool bar offers the command.
  bool offers(Command command) const;

  // Sets a check box or an option button, by clicking it if need be.
  void setChecked(int id, bool checked) const;

  // Opens a module through the system's dialog.
  void open(const std::filesystem::path& module) const;

  // Converts the whole of what was opened.
  void convert() const { pressAndWait(id::kCmdMakro); }

  std::size_t lineCount(int list) const;

  // Clicks a node of the tree when no command is at work any more. What that starts goes on behind
  // the call.
  void clickNode(std::size_t index) const;

  // Closes the window; the exit code.
  DWORD close() const;

  static constexpr std::chrono::milliseconds kRunTime = 30s;

 private:
  const App& app_;
  Window window_;
};

}  // namespace tintline::test
