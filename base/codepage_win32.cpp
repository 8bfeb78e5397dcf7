// The system's ANSI code page. See codepage.h.
// Tested by tests/unit/base/codepage_test.cpp.
#include <windows.h>

#include "base/codepage.h"

namespace tintline {
namespace {

constexpr int kMaxPerCall = 0x100000;  // the calls count in int; whole texts are cut into runs

int asInt(std::size_t size) { return static_cast<int>(size); }

}  // namespace

std::string toAnsi(std::wstring_view text) {
  std::string result;
  while (!text.empty()) {
    std::size_t run = text.size() < kMaxPerCall ? text.size() : kMaxPerCall;
    if (run < text.size() && IS_HIGH_SURROGATE(text[run - 1])) --run;
    const int size = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), asInt(run),
                                         nullptr, 0, "?", nullptr);
    const std::size_t done = result.size();
    result.resize(done + static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), asInt(run), result.data() + done,
                        size, "?", nullptr);
    text.remove_prefix(run);
  }
  return result;
}

std::wstring fromAnsi(std::string_view text) {
  std::wstring result;
  while (!text.empty()) {
    std::size_t run = text.size() < kMaxPerCall ? text.size() : kMaxPerCall;
    if (run < text.size() && IsDBCSLeadByte(static_cast<BYTE>(text[run - 1]))) --run;
    const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), asInt(run), nullptr, 0);
    const std::size_t done = result.size();
    result.resize(done + static_cast<std::size_t>(size));
    MultiByteToWideChar(CP_ACP, 0, text.data(), asInt(run), result.data() + done, size);
    text.remove_prefix(run);
  }
  return result;
}

unsigned ansiCodePage() { return ::GetACP(); }

std::wstring pathText(const std::filesystem::path& path) { return path.wstring(); }

std::string pathBytes(const std::filesystem::path& path) { return toUtf8(path.native()); }

std::filesystem::path pathFromText(std::wstring_view text) { return text; }

}  // namespace tintline
