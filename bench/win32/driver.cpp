// See driver.h. Tested by every test in tests/win32/program/.
#include "bench/win32/driver.h"

#include <commctrl.h>
#include <shellapi.h>

#include <cstring>
#include <utility>

namespace tintline::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr UINT kAnswerTime = 20000;  // ms for a message
constexpr auto kPause = 5ms;         // between two looks

// A look every few milliseconds, until the condition holds or the time is over.
bool eventually(const std::function<bool()>& condition, std::chrono::milliseconds patience) {
  const auto end = Clock::now() + patience;
  while (!condition()) {
    if (Clock::now() > end) return false;
    Sleep(static_cast<DWORD>(kPause.count()));
    MSG message;  // looking lets the answers to started messages in
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
  }
  return true;
}

// Calls `visit` for windows until it returns false.
using Visit = std::function<bool(HWND)>;

BOOL CALLBACK visitWindow(HWND window, LPARAM visit) {
  return (*reinterpret_cast<Visit*>(visit))(window) ? TRUE : FALSE;
}

std::optional<Window> firstControl(HWND parent, const std::function<bool(Window)>& fits) {
  std::optional<Window> hit;
  Visit visit = [&](HWND window) {
    if (fits(Window(window))) hit = Window(window);
    return !hit;
  };
  EnumChildWindows(parent, visitWindow, reinterpret_cast<LPARAM>(&visit));
  return hit;
}

PROCESS_INFORMATION start(const std::filesystem::path& program, const std::wstring& arguments) {
  std::wstring command = L"\"" + program.wstring() + L"\" " + arguments;
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      program.parent_path().c_str(), &startup, &process))
    throw Failure("cannot start " + program.filename().string() + ": error " +
                  std::to_string(GetLastError()));
  CloseHandle(process.hThread);
  return process;
}

}  // namespace

// --------------------------------------------------------------------------------- Window

LRESULT Window::send(UINT message, WPARAM wparam, LPARAM lparam) const {
  DWORD_PTR result = 0;
  if (!SendMessageTimeoutW(handle_, message, wparam, lparam, SMTO_ABORTIFHUNG, kAnswerTime,
                           &result))
    throw Failure("no answer to message " + std::to_string(message) + ": error " +
                  std::to_string(GetLastError()));
  return static_cast<LRESULT>(result);
}

void Window::post(UINT message, WPARAM wparam, LPARAM lparam) const {
  if (!PostMessageW(handle_, message, wparam, lparam))
    throw Failure("cannot post message " + std::to_string(message) + ": error " +
                  std::to_string(GetLastError()));
}

