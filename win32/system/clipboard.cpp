// See clipboard.h.
#include "win32/system/clipboard.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>

#include "base/codepage.h"
#include "win32/controls/window.h"
#include "win32/handle.h"

namespace tintline {
namespace {

constexpr int kTries = 20;
constexpr DWORD kPause = 25;  // milliseconds between two tries

using GlobalMemory = UniqueHandle<HGLOBAL, GlobalFree>;

[[noreturn]] void fail() { throw std::runtime_error("the clipboard cannot be used"); }

// The clipboard, open for the length of a block.
class OpenedClipboard {
 public:
  OpenedClipboard() {
    for (int tries = 0; !OpenClipboard(workingWindow()); ++tries) {
      if (tries == kTries) fail();
      Sleep(kPause);
    }
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard() { CloseClipboard(); }
};

GlobalMemory copyOf(const std::wstring& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, bytes));
  void* target = memory ? GlobalLock(memory.get()) : nullptr;
  if (target == nullptr) fail();
  std::memcpy(target, text.c_str(), bytes);
  GlobalUnlock(memory.get());
  return memory;
}

}  // namespace

void SystemClipboard::setText(std::string_view text) {
  GlobalMemory memory = copyOf(fromAnsi(text));
  const OpenedClipboard clipboard;
  if (!EmptyClipboard() || SetClipboardData(CF_UNICODETEXT, memory.get()) == nullptr) fail();
  static_cast<void>(memory.release());  // the clipboard's from now on
}

std::string SystemClipboard::text() {
  const OpenedClipboard clipboard;
  HANDLE memory = GetClipboardData(CF_UNICODETEXT);
  const auto* text = memory != nullptr ? static_cast<const wchar_t*>(GlobalLock(memory)) : nullptr;
  if (text == nullptr) return {};
  const std::size_t room = GlobalSize(memory) / sizeof(wchar_t);
  std::string result = toAnsi({text, wcsnlen(text, room)});
  GlobalUnlock(memory);
  return result;
}

}  // namespace tintline
