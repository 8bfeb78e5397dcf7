// See rich_edit_view.h. Tested by tests/win32/rich_edit_view_test.cpp.
#include "win32/rich_edit_view.h"

#include <commctrl.h>
#include <richedit.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "base/file.h"
#include "output/link_target.h"
#include "output/rich_text.h"
#include "win32/error.h"

namespace tintline {
namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT_PTR kSubclass = 1;
constexpr ULONGLONG kFirstMoment = 300;  // milliseconds that a new page may take at once
constexpr ULONGLONG kMoment = 50;        // and every further piece
constexpr UINT kPause = 10;              // between pieces, for everything else
constexpr std::size_t kSmallestPiece = 2'000;
constexpr std::size_t kLargestPiece = 200'000;

LONG asLong(std::size_t position) { return static_cast<LONG>(position); }

// Hands a text out to EM_STREAMIN, part by part.
DWORD CALLBACK readText(DWORD_PTR cookie, BYTE* buffer, LONG size, LONG* given) {
  auto& rest = *reinterpret_cast<std::string_view*>(cookie);
  const std::size_t part = std::min(rest.size(), static_cast<std::size_t>(size));
  std::memcpy(buffer, rest.data(), part);
  rest.remove_prefix(part);
  *given = asLong(part);
  return 0;
}

// Keeps what the user sees and has selected while the text grows at its end.
class Standstill {
 public:
  explicit Standstill(HWND control) : control_(control) {
    SendMessageW(control_, WM_SETREDRAW, FALSE, 0);
    SendMessageW(control_, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection_));
    SendMessageW(control_, EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scroll_));
    line_ = SendMessageW(control_, EM_GETFIRSTVISIBLELINE, 0, 0);
    SendMessageW(control_, EM_HIDESELECTION, TRUE, 0);  // a hidden one is not scrolled to
  }
  ~Standstill() {
    SendMessageW(control_, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selection_));
    SendMessageW(control_, EM_HIDESELECTION, FALSE, 0);
    SendMessageW(control_, EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scroll_));
    // Scroll positions of long texts are scaled to 16 bits: the line tells exactly.
    const LRESULT line = SendMessageW(control_, EM_GETFIRSTVISIBLELINE, 0, 0);
    if (line != line_) SendMessageW(control_, EM_LINESCROLL, 0, line_ - line);
    SendMessageW(control_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(control_, nullptr, FALSE);
  }
  Standstill(const Standstill&) = delete;
  Standstill& operator=(const Standstill&) = delete;

 private:
  HWND control_;
  CHARRANGE selection_{};
  POINT scroll_{};
  LRESULT line_;
};

}  // namespace

RichEditView::RichEditView(HWND parent, ExternalLink onExternalLink)
    : library_(LoadLibraryW(L"msftedit.dll")),
      onExternalLink_(std::move(onExternalLink)),
      pieceSize_(kSmallestPiece) {
  if (!library_) throwLastError();
  RECT place{};
  GetClientRect(parent, &place);
  control_.reset(
      CreateWindowExW(0, MSFTEDIT_CLASS, L"",
                      WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                          ES_READONLY | ES_AUTOHSCROLL | ES_AUTOVSCROLL | ES_NOHIDESEL,
                      0, 0, place.right, place.bottom, parent, nullptr, nullptr, nullptr));
  if (!control_) throwLastError();
  if (SetWindowSubclass(window(), controlProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this)) ==
      FALSE)
    throw Win32Error(E_FAIL);
  setPlainFormat();
  send(EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
  send(EM_SETUNDOLIMIT, 0);
  send(EM_SETTARGETDEVICE, 0, 1);  // lines do not wrap
  send(EM_AUTOURLDETECT, 0);       // only the page's own links
  send(EM_SETEVENTMASK, 0, ENM_LINK);
  send(EM_SETMARGINS, EC_LEFTMARGIN, MAKELPARAM(8, 0));  // as browsers have it
}

// What the page says nothing of; else it would be the system's bold font.
void RichEditView::setPlainFormat() const {
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  format.dwMask = CFM_FACE | CFM_SIZE | CFM_COLOR | CFM_BACKCOLOR | CFM_EFFECTS;
  format.dwEffects = CFE_AUTOCOLOR | CFE_AUTOBACKCOLOR;
  format.yHeight = 200;  // twips: 10 points
  format.bPitchAndFamily = FIXED_PITCH | FF_MODERN;
  lstrcpyW(format.szFaceName, L"Courier New");
  send(EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&format));
}

RichEditView::~RichEditView() {
  if (control_) RemoveWindowSubclass(window(), controlProcedure, kSubclass);
}

LRESULT RichEditView::send(UINT message, WPARAM wParam, LPARAM lParam) const {
  return SendMessageW(window(), message, wParam, lParam);
}

CHARRANGE RichEditView::selection() const {
  CHARRANGE range{};
  send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
  return range;
}

