// See program_test.h. The entry of the test program, too.
#include "tests/win32/program/program_test.h"

#include <commctrl.h>

#include <fstream>

#include "base/file.h"

namespace tintline::test {
namespace {

namespace fs = std::filesystem;

// ---------------------------------------------------------------------------- opened pages

constexpr std::wstring_view kNoteOption = L"--note-opened";
constexpr const wchar_t* kExtension = L"Software\\Classes\\.htm";
constexpr const wchar_t* kClass = L"Software\\Classes\\tintline.test";
constexpr const wchar_t* kOpenCommand = L"Software\\Classes\\tintline.test\\shell\\open\\command";

// An empty file for each page: nobody reads what another is about to replace.
fs::path noteOf(const fs::path& page) {
  return fs::temp_directory_path() / L"tintline-opened" / page.filename();
}

int noteOpened(const fs::path& page) {
  std::ofstream{noteOf(page)};
  return 0;
}

void setDefaultValue(const wchar_t* key, const std::wstring& value) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, nullptr, REG_SZ, value.c_str(),
                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::wstring formerClass;

// -------------------------------------------------------------------------------- dialogs

constexpr wchar_t kDialogClass[] = L"#32770";
constexpr int kMessageText = 0xFFFF;

bool isMessageBox(Window window) {
  return window.className() == kDialogClass && GetDlgItem(window.handle(), kMessageText) != nullptr;
}

// The clipboard, opened; another program may hold it for a moment.
class OpenClipboardGuard {
 public:
  OpenClipboardGuard() {
    for (int attempt = 0; OpenClipboard(nullptr) == FALSE; Sleep(10))
      if (++attempt == 500) throw Failure("the clipboard cannot be opened");
  }
  ~OpenClipboardGuard() { CloseClipboard(); }
  OpenClipboardGuard(const OpenClipboardGuard&) = delete;
  OpenClipboardGuard& operator=(const OpenClipboardGuard&) = delete;
};

}  // namespace

void ProgramTest::SetUpTestSuite() {
  wchar_t self[MAX_PATH], former[256] = L"";
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  DWORD size = sizeof former;
  RegGetValueW(HKEY_LOCAL_MACHINE, kExtension, nullptr, RRF_RT_REG_SZ, nullptr, former, &size);
  formerClass = former;
  setDefaultValue(kExtension, L"tintline.test");
  setDefaultValue(kOpenCommand,
                  L"\"" + std::wstring(self) + L"\" " + kNoteOption.data() + L" \"%1\"");
  fs::remove_all(noteOf({}));
  fs::create_directories(noteOf({}));
}

void ProgramTest::TearDownTestSuite() {
  setDefaultValue(kExtension, formerClass);
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, kClass);
}

void ProgramTest::start(const std::wstring& arguments) {
  main_.reset();
  app_.emplace(folder.program(), arguments);
  waitForMain();
}

void ProgramTest::exportTo(const fs::path& target) const {
  const Started exporting = main().press(id::kCmdExport);
  FileDialogOf(app()).accept(target.wstring());
  exporting.finish(MainWindow::kRunTime);
}

std::wstring ProgramTest::answer(int button) const {
  const Window box = app().window(isMessageBox, "a message box");
  std::wstring message = box.control(kMessageText).text();
  std::erase(message, L'\r');
  box.post(WM_COMMAND, static_cast<WPARAM>(button));
  app().untilGone(box);
  return message;
}

bool ProgramTest::messageIsShown() const { return app().find(isMessageBox).has_value(); }

ProgramTest::Opened ProgramTest::open(Command command, const wchar_t* className) const {
  Started started = main().start(command);
  return {started, app().windowOfClass(className)};
}

void ProgramTest::leave(const Opened& dialog, int button) const {
  dialog.window.control(button).post(BM_CLICK);
  app().untilGone(dialog.window);
}

std::string ProgramTest::line(int list, std::size_t index) const {
  const Window box = main().control(list);
  const LRESULT length = box.send(kGetLine, index);
  if (length < 0) throw Failure("no line " + std::to_string(index));
  std::string bytes(static_cast<std::size_t>(length), '\0');
  const ForeignMemory memory(app(), bytes.size() + 1);
  box.send(kGetLine, index, memory.argument());
  memory.read(0, bytes.data(), bytes.size());
  return bytes;
}

void ProgramTest::clickLine(int list, std::size_t index, WPARAM keys) const {
  const Window box = main().control(list);
  box.send(LB_SETTOPINDEX, index);  // so that it is in view, if possible as the first one
  const auto top = static_cast<std::size_t>(box.send(LB_GETTOPINDEX));
  const auto height = static_cast<std::size_t>(box.send(LB_GETITEMHEIGHT));
  box.click({5, static_cast<LONG>((index - top) * height + height / 2)}, keys);
  app().until([&] { return box.send(LB_GETSEL, index) > 0; }, "the selection of a line");
}

void ProgramTest::untilLines(int list, std::size_t count) const {
  app().until([&] { return main().lineCount(list) == count; }, std::to_string(count) + " lines");
  main().untilIdle();
}

std::vector<std::wstring> ProgramTest::tree() const {
  return treeTexts(app(), main().control(id::kTreeView1));
}

void ProgramTest::chooseFromNodeMenu(std::size_t node, int entry) const {
  main().untilIdle();
  const Window tree = main().control(id::kTreeView1);
  const POINT place = placeOfTreeNode(app(), tree, node);
  POINT onScreen = place;
  ClientToScreen(tree.handle(), &onScreen);
  SetCursorPos(onScreen.x, onScreen.y);  // the menu opens at the pointer
  tree.post(WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(place.x, place.y));
  tree.post(WM_RBUTTONUP, 0, MAKELPARAM(place.x, place.y));
  const Window menu = app().windowOfClass(L"#32768");
  for (int i = 0; i <= entry; ++i) tree.post(WM_KEYDOWN, VK_DOWN);
  tree.post(WM_KEYDOWN, VK_RETURN);
  app().untilGone(menu);
}

void ProgramTest::untilOpened(const fs::path& file) const {
  const auto isNoted = [&] { return exists(noteOf(file)); };
  app().until(isNoted, "the opening of " + file.filename().string());
  std::error_code stillWritten;
  fs::remove(noteOf(file), stillWritten);
}

std::optional<std::string> clipboardText() {
  const OpenClipboardGuard clipboard;
  const HANDLE data = GetClipboardData(CF_TEXT);
  if (data == nullptr) return std::nullopt;
  std::string text = static_cast<const char*>(GlobalLock(data));
  GlobalUnlock(data);
  return text;
}

void setClipboardText(std::wstring_view text) {
  const OpenClipboardGuard clipboard;
  EmptyClipboard();
  if (text.empty()) return;
  const HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  auto* place = static_cast<wchar_t*>(GlobalLock(data));
  place[text.copy(place, text.size())] = L'\0';
  GlobalUnlock(data);
  if (SetClipboardData(CF_UNICODETEXT, data) == nullptr)
    throw Failure("the clipboard takes no text");
}

}  // namespace tintline::test

int main(int argc, char** argv) {
  using namespace tintline::test;
  const std::vector<std::wstring> arguments = ownArguments();
  if (arguments.size() == 2 && arguments[0] == kNoteOption) return noteOpened(arguments[1]);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
