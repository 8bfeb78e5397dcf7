// Takes pictures of the program's windows; needs a screen.
//
//   tintline_pictures FOLDER         the main window with a converted module and with documents
//                                    of Word, and every dialog
//   tintline_pictures --main PICTURE [MODULE]   the main window as it starts, with MODULE opened
//
// Run by ./dev pictures and ./dev app.

#include <iostream>

#include "base/file.h"
#include "bench/win32/main_window.h"
#include "bench/win32/program_folder.h"
#include "bench/win32/screenshot.h"
#include "tests/win32/office/controlled_server.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

struct DialogPicture {
  Command command;
  const wchar_t* className;
  const wchar_t* picture;
};

constexpr DialogPicture kDialogs[] = {
    {Command::mnuFarben, kColorsClass, L"farben.png"},
    {Command::mnuPrePost, kPrePostClass, L"prepost.png"},
    {Command::mnuInfo, kSplashClass, L"info.png"},
    {Command::mnuProzeduren, kProceduresClass, L"prozeduren.png"},
    {Command::mnuZeilenbreite, kInputClass, L"zeilenbreite.png"},
};

void pictureOfDialog(const MainWindow& main, const DialogPicture& dialog, const fs::path& folder) {
  const Started command = main.start(dialog.command);
  const Window window = main.app().windowOfClass(dialog.className);
  savePicture(window, folder / dialog.picture);
  if (window.className() == kSplashClass)
    window.pressKey(VK_SPACE);
  else
    window.post(WM_CLOSE);
  main.app().untilGone(window);
  command.finish();
}

void picturesOfAll(const fs::path& folder) {
  create_directories(folder);
  const ProgramFolder program;
  const App app(program.program());
  const MainWindow main(app);
  main.open(sampleModule());
  main.setChecked(id::kCheck1, true);
  main.setChecked(id::kCheck2, true);
  main.convert();
  savePicture(main.window(), folder / L"hauptfenster.png");
  main.run(Command::mnuGenau);
  savePicture(main.window(), folder / L"genau.png");
  main.run(Command::mnuDunkel);
  savePicture(main.window(), folder / L"dunkel.png");
  main.run(Command::mnuHelligkeitSystem);
  main.run(Command::mnuKlassisch);
  for (const DialogPicture& dialog : kDialogs) pictureOfDialog(main, dialog, folder);
  main.close();
}

// The server of the tests stands for Word.
void pictureOfWord(const fs::path& folder) {
  const TempFolder hosts;
  const ControlledServer word(hosts.path(), L"Word.Application");
  word.write(L"projects.txt",
             "project Project\nfile C:\\Vorlagen\\Brief.dot\n"
             "component 100 leer.bas ThisDocument\n"
             "component 1 muster.bas Musterprojekt\n"
             "component 2 kunde.cls Kunde\n"
             "component 3 leer.bas Eingabe\n"
             "project Project\nfile C:\\Vorlagen\\Geheim.dot\nprotection 1\n");
  word.write(L"leer.bas", "");
  word.write(L"muster.bas", readFile(sampleModule()));
  word.write(L"kunde.cls", "Option Explicit\r\nProperty Get Wert()\r\nEnd Property\r\n");
  ControlledServer::registerAt(hosts.path());
  word.start();
  const ProgramFolder program;
  const App app(program.program());
  const MainWindow main(app);
  main.open(sampleModule());
  main.run(Command::mnuword);
  const std::size_t count = treeTexts(app, main.control(id::kTreeView1)).size();
  for (const std::size_t last : {count - 5, std::size_t{4}}) {  // that of Kunde, one of the module
    main.clickNode(last);
    main.untilShown(id::kLabel9, L" Zeilen eingelesen");
  }
  main.untilIdle();
  savePicture(main.window(), folder / L"dokumente.png");
  main.close();
  ControlledServer::unregister();
}

void pictureOfStart(const fs::path& picture, const fs::path& module) {
  const ProgramFolder program;
  const App app(program.program());
  const MainWindow main(app);
  if (!module.empty()) main.open(fs::absolute(module));
  savePicture(main.window(), picture);
  main.close();
}

int run(const std::vector<std::wstring>& arguments) {
  const std::size_t count = arguments.size();
  if (count >= 2 && count <= 3 && arguments[0] == L"--main")
    pictureOfStart(arguments[1], count == 3 ? arguments[2] : L"");
  else if (count == 1)
    picturesOfAll(arguments[0]), pictureOfWord(arguments[0]);
  else
    return 2;
  return 0;
}

}  // namespace
}  // namespace tintline::test

int main() {
  try {
    return tintline::test::run(tintline::test::ownArguments());
  } catch (const std::exception& error) {
    std::cerr << "tintline_pictures: " << error.what() << '\n';
    return 1;
  }
}
