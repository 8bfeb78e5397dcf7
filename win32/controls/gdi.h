// What is drawn with: owners of the system's drawing objects, and device contexts for
// the length of a block.
//
// Tested by the tests that drive the program.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "win32/handle.h"

namespace tintline {

using UniqueAccelerators = UniqueHandle<HACCEL, DestroyAcceleratorTable>;
using UniqueBrush = UniqueHandle<HBRUSH, DeleteObject>;
using UniqueBitmap = UniqueHandle<HBITMAP, DeleteObject>;
using UniqueFont = UniqueHandle<HFONT, DeleteObject>;
using UniqueImageList = UniqueHandle<HIMAGELIST, ImageList_Destroy>;
using UniqueMenu = UniqueHandle<HMENU, DestroyMenu>;
using UniquePen = UniqueHandle<HPEN, DeleteObject>;

// A device context of a window, given back at the end of the block.
template <HDC(WINAPI* Get)(HWND)>
class DeviceContext {
 public:
  explicit DeviceContext(HWND window) : window_(window), dc_(Get(window)) {}
  DeviceContext(const DeviceContext&) = delete;
  DeviceContext& operator=(const DeviceContext&) = delete;
  ~DeviceContext() { ReleaseDC(window_, dc_); }
  operator HDC() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};
using WindowDc = DeviceContext<GetDC>;
using FrameDc = DeviceContext<GetWindowDC>;  // of all of a window, its frame included

// Selects an object (a font, a pen) into a device context for the length of a block.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() { SelectObject(dc_, before_); }

 private:
  HDC dc_;
  HGDIOBJ before_;
};

}  // namespace tintline