std::wstring Window::text() const {
  std::wstring text(static_cast<std::size_t>(send(WM_GETTEXTLENGTH)) + 1, L'\0');
  const LRESULT length = send(WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

void Window::setText(const std::wstring& text) const {
  send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

std::wstring Window::className() const {
  wchar_t name[256];
  return {name, static_cast<std::size_t>(GetClassNameW(handle_, name, 256))};
}

std::optional<Window> Window::findControl(int id) const {
  return firstControl(handle_, [=](Window child) { return GetDlgCtrlID(child.handle()) == id; });
}

Window Window::control(int id) const {
  if (const auto found = findControl(id)) return *found;
  throw Failure("no control " + std::to_string(id));
}

void Window::pressKey(WORD key, const std::vector<WORD>& held) const {
  SetForegroundWindow(handle_);
  if (!eventually([this] { return GetForegroundWindow() == handle_; }, kPatience))
    throw Failure("a window does not come to the front");
  std::vector<INPUT> strokes;
  const auto stroke = [&](WORD which, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = which;
    input.ki.dwFlags = flags;
    strokes.push_back(input);
  };
  for (const WORD other : held) stroke(other, 0);
  stroke(key, 0);
  stroke(key, KEYEVENTF_KEYUP);
  for (const WORD other : held) stroke(other, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(strokes.size()), strokes.data(), sizeof(INPUT));
}

int Window::focusedId() const {
  GUITHREADINFO state{};
  state.cbSize = sizeof state;
  GetGUIThreadInfo(GetWindowThreadProcessId(handle_, nullptr), &state);
  return state.hwndFocus != nullptr ? GetDlgCtrlID(state.hwndFocus) : 0;
}

void Window::click(POINT point, WPARAM keys) const {
  const LPARAM place = MAKELPARAM(point.x, point.y);
  post(WM_LBUTTONDOWN, keys | MK_LBUTTON, place);
  post(WM_LBUTTONUP, keys, place);
}

// ------------------------------------------------------------------------------------ App

App::App(const std::filesystem::path& program, const std::wstring& arguments) {
  const PROCESS_INFORMATION process = start(program, arguments);
  process_ = process.hProcess;
  processId_ = process.dwProcessId;
}

App::~App() {
  if (running()) {
    TerminateProcess(process_, 99);
    WaitForSingleObject(process_, 5000);
  }
  CloseHandle(process_);
}

DWORD App::exitCode(std::chrono::milliseconds patience) const {
  if (WaitForSingleObject(process_, static_cast<DWORD>(patience.count())) != WAIT_OBJECT_0)
    throw Failure("the program does not end");
  DWORD code = 0;
  GetExitCodeProcess(process_, &code);
  return code;
}

void App::until(const std::function<bool()>& condition, std::string_view what,
                std::chrono::milliseconds patience) const {
  const auto holdsOrEnded = [&] { return condition() || !running(); };
  const bool inTime = eventually(holdsOrEnded, patience);
  if (inTime && condition()) return;
  const std::string state =
      running() ? "not in time: "
                : "the program ended with " + std::to_string(exitCode()) + " while waiting for: ";
  throw Failure(state + std::string(what));
}

std::optional<Window> App::find(const Fits& fits) const {
  std::optional<Window> hit;
  Visit visit = [&](HWND handle) {
    DWORD owner = 0;
    GetWindowThreadProcessId(handle, &owner);
    if (owner == processId_ && IsWindowVisible(handle) && fits(Window(handle)))
      hit = Window(handle);
    return !hit;
  };
  EnumWindows(visitWindow, reinterpret_cast<LPARAM>(&visit));
  return hit;
}

Window App::window(const Fits& fits, std::string_view what) const {
  std::optional<Window> hit;
  until([&] { return (hit = find(fits)).has_value(); }, what);
  return *hit;
}

std::optional<Window> App::findClass(std::wstring_view className) const {
  return find([=](Window window) { return window.className() == className; });
}

Window App::windowOfClass(std::wstring_view className) const {
  return window([=](Window window) { return window.className() == className; },
                "window of class " + std::filesystem::path(className).string());
}

void App::untilGone(Window window) const {
  eventually([&] { return !window.exists() || !window.visible() || !running(); }, kPatience);
  if (window.exists() && window.visible()) throw Failure("a window does not close");
}

// ---------------------------------------------------------------------------- file dialog

namespace {

constexpr int kFileName = 0x47C;

bool isFileDialog(Window window) {
  const std::optional<Window> name = window.findControl(kFileName);
  return window.className() == L"#32770" && name && name->visible();
}

}  // namespace

FileDialogOf::FileDialogOf(const App& app)
    : app_(app), window_(app.window(isFileDialog, "a file dialog")) {}

void FileDialogOf::accept(const std::wstring& name) const {
  window_.control(kFileName).setText(name);
  window_.post(WM_COMMAND, IDOK);
  app_.untilGone(window_);
}

// ------------------------------------------------------------------------- foreign memory

ForeignMemory::ForeignMemory(const App& app, std::size_t size)
    : process_(app.process()),
      place_(VirtualAllocEx(process_, nullptr, size, MEM_COMMIT, PAGE_READWRITE)) {
  if (place_ == nullptr) throw Failure("no memory in the program");
}

void ForeignMemory::write(const void* data, std::size_t size) const {
  if (!WriteProcessMemory(process_, place_, data, size, nullptr))
    throw Failure("cannot write to the program's memory");
}

void ForeignMemory::read(std::size_t offset, void* data, std::size_t size) const {
  if (!ReadProcessMemory(process_, at(offset), data, size, nullptr))
    throw Failure("cannot read the program's memory");
}

// ----------------------------------------------------------------------------------- tree

namespace {

constexpr std::size_t kTreeText = 512;  // characters

HTREEITEM neighbour(Window tree, UINT relation, HTREEITEM item) {
  return reinterpret_cast<HTREEITEM>(
      tree.send(TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

struct TreeItem {
  HTREEITEM handle;
  int level;
};

void collect(Window tree, HTREEITEM first, int level, std::vector<TreeItem>& items) {
  for (HTREEITEM item = first; item != nullptr; item = neighbour(tree, TVGN_NEXT, item)) {
    items.push_back({item, level});
    collect(tree, neighbour(tree, TVGN_CHILD, item), level + 1, items);
  }
}

std::vector<TreeItem> treeItems(Window tree) {
  std::vector<TreeItem> items;
  collect(tree, neighbour(tree, TVGN_ROOT, nullptr), 0, items);
  return items;
}

std::wstring treeText(const App& app, Window tree, HTREEITEM item) {
  const ForeignMemory memory(app, sizeof(TVITEMW) + kTreeText * sizeof(wchar_t));
  TVITEMW request{};
  request.mask = TVIF_TEXT | TVIF_HANDLE;
  request.hItem = item;
  request.pszText = reinterpret_cast<wchar_t*>(memory.at(sizeof request));
  request.cchTextMax = static_cast<int>(kTreeText);
  memory.write(&request, sizeof request);
  if (tree.send(TVM_GETITEMW, 0, memory.argument()) == 0) throw Failure("no such tree node");
  wchar_t text[kTreeText];
  memory.read(sizeof request, text, sizeof text);
  return {text, wcsnlen(text, kTreeText)};
}

}  // namespace

std::vector<std::wstring> treeTexts(const App& app, Window tree) {
  std::vector<std::wstring> texts;
  for (const TreeItem& item : treeItems(tree))
    texts.push_back(std::wstring(static_cast<std::size_t>(2 * item.level), L' ') +
                    treeText(app, tree, item.handle));
  return texts;
}

POINT placeOfTreeNode(const App& app, Window tree, std::size_t index) {
  const HTREEITEM item = treeItems(tree).at(index).handle;
  tree.send(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
  // The message takes the node in the place where it puts the rectangle.
  const ForeignMemory memory(app, sizeof(RECT));
  RECT place{};
  std::memcpy(&place, &item, sizeof item);
  memory.write(&place, sizeof place);
  if (tree.send(TVM_GETITEMRECT, TRUE, memory.argument()) == 0)
    throw Failure("the tree node is not in view");
  memory.read(0, &place, sizeof place);
  return {place.left + 2, (place.top + place.bottom) / 2};
}

void clickTreeNode(const App& app, Window tree, std::size_t index) {
  const HTREEITEM item = treeItems(tree).at(index).handle;
  tree.click(placeOfTreeNode(app, tree, index));
  // A command that is sent overtakes a click that the tree has not taken yet.
  app.until([&] { return neighbour(tree, TVGN_CARET, nullptr) == item; },
            "the selection of a node");
}

// ------------------------------------------------------------------------------- messages

namespace {

// The answer came, perhaps when nobody is interested any more.
void CALLBACK noteAnswer(HWND, UINT, ULONG_PTR done, LRESULT) {
  auto* flag = reinterpret_cast<std::shared_ptr<bool>*>(done);
  **flag = true;
  delete flag;
}

}  // namespace

Started::Started(const App& app, Window window, UINT message, WPARAM wparam, LPARAM lparam)
    : app_(app), done_(std::make_shared<bool>(false)) {
  auto flag = std::make_unique<std::shared_ptr<bool>>(done_);
  if (!SendMessageCallbackW(window.handle(), message, wparam, lparam, noteAnswer,
                            reinterpret_cast<ULONG_PTR>(flag.get())))
    throw Failure("cannot send message " + std::to_string(message));
  flag.release();  // noteAnswer has it
}

void Started::finish(std::chrono::milliseconds patience) const {
  app_.until([this] { return done(); }, "the end of a command", patience);
}

std::vector<std::wstring> ownArguments() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::wstring> result(arguments + 1, arguments + count);
  LocalFree(arguments);
  return result;
}

void startAlone(const std::filesystem::path& program, const std::wstring& arguments) {
  CloseHandle(start(program, arguments).hProcess);
}

DWORD runToEnd(const std::filesystem::path& program, const std::wstring& arguments) {
  return App(program, arguments).exitCode(60s);
}

}  // namespace tintline::test
