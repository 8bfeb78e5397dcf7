// See clipboard.h.
#include "win32/system/clipboard.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>

#include "win32/controls/window.h"
#include "win32/handle.h"

namespace tintline {
namespace {

constexpr int kTries = 20;
constexpr DWORD kBetweenTries = 25;  // milliseconds

using GlobalMemory = UniqueHandle<HGLOBAL, GlobalFree>;

[[noreturn]] void fail() { throw std::runtime_error("the clipboard cannot be used"); }

// The clipboard, open for the length of a block.
class OpenedClipboard {
 public:
  OpenedClipboard() {
    for (int tries = 0; !OpenClipboard(workingWindow()); ++tries) {
      if (tries == kTries) fail();
      Sleep(kBetweenTries);
    }
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard() { CloseClipboard(); }
};

// A copy of the text with a NUL behind it.
template <class Unit>
GlobalMemory copyOf(std::basic_string_view<Unit> text) {
  const std::size_t bytes = text.size() * sizeof(Unit);
  GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes + sizeof(Unit)));
  void* target = memory ? GlobalLock(memory.get()) : nullptr;
  if (target == nullptr) fail();
  std::memcpy(target, text.data(), bytes);
  GlobalUnlock(memory.get());
  return memory;
}
GlobalMemory copyOf(const std::string& text) { return copyOf(std::string_view(text)); }

struct Format {
  UINT id;
  GlobalMemory content;
};

// Clears the clipboard and puts the formats on it, the richest first.
template <std::size_t Count>
void put(Format (&&formats)[Count]) {
  const OpenedClipboard clipboard;
  if (!EmptyClipboard()) fail();
  for (Format& format : formats) {
    if (SetClipboardData(format.id, format.content.get()) == nullptr) fail();
    static_cast<void>(format.content.release());  // the clipboard's from now on
  }
}

}  // namespace

void SystemClipboard::setText(std::wstring_view text) { put({{CF_UNICODETEXT, copyOf(text)}}); }

void SystemClipboard::setFormats(const Formats& formats) {
  put({{RegisterClipboardFormatW(L"HTML Format"), copyOf(formats.html)},
       {RegisterClipboardFormatW(L"Rich Text Format"), copyOf(formats.rtf)},
       {CF_UNICODETEXT, copyOf(std::wstring_view(formats.text))}});
}

std::wstring SystemClipboard::text() {
  const OpenedClipboard clipboard;
  HANDLE memory = GetClipboardData(CF_UNICODETEXT);
  const auto* text = memory != nullptr ? static_cast<const wchar_t*>(GlobalLock(memory)) : nullptr;
  if (text == nullptr) return {};
  const std::size_t room = GlobalSize(memory) / sizeof(wchar_t);
  std::wstring result(text, wcsnlen(text, room));
  GlobalUnlock(memory);
  return result;
}

}  // namespace tintline
