// What screen readers learn of a list that draws its lines itself and holds no texts: its lines
// are asked for one by one, by the messages of a list box, so that a long list costs nothing.
//
// Tested by tests/win32/controls/accessible_test.cpp.
#pragma once

#include <windows.h>

#include <optional>

#include "win32/controls/accessible.h"

namespace tintline {

// The list answers LB_GETTEXT. Its window's text is its name; its lines are children from 1 on.
class ListAccessible final : public Accessible {
 public:
  explicit ListAccessible(HWND list) : Accessible(list) {}

  HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override;
  HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
  HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
  HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
  HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
  HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
  HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
  HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                        VARIANT child) override;
  HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
  HRESULT STDMETHODCALLTYPE accHitTest(LONG left, LONG top, VARIANT* child) override;

 private:
  bool hasStandardChildren() const override { return false; }

  LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return SendMessageW(control(), message, wParam, lParam);
  }
  LONG count() const;
  std::optional<WPARAM> lineOf(const VARIANT& child) const;
  RECT placeOf(WPARAM line) const;
  void tellSelected() const;
};

}  // namespace tintline
