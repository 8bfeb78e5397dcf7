// Drives a Windows program from outside, as a user does: its windows are found, read and
// clicked. Every wait has an end: what does not happen in time throws Failure, and so does
// the end of the program.
//
// Tested by every test in this folder.
#pragma once

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tintline::test {

using namespace std::chrono_literals;

inline constexpr std::chrono::milliseconds kPatience = 10s;  // for a step of the program

// What was waited for did not happen.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// A window of the program, also a control.
class Window {
 public:
  explicit Window(HWND handle) : handle_(handle) {}
  HWND handle() const { return handle_; }

  // Messages. `send` waits for the answer and throws when the window hangs.
  LRESULT send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;
  void post(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const;

  std::wstring text() const;
  void setText(const std::wstring& text) const;
  std::wstring className() const;
  bool enabled() const { return IsWindowEnabled(handle_) != FALSE; }
  bool visible() const { return IsWindowVisible(handle_) != FALSE; }
  bool exists() const { return IsWindow(handle_) != FALSE; }

  // The control with that id, or of that class, at any depth.
  Window control(int id) const;
  std::optional<Window> findControl(int id) const;
  Window controlOfClass(std::wstring_view className) const;

  // Presses and releases a key on the keyboard, perhaps with another one held (VK_CONTROL),
  // while this top window is in front.
  void pressKey(WORD key, WORD held = 0) const;

  // A mouse click into it; `keys`: MK_SHIFT, MK_CONTROL.
  void click(POINT point, WPARAM keys = 0) const;

 private:
  HWND handle_;
};

// A program that was started; its process ends with this object at the latest.
class App {
 public:
  explicit App(const std::filesystem::path& program, const std::wstring& arguments = {});
  ~App();
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  HANDLE process() const { return process_; }
  bool running() const { return WaitForSingleObject(process_, 0) == WAIT_TIMEOUT; }

  // Waits for the end of the process; its exit code.
  DWORD exitCode(std::chrono::milliseconds patience = kPatience) const;

  // Waits until the condition holds; `what` names it in the failure.
  void until(const std::function<bool()>& condition, std::string_view what,
             std::chrono::milliseconds patience = kPatience) const;

  // The first visible top window of the program that fits, or nothing.
  using Fits = std::function<bool(Window)>;
  std::optional<Window> find(const Fits& fits) const;
  Window window(const Fits& fits, std::string_view what) const;  // waits for it

  // By class or by title.
  std::optional<Window> findClass(std::wstring_view className) const;
  Window windowOfClass(std::wstring_view className) const;
  Window windowTitled(std::wstring_view title) const;

  // Waits until the window is gone.
  void untilGone(Window window) const;

 private:
  HANDLE process_ = nullptr;
  DWORD processId_ = 0;
};

// A message box that the program shows; waits for it.
class MessageBoxOf {
 public:
  explicit MessageBoxOf(const App& app);
  static std::optional<Window> find(const App& app);

  std::wstring title() const { return window_.text(); }
  std::wstring text() const;
  bool hasIcon() const;
  void answer(int button) const;  // IDOK, IDYES, IDNO

 private:
  const App& app_;
  Window window_;
};

// The system's dialog for opening or saving a file; waits for it.
class FileDialogOf {
 public:
  explicit FileDialogOf(const App& app);

  Window window() const { return window_; }
  std::wstring title() const { return window_.text(); }
  std::wstring name() const;
  void chooseFilter(int index) const;  // from 0
  void accept(const std::wstring& name) const;
  void cancel() const;

 private:
  const App& app_;
  Window window_;
};

// The system's dialog for choosing a folder; waits for it.
class FolderDialogOf {
 public:
  explicit FolderDialogOf(const App& app);

  std::wstring prompt() const;
  void accept() const;  // the folder that is selected, at first the one it starts with
  void cancel() const;

 private:
  const App& app_;
  Window window_;
};

// A message that was sent and that nobody waits for: a command that takes its time, or that
// asks the user something before it comes to its end.
class Started {
 public:
  Started(const App& app, Window window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0);

  bool done() const { return *done_; }
  void finish(std::chrono::milliseconds patience = kPatience) const;

 private:
  const App& app_;
  std::shared_ptr<bool> done_;
};

// What a message wrote into a buffer of `size` bytes in the program's memory, whose address it
// got in lParam.
std::string answerInMemory(const App& app, Window window, UINT message, WPARAM wparam,
                           std::size_t size);

// The texts of a tree, depth first, each indented by two blanks a level.
std::vector<std::wstring> treeTexts(const App& app, Window tree);

// Clicks the node (counted as above) in the tree, which is opened and scrolled for it.
void clickTreeNode(const App& app, Window tree, std::size_t index);

// Opens the node's context menu and chooses an entry, from 0, by the keyboard. What that
// starts may ask something before it ends.
void chooseFromTreeMenu(const App& app, Window tree, std::size_t index, int entry);

// The clipboard's text in the code page, as it stands; nothing for no text.
std::optional<std::string> clipboardText();
void setClipboardText(std::wstring_view text);
void clearClipboard();

// The arguments of this very program, without its name.
std::vector<std::wstring> ownArguments();

// Runs a console program to its end; its exit code.
DWORD runToEnd(const std::filesystem::path& program, const std::wstring& arguments);

}  // namespace tintline::test