void RichEditView::select(std::size_t from, std::size_t to) const {
  const CHARRANGE range{asLong(from), asLong(to)};
  send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

void RichEditView::navigate(const std::filesystem::path& file) { show(renderPage(readFile(file))); }

void RichEditView::show(RenderedPage page) {
  KillTimer(window(), kTimer);
  pressed_.reset();
  jump_.reset();
  page_ = std::move(page);
  shown_ = 0;
  SetWindowTextW(window(), L"");
  select(0, 0);
  appendPieces(kFirstMoment);
}

void RichEditView::setDpi(UINT dpi) {
  // The control's points are those of the system's resolution, whatever screen it is on.
  const UINT system = GetDpiForSystem();
  send(EM_SETZOOM, dpi == system ? 0 : dpi, dpi == system ? 0 : asLong(system));
}

// Appends pieces until that time is over; the timer brings the rest.
void RichEditView::appendPieces(ULONGLONG milliseconds) {
  {
    const Standstill standstill(window());
    const ULONGLONG begin = GetTickCount64();
    while (!loaded()) {
      const ULONGLONG before = GetTickCount64();
      if (before - begin >= milliseconds) break;
      const std::size_t end = pieceEnd(page_, shown_, pieceSize_);
      appendPiece(end);
      // Half as long: the next piece may be twice as long. The clock itself is coarse.
      const ULONGLONG taken = GetTickCount64() - before;
      pieceSize_ = std::clamp(taken < kMoment / 2 ? pieceSize_ * 2
                              : taken > kMoment   ? pieceSize_ / 2
                                                  : pieceSize_,
                              kSmallestPiece, kLargestPiece);
    }
  }
  if (jump_ && *jump_ <= shown_) scrollTo(*std::exchange(jump_, {}));
  if (!loaded()) SetTimer(window(), kTimer, kPause, nullptr);
}

void RichEditView::appendPiece(std::size_t end) {
  const std::string text = richText(page_, shown_, end);
  std::string_view rest = text;
  EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rest), 0, readText};
  select(shown_, shown_);
  send(EM_STREAMIN, SF_RTF | SFF_SELECTION, reinterpret_cast<LPARAM>(&stream));
  markLinks(shown_, end);
  shown_ = end;
}

void RichEditView::markLinks(std::size_t from, std::size_t to) const {
  CHARFORMAT2W format{};
  format.cbSize = sizeof format;
  format.dwMask = CFM_LINK;
  format.dwEffects = CFE_LINK;
  const TextRun* const behind = page_.runs.data() + page_.runs.size();
  for (const TextRun* run = page_.runAt(from); run != nullptr && run != behind && run->start < to;
       ++run) {
    if (!run->looks.link) continue;
    select(std::max(from, run->start), std::min(to, run->start + run->length));
    send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
  }
}

void RichEditView::onTimer() {
  if (GetCapture() == window()) return;  // the user is selecting or scrolling with the mouse
  KillTimer(window(), kTimer);
  appendPieces(kMoment);
}

void RichEditView::onNotify(const NMHDR& header) {
  if (header.hwndFrom != window() || header.code != EN_LINK) return;
  const auto& link = reinterpret_cast<const ENLINK&>(header);
  if (link.msg == WM_LBUTTONDOWN) {
    pressed_ = link.chrg.cpMin;
  } else if (link.msg == WM_LBUTTONUP && std::exchange(pressed_, {}) == link.chrg.cpMin) {
    const bool selecting = selection().cpMin != selection().cpMax;
    if (!selecting) followLink(static_cast<std::size_t>(link.chrg.cpMin));
  }
}

void RichEditView::followLink(std::size_t position) {
  const TextRun* const run = page_.runAt(position);
  if (run == nullptr || !run->looks.link) return;
  const LinkTarget target = classifyLink(page_.targets[*run->looks.link]);
  if (target.kind == LinkTarget::Kind::External && onExternalLink_) onExternalLink_(target.value);
  if (target.kind != LinkTarget::Kind::Anchor) return;
  const auto anchor = page_.anchorPosition(target.value);
  if (!anchor) return;
  if (*anchor <= shown_)
    scrollTo(*anchor);
  else
    jump_ = anchor;
}

// Puts the caret there and the line at the top of the window.
void RichEditView::scrollTo(std::size_t position) {
  select(position, position);
  const LRESULT line = send(EM_EXLINEFROMCHAR, 0, asLong(position));
  send(EM_LINESCROLL, 0, line - send(EM_GETFIRSTVISIBLELINE));
}

LRESULT CALLBACK RichEditView::controlProcedure(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam, UINT_PTR, DWORD_PTR view) {
  auto& self = *reinterpret_cast<RichEditView*>(view);
  switch (message) {
    case WM_TIMER:
      if (wParam != kTimer) break;
      self.onTimer();
      return 0;
    case WM_GETDLGCODE:
      // Tab leaves the view, as nothing is typed into it; Enter follows a link.
      return DLGC_WANTARROWS | (wParam == VK_RETURN ? DLGC_WANTMESSAGE : 0);
    case WM_KEYDOWN:
      if (wParam != VK_RETURN) break;
      self.followLink(static_cast<std::size_t>(self.selection().cpMin));
      return 0;
    case WM_NCDESTROY:
      RemoveWindowSubclass(window, controlProcedure, kSubclass);
      self.control_.release();  // the parent has destroyed it
      break;
    default:
      break;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace tintline
