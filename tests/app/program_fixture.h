// The whole program over stand-ins. What a user does stands in the tests, what he sees by it is
// written down and compared with tests/app/expected/SUITE.TEST.txt; tests/app/README.md says more.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/application.h"
#include "base/codepage.h"
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

// What is written down, compared when the test ends.
class Transcript {
 public:
  Transcript() = default;
  Transcript(const Transcript&) = delete;
  Transcript& operator=(const Transcript&) = delete;
  ~Transcript();

  std::string written;
};

class Program {
 public:
  // `before` may change what the program stands on before it is made.
  explicit Program(
      Transcript& transcript, const std::function<void(FakePorts&)>& before = [](FakePorts&) {});

  void start() {
    step("start", [this] { app.Main(0); });
  }

  // The same, unwritten.
  void begin() {
    app.Main(0);
    seen_ = state();
  }

  // Does something, and writes down what the user sees change by it. May be called within a step.
  void step(
      const std::string& what, const std::function<void()>& work = [] {});
  void execute(const std::string& what, Command command) {
    step(what, [=, this] { form.execute(command); });
  }

  void convert() { execute("convert", Command::mnuMakro); }

  // A module file of that name in a folder of the test's own.
  std::filesystem::path moduleFile(const std::filesystem::path& name, std::string_view text) {
    const std::filesystem::path path = ports.files.folder / name;
    writeText(path, text);
    return path;
  }

  // The user opens that file through the dialog.
  void openFile(const std::filesystem::path& path) {
    ports.dialogs.answerOpen({.path = path});
    execute("open " + toUtf8(pathText(path.filename())), Command::mnudatei);
  }
  void openFile(const std::filesystem::path& name, std::string_view text) {
    openFile(moduleFile(name, text));
  }

  // The user selects these lines in a list.
  void select(ListBox& list, const std::vector<std::size_t>& lines);

  // Of a node of the tree.
  void click(std::wstring_view key) { use("click ", key, &TreeView::userSelected); }
  void rightClick(std::wstring_view key) { use("right click ", key, &TreeView::userRightClicked); }

  // The user answers "Speichern" with a file in the test's folder, or cancels.
  void answerSave(const char* name, int filterIndex = 1) {
    ports.dialogs.answerSave({.path = ports.files.folder / name, .filterIndex = filterIndex});
  }
  void exportAs(const char* name, const char* what = "export") {
    answerSave(name);
    execute(what, Command::cmdExport);
  }
  void cancelSave() { ports.dialogs.answerSave({.error = FileChoice::kCancelled, .path = {}}); }

  // Every command but the one that ends the program, and every event of a control.
  void tryEverything();

  void setStyle() {
    form.optStyle.Value = true;
    form.optStyle.Click();
  }

  FakePorts ports;
  FakeWindow splashWindow, colorWindow, prePostWindow, proceduresWindow, mainWindow;
  Application app;
  frmVBACode& form;

 private:
  // What the labels say whenever the window is to show it at once; not of long sources.
  struct Shown final : ControlView {
    explicit Shown(Program& ofProgram) : program(ofProgram) {}
    void changed(Control&) override {}
    void refresh(Control&) override;
    Program& program;
  };

  template <class Event>
  void use(const std::string& what, std::wstring_view key, Event event) {
    TreeNode* const node = form.TreeView1.find(key);
    ASSERT_NE(node, nullptr) << toUtf8(key);
    step(what + toUtf8(key), [&] { (form.TreeView1.*event)(*node); });
  }

  using State = std::vector<std::pair<std::string, std::string>>;

  State state();
  std::string page();
  std::string buttons() const;
  std::string tree() const;
  std::string dialog() const;
  std::string readable(std::wstring_view text) const;
  void addHost(State& state, const char* name, const FakeHost& host) const;
  void addFiles(State& state);
  void noteQuestions();

  Transcript& transcript_;
  State seen_;
  Shown shown_{*this};
  std::size_t asked_ = 0;
};

class ProgramTest : protected Transcript, public testing::Test, protected Program {
 protected:
  ProgramTest() : Program(static_cast<Transcript&>(*this)) {}

  Transcript& transcript() { return *this; }
};

inline constexpr std::string_view kTwoProcedures =
    "Sub Eins()\r\nCall Zwei\r\nEnd Sub\r\nSub Zwei()\r\nx = 1\r\nEnd Sub\r\n";

}  // namespace tintline::test
