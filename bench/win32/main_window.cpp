// See main_window.h. Tested by every test in tests/win32/program/.
#include "bench/win32/main_window.h"

#include <commctrl.h>

namespace tintline::test {
namespace {

constexpr std::wstring_view kTitle = L"VB(A)-Code in HTML-Format umwandeln (Version ";

}  // namespace

MainWindow::MainWindow(const App& app)
    : app_(app),
      window_(app.window(
          [](Window w) { return w.className() == kMainClass && w.text().starts_with(kTitle); },
          "the main window")) {
  app.until([&] { return !app.findClass(kSplashClass); }, "the end of the splash");
}

void MainWindow::untilShown(int id, std::wstring_view part) const {
  app_.until([&] { return text(id).find(part) != std::wstring::npos; },
             "text " + std::filesystem::path(part).string() + " in control " + std::to_string(id));
}

void MainWindow::untilIdle() const {
  app_.until([this] { return offers(Command::mnudatei); }, "the end of a command");
}

Started MainWindow::start(Command command) const {
  untilIdle();
  return {app_, window_, WM_COMMAND, static_cast<WPARAM>(commandId(command))};
}

Started MainWindow::press(int id) const {
  untilIdle();
  const Window button = control(id);
  app_.until([&] { return button.enabled(); }, "button " + std::to_string(id));
  return {app_, button, BM_CLICK};
}

bool MainWindow::offers(Command command) const {
  const auto id = static_cast<WPARAM>(commandId(command));
  return control(id::kToolbar1).send(TB_ISBUTTONENABLED, id) != 0;
}

void MainWindow::setChecked(int id, bool checked) const {
  const auto isChecked = [&] { return (control(id).send(BM_GETCHECK) == BST_CHECKED) == checked; };
  if (!isChecked()) pressAndWait(id);
  app_.until(isChecked, "check mark " + std::to_string(id));
}

void MainWindow::open(const std::filesystem::path& module) const {
  const Started opening = start(Command::mnudatei);
  FileDialogOf(app_).accept(module.wstring());
  opening.finish(kRunTime);
}

std::size_t MainWindow::lineCount(int list) const {
  return static_cast<std::size_t>(control(list).send(LB_GETCOUNT));
}

void MainWindow::clickNode(std::size_t index) const {
  untilIdle();
  clickTreeNode(app_, control(id::kTreeView1), index);
}

DWORD MainWindow::close() const {
  window_.post(WM_CLOSE);
  return app_.exitCode();
}

}  // namespace tintline::test
