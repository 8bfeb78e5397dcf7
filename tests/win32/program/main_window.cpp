// See main_window.h. Tested by every test in this folder.
#include "tests/win32/program/main_window.h"

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

void MainWindow::exportTo(const std::filesystem::path& target) const {
  const Started exporting = press(id::kCmdExport);
  FileDialogOf(app_).accept(target.wstring());
  exporting.finish(kRunTime);
}

std::size_t MainWindow::lineCount(int list) const {
  return static_cast<std::size_t>(control(list).send(LB_GETCOUNT));
}

std::string MainWindow::line(int list, std::size_t index) const {
  const LRESULT length = control(list).send(kGetLine, index);
  if (length < 0) throw Failure("no line " + std::to_string(index));
  const auto size = static_cast<std::size_t>(length);
  return answerInMemory(app_, control(list), kGetLine, index, size + 1).substr(0, size);
}

std::vector<std::string> MainWindow::lines(int list) const {
  std::vector<std::string> lines;
  for (std::size_t index = 0; index < lineCount(list); ++index) lines.push_back(line(list, index));
  return lines;
}

void MainWindow::clickNode(std::size_t index) const {
  untilIdle();
  clickTreeNode(app_, control(id::kTreeView1), index);
}

void MainWindow::chooseFromNodeMenu(std::size_t index, int entry) const {
  untilIdle();
  chooseFromTreeMenu(app_, control(id::kTreeView1), index, entry);
}

void MainWindow::clickLine(int list, std::size_t index, WPARAM keys) const {
  const Window box = control(list);
  // So that the line is in view, if possible as the first one.
  box.send(LB_SETTOPINDEX, index);
  const auto top = static_cast<std::size_t>(box.send(LB_GETTOPINDEX));
  const auto height = static_cast<std::size_t>(box.send(LB_GETITEMHEIGHT));
  const auto y = static_cast<LONG>((index - top) * height + height / 2);
  box.click({5, y}, keys);
  app_.until([&] { return box.send(LB_GETSEL, index) > 0; }, "the selection of a line");
}

void MainWindow::selectLines(int list, std::size_t first, std::size_t last) const {
  clickLine(list, first);
  if (last != first) clickLine(list, last, MK_SHIFT);
}

DWORD MainWindow::close() const {
  window_.post(WM_CLOSE);
  return app_.exitCode();
}

}  // namespace tintline::test
