// The whole program over stand-ins, started as far as a test needs it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "app/application.h"
#include "base/file.h"
#include "tests/support/convert.h"
#include "tests/support/fake_form_view.h"
#include "tests/support/fake_ports.h"

namespace tintline::test {

inline void writeText(const std::filesystem::path& path, std::string_view text) {
  AtomicFile file(path);
  file.stream() << text;
  file.commit();
}

class ProgramTest : public testing::Test {
 protected:
  ProgramTest() : app(ports.ports()), form(app.mainWindow) {
    app.splash.makeView = splashWindow.maker();
    app.farbeinstellung.makeView = colorWindow.maker();
    app.prePostCode.makeView = prePostWindow.maker();
    form.makeView = mainWindow.maker();
  }

  void start() { ASSERT_TRUE(app.Main(0)); }

  // A module file of that name in a folder of the test's own.
  std::filesystem::path moduleFile(const std::filesystem::path& name, std::string_view text) {
    const std::filesystem::path path = ports.files.folder / name;
    writeText(path, text);
    return path;
  }

  // The user opens that file through the dialog.
  void openFile(const std::filesystem::path& path) {
    ports.dialogs.answerOpen({.path = path});
    form.execute(Command::mnudatei);
  }

  // The user selects these lines in a list.
  static void selectLines(ListBox& list, const std::vector<std::size_t>& lines) {
    std::vector<bool> selection(list.ListCount());
    for (const std::size_t line : lines) selection[line] = true;
    list.userSelected(selection,
                      lines.empty() ? ListBox::kNone : static_cast<std::ptrdiff_t>(lines.back()));
  }

  std::string scratchPage() { return readFile(ports.files.program / "dummy.html"); }

  FakePorts ports;
  FakeWindow splashWindow, colorWindow, prePostWindow, mainWindow;
  Application app;
  frmVBACode& form;
};

inline constexpr std::string_view kTwoProcedures =
    "Sub Eins()\r\n"
    "Call Zwei\r\n"
    "End Sub\r\n"
    "Sub Zwei()\r\n"
    "x = 1\r\n"
    "End Sub\r\n";

}  // namespace tintline::test
