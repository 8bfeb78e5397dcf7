// See list_accessible.h.
#include "win32/controls/list_accessible.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "win32/controls/window.h"

namespace tintline {
namespace {

// Several lines at once, by their numbers from 0.
class Lines final : public IEnumVARIANT {
 public:
  explicit Lines(std::vector<int> lines, std::size_t at = 0) : lines_(std::move(lines)), at_(at) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    const bool known = id == IID_IUnknown || id == IID_IEnumVARIANT;
    *object = known ? static_cast<IEnumVARIANT*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* children, ULONG* given) override {
    ULONG count = 0;
    for (; count < wanted && at_ < lines_.size(); ++count, ++at_) {
      children[count].vt = VT_I4;
      children[count].lVal = lines_[at_] + 1;
    }
    if (given != nullptr) *given = count;
    return count == wanted ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG wanted) override {
    const std::size_t count = std::min<std::size_t>(wanted, lines_.size() - at_);
    at_ += count;
    return count == wanted ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Reset() override {
    at_ = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override try {
    *copy = new Lines(lines_, at_);
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }

 private:
  ~Lines() = default;  // by Release only

  LONG references_ = 1;
  std::vector<int> lines_;
  std::size_t at_;
};

}  // namespace

LONG ListAccessible::count() const {
  return static_cast<LONG>(std::max<LRESULT>(send(LB_GETCOUNT), 0));
}

// Nothing for the list itself, and where there is no such line.
std::optional<WPARAM> ListAccessible::lineOf(const VARIANT& child) const {
  if (child.vt != VT_I4 || child.lVal < 1 || child.lVal > count()) return {};
  return static_cast<WPARAM>(child.lVal - 1);
}

RECT ListAccessible::placeOf(WPARAM line) const {
  RECT place{};
  send(LB_GETITEMRECT, line, reinterpret_cast<LPARAM>(&place));
  MapWindowPoints(control(), nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

HRESULT ListAccessible::get_accChildCount(LONG* children) {
  if (children == nullptr) return E_INVALIDARG;
  *children = count();
  return S_OK;
}

// Lines are no objects of their own.
HRESULT ListAccessible::get_accChild(VARIANT child, IDispatch** object) {
  if (object == nullptr) return E_INVALIDARG;
  *object = nullptr;
  return lineOf(child) ? S_FALSE : E_INVALIDARG;
}

HRESULT ListAccessible::get_accName(VARIANT child, BSTR* name) try {
  if (isSelf(child)) return give(windowText(control()), name);
  const auto line = lineOf(child);
  if (!line) return E_INVALIDARG;
  const LRESULT length = send(LB_GETTEXTLEN, *line);
  if (length < 0) return E_INVALIDARG;
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  send(LB_GETTEXT, *line, reinterpret_cast<LPARAM>(text.data()));
  text.pop_back();
  return give(text, name);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT ListAccessible::get_accRole(VARIANT child, VARIANT* role) {
  if (isSelf(child)) return give(ROLE_SYSTEM_LIST, role);
  return lineOf(child) ? give(ROLE_SYSTEM_LISTITEM, role) : E_INVALIDARG;
}

HRESULT ListAccessible::get_accState(VARIANT child, VARIANT* state) {
  if (isSelf(child)) return Accessible::get_accState(child, state);
  const auto line = lineOf(child);
  if (!line) return E_INVALIDARG;
  LONG flags = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_MULTISELECTABLE |
               STATE_SYSTEM_EXTSELECTABLE;
  if (send(LB_GETSEL, *line) > 0) flags |= STATE_SYSTEM_SELECTED;
  if (GetFocus() == control() && send(LB_GETCARETINDEX) == static_cast<LRESULT>(*line))
    flags |= STATE_SYSTEM_FOCUSED;
  if (!IsWindowEnabled(control())) flags |= STATE_SYSTEM_UNAVAILABLE;
  RECT place = placeOf(*line), shown{}, both{};
  GetClientRect(control(), &shown);
  MapWindowPoints(control(), nullptr, reinterpret_cast<POINT*>(&shown), 2);
  if (!IntersectRect(&both, &place, &shown))
    flags |= STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN;
  return give(flags, state);
}

HRESULT ListAccessible::get_accFocus(VARIANT* child) {
  if (child == nullptr) return E_INVALIDARG;
  child->vt = VT_EMPTY;
  if (GetFocus() != control()) return S_FALSE;
  const LRESULT line = send(LB_GETCARETINDEX);
  return give(line >= 0 && line < count() ? static_cast<LONG>(line) + 1 : CHILDID_SELF, child);
}

HRESULT ListAccessible::get_accSelection(VARIANT* children) try {
  if (children == nullptr) return E_INVALIDARG;
  children->vt = VT_EMPTY;
  std::vector<int> lines(static_cast<std::size_t>(std::max<LRESULT>(send(LB_GETSELCOUNT), 0)));
  if (lines.empty()) return S_FALSE;
  send(LB_GETSELITEMS, lines.size(), reinterpret_cast<LPARAM>(lines.data()));
  if (lines.size() == 1) return give(lines.front() + 1, children);
  children->punkVal = new Lines(std::move(lines));
  children->vt = VT_UNKNOWN;
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

// The program learns of it as of a click.
void ListAccessible::tellSelected() const {
  SendMessageW(GetParent(control()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control()), LBN_SELCHANGE),
               reinterpret_cast<LPARAM>(control()));
}

HRESULT ListAccessible::accSelect(LONG flags, VARIANT child) {
  const auto line = lineOf(child);
  if (!isSelf(child) && !line) return E_INVALIDARG;
  if (!IsWindowEnabled(control())) return S_FALSE;
  if ((flags & SELFLAG_TAKEFOCUS) != 0) SetFocus(control());
  if (!line) return S_OK;
  if ((flags & SELFLAG_TAKESELECTION) != 0) send(LB_SETSEL, FALSE, -1);
  if ((flags & (SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION)) != 0)
    send(LB_SETSEL, TRUE, static_cast<LPARAM>(*line));
  if ((flags & SELFLAG_REMOVESELECTION) != 0) send(LB_SETSEL, FALSE, static_cast<LPARAM>(*line));
  send(LB_SETCARETINDEX, *line, FALSE);
  tellSelected();
  return S_OK;
}

HRESULT ListAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                    VARIANT child) {
  if (isSelf(child)) return Accessible::accLocation(left, top, width, height, child);
  const auto line = lineOf(child);
  if (!line || left == nullptr || top == nullptr || width == nullptr || height == nullptr)
    return E_INVALIDARG;
  const RECT place = placeOf(*line);
  *left = place.left;
  *top = place.top;
  *width = place.right - place.left;
  *height = place.bottom - place.top;
  return S_OK;
}

HRESULT ListAccessible::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  if (end == nullptr) return E_INVALIDARG;
  end->vt = VT_EMPTY;
  if (isSelf(start) && direction != NAVDIR_FIRSTCHILD && direction != NAVDIR_LASTCHILD)
    return Accessible::accNavigate(direction, start, end);
  LONG line = 0;
  if (isSelf(start))
    line = direction == NAVDIR_FIRSTCHILD ? 1 : count();
  else if (direction == NAVDIR_NEXT || direction == NAVDIR_DOWN)
    line = start.lVal + 1;
  else if (direction == NAVDIR_PREVIOUS || direction == NAVDIR_UP)
    line = start.lVal - 1;
  return line >= 1 && line <= count() ? give(line, end) : S_FALSE;
}

HRESULT ListAccessible::accHitTest(LONG left, LONG top, VARIANT* child) {
  if (child == nullptr) return E_INVALIDARG;
  child->vt = VT_EMPTY;
  POINT point{left, top};
  ScreenToClient(control(), &point);
  RECT inside{};
  GetClientRect(control(), &inside);
  if (!PtInRect(&inside, point)) return S_FALSE;
  const LONG height = std::max<LONG>(1, static_cast<LONG>(send(LB_GETITEMHEIGHT)));
  const LONG line = static_cast<LONG>(send(LB_GETTOPINDEX)) + point.y / height;
  return give(line < count() ? line + 1 : CHILDID_SELF, child);
}

}  // namespace tintline
