// What the journeys through the running program stand on: the program in a folder of its own, and
// what a user does in it beyond what the pictures and the bench need (bench/win32/driver.h).
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/win32/main_window.h"
#include "bench/win32/program_folder.h"

namespace tintline::test {

class ProgramTest : public testing::Test {
 protected:
  // Pages are opened by this very test program meanwhile, which notes their names.
  static void SetUpTestSuite();
  static void TearDownTestSuite();

  // Starts the program and waits until its start-up is over.
  void start(const std::wstring& arguments = {});
  const App& app() const { return *app_; }
  const MainWindow& main() const { return *main_; }
  void waitForMain() { main_.emplace(*app_); }

  void exportTo(const std::filesystem::path& target) const;

  // Waits for a message box of the system and answers it: IDOK, IDYES, IDNO. Gives its text,
  // without carriage returns.
  std::wstring answer(int button = IDOK) const;
  bool messageIsShown() const;

  // Waits for the window of that class which a command opens.
  struct Opened {
    Started command;
    Window window;
  };
  Opened open(Command command, const wchar_t* className) const;
  void leave(const Opened& dialog, int button) const;

  // A line of a list, as bytes; a click on one, and on the last one of several with Shift.
  std::string line(int list, std::size_t index) const;
  void clickLine(int list, std::size_t index, WPARAM keys = 0) const;
  void untilLines(int list, std::size_t count) const;

  std::vector<std::wstring> tree() const;
  // An entry, from 0, of the menu of a node of the tree.
  void chooseFromNodeMenu(std::size_t node, int entry) const;

  // The page of the line at hand as the command line converts it.
  std::string page(const std::filesystem::path& module, const std::wstring& options = L"") const {
    return folder.convert(module, options);
  }

  // Waits until the file, known by its name, is the last that the program asked the shell to open.
  void untilOpened(const std::filesystem::path& file) const;

  ProgramFolder folder{L"Übung für Größe"};
  std::optional<App> app_;
  std::optional<MainWindow> main_;
};

// The clipboard's text in the code page, as it stands; nothing for no text.
std::optional<std::string> clipboardText();
void setClipboardText(std::wstring_view text);

}  // namespace tintline::test
