// See screenshot.h. Tested by ./dev pictures.
#include "bench/win32/screenshot.h"

#include <objidl.h>

#include <algorithm>

namespace Gdiplus {  // its headers expect these
using std::max;
using std::min;
}  // namespace Gdiplus

#include <gdiplus.h>

namespace tintline::test {
namespace {

constexpr DWORD kPaintTime = 500;  // ms, more than enough for a window

// {557CF406-1A04-11D3-9A73-0000F81EF32E}
constexpr CLSID kPngEncoder{0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};

class GdiplusSession {
 public:
  GdiplusSession() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token_, &input, nullptr);
  }
  ~GdiplusSession() { Gdiplus::GdiplusShutdown(token_); }
  GdiplusSession(const GdiplusSession&) = delete;
  GdiplusSession& operator=(const GdiplusSession&) = delete;

 private:
  ULONG_PTR token_ = 0;
};

}  // namespace

void savePicture(Window window, const std::filesystem::path& file) {
  SetForegroundWindow(window.handle());
  Sleep(kPaintTime);
  window.send(WM_NULL);
  RECT place{};
  GetWindowRect(window.handle(), &place);
  const int width = place.right - place.left, height = place.bottom - place.top;

  const GdiplusSession session;
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
  const HGDIOBJ former = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
  SelectObject(memory, former);
  const Gdiplus::Status status =
      Gdiplus::Bitmap(bitmap, nullptr).Save(file.c_str(), &kPngEncoder, nullptr);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  if (status != Gdiplus::Ok) throw Failure("the picture cannot be saved");
}

}  // namespace tintline::test
