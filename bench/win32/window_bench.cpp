// Measures the window: how long opening and converting a long module takes in the running
// program, beside a bare loop that inserts as many lines into two list boxes and looks for
// messages as often, and how soon Esc ends a run.
//
//   tintline_window_bench ROUNDS
//
// Prints one line a round: the number of lines, then the seconds of opening, of the same in the
// bare loop, of converting, of the same in the bare loop, and from Esc to the end of a run.
// bench/window.py makes a table of it.
#include <cstdlib>
#include <iostream>

#include "base/file.h"
#include "base/text.h"
#include "bench/win32/main_window.h"
#include "bench/win32/program_folder.h"

namespace tintline::test {
namespace {

constexpr int kLines = 32000;

class Stopwatch {
 public:
  double seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// ------------------------------------------------------------------------ the bare loop

void handleMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

HWND listBox(HWND parent, int top) {
  return CreateWindowW(L"LISTBOX", nullptr, WS_CHILD | WS_VSCROLL | LBS_EXTENDEDSEL, 0, top, 600,
                       250, parent, nullptr, nullptr, nullptr);
}

double insertLines(HWND list, const std::vector<std::string>& lines, int yields) {
  const Stopwatch watch;
  for (const std::string& line : lines) {
    SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    for (int i = 0; i < yields; ++i) handleMessages();
  }
  return watch.seconds();
}

struct BareTimes {
  double open, convert;
};

// Nothing is shown, so that no painting makes the loop slower.
BareTimes bareLoop(const std::vector<std::string>& source, const std::vector<std::string>& html) {
  const HWND window = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 620, 540, nullptr,
                                    nullptr, nullptr, nullptr);
  const HWND list1 = listBox(window, 0), list2 = listBox(window, 250);
  handleMessages();
  const BareTimes times{insertLines(list1, source, 1), insertLines(list2, html, 3)};
  DestroyWindow(window);
  handleMessages();
  return times;
}

// ------------------------------------------------------------------------- the program

double timeOpening(const MainWindow& main, const std::filesystem::path& module) {
  const Started opening = main.start(Command::mnudatei);
  const FileDialogOf dialog(main.app());
  dialog.accept(module.wstring());
  const Stopwatch watch;
  opening.finish(60s);
  return watch.seconds();
}

double timeConverting(const MainWindow& main) {
  const Stopwatch watch;
  main.press(id::kCmdMakro).finish(60s);
  return watch.seconds();
}

double timeEscape(const MainWindow& main, const std::filesystem::path& module) {
  main.open(module);
  const Started converting = main.press(id::kCmdMakro);
  main.untilShown(id::kLabel10, L"Bearbeite Zeile: ");
  const Stopwatch watch;
  main.window().pressKey(VK_ESCAPE);
  converting.finish(60s);
  return watch.seconds();
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (const std::string_view line : Split(text, '\n')) lines.emplace_back(line);
  return lines;
}

void measure(int rounds) {
  const ProgramFolder folder;
  const std::filesystem::path module = folder.write(L"lang.bas", longModule(kLines)),
                              heavy = folder.write(L"schwer.bas", heavyModule());
  const App app(folder.program());
  const MainWindow main(app);
  main.open(module);
  main.convert();  // warm now
  const std::vector<std::string> source = linesOf(readFile(module)),
                                 html = linesOf(folder.convert(module, L"--format lines"));
  for (int round = 0; round < rounds; ++round) {
    const double opening = timeOpening(main, module);
    const double converting = timeConverting(main);
    const BareTimes bare = bareLoop(source, html);
    std::cout << kLines << ' ' << opening << ' ' << bare.open << ' ' << converting << ' '
              << bare.convert << ' ' << timeEscape(main, heavy) << std::endl;
  }
}

}  // namespace
}  // namespace tintline::test

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  try {
    tintline::test::measure(std::atoi(argv[1]));
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "tintline_window_bench: " << error.what() << '\n';
    return 1;
  }
}
