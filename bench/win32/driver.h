// Drives a Windows program from outside, as a user does: its windows are found, read and
// clicked. Every wait has an end: what does not happen in time throws Failure, and so does
// the end of the program.
//
// Tested by every test in tests/win32/program/.
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

inline constexpr std::chrono::milliseconds kPatience = 20s;  // for a step of the program

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

  // The control with that id, at any depth.
  Window control(int id) const;
  std::optional<Window> findControl(int id) const;

  // Presses and releases a key on the keyboard, perhaps with others held ({VK_CONTROL}), while this
  // top window is in front.
  void pressKey(WORD key, const std::vector<WORD>& held = {}) const;

  // The control of this top window that has the keyboard: its id, or 0.
  int focusedId() const;

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

  std::optional<Window> findClass(std::wstring_view className) const;
  Window windowOfClass(std::wstring_view className) const;

  // Waits until the window is gone.
  void untilGone(Window window) const;

 private:
  HANDLE process_ = nullptr;
  DWORD processId_ = 0;
};

// The system's dialog for opening or saving a file; waits for it.
class FileDialogOf {
 public:
  explicit FileDialogOf(const App& app);

  Window window() const { return window_; }
  void accept(const std::wstring& name) const;

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

// Memory in the program, for messages whose arguments the system does not carry over.
class ForeignMemory {
 public:
  ForeignMemory(const App& app, std::size_t size);
  ~ForeignMemory() { VirtualFreeEx(process_, place_, 0, MEM_RELEASE); }
  ForeignMemory(const ForeignMemory&) = delete;
  ForeignMemory& operator=(const ForeignMemory&) = delete;

  char* at(std::size_t offset) const { return static_cast<char*>(place_) + offset; }
  LPARAM argument() const { return reinterpret_cast<LPARAM>(place_); }
  void write(const void* data, std::size_t size) const;
  void read(std::size_t offset, void* data, std::size_t size) const;

 private:
  HANDLE process_;
  void* place_;
};

// The texts of a tree, depth first, each indented by two blanks a level.
std::vector<std::wstring> treeTexts(const App& app, Window tree);

// Where the text of a node (counted as above) is, once the tree is opened and scrolled for it.
POINT placeOfTreeNode(const App& app, Window tree, std::size_t index);

void clickTreeNode(const App& app, Window tree, std::size_t index);

// The arguments of this very program, without its name.
std::vector<std::wstring> ownArguments();

// Starts a program that this one does not wait for, nor end.
void startAlone(const std::filesystem::path& program, const std::wstring& arguments);

// Runs a console program to its end; its exit code.
DWORD runToEnd(const std::filesystem::path& program, const std::wstring& arguments);

}  // namespace tintline::test
