// See rich_edit_view.h. Tested by tests/win32/preview/preview_test.cpp.
#include "win32/preview/rich_edit_view.h"

#include <commctrl.h>
#include <richedit.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <string_view>
#include <utility>

#include "base/file.h"
#include "output/link_target.h"
#include "win32/controls/accessible.h"
#include "win32/controls/theme.h"
#include "win32/controls/window.h"
#include "win32/error.h"

namespace tintline {
namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT_PTR kSubclass = 1;
constexpr ULONGLONG kFirstMoment = 300;  // milliseconds that a new page may take at once
constexpr ULONGLONG kMoment = 50;        // and every further piece
constexpr UINT kBetweenPieces = 10;      // for everything else
constexpr std::size_t kSmallestPiece = 4'000;
constexpr std::size_t kLargestPiece = 200'000;

constexpr LRESULT kLinesAbove = 3;  // a line that is brought into view

constexpr int kLineHeight = kFontHeight * 6 / 5;  // twips, nearly

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
    RedrawWindow(control_, nullptr, nullptr, RDW_ERASE | RDW_FRAME | RDW_INVALIDATE);
  }
  // Instead of what was selected before.
  void select(CHARRANGE range) { selection_ = range; }

  Standstill(const Standstill&) = delete;
  Standstill& operator=(const Standstill&) = delete;

 private:
  HWND control_;
  CHARRANGE selection_{};
  POINT scroll_{};
  LRESULT line_;
};

}  // namespace

RichEditView::RichEditView(HWND parent, ExternalLink onExternalLink, AnchorLink onAnchor)
    : parent_(parent),
      onExternalLink_(std::move(onExternalLink)),
      onAnchor_(std::move(onAnchor)),
      pieceSize_(kSmallestPiece) {
  // It stays loaded: what was copied out of a control is an object of its library.
  if (LoadLibraryW(L"msftedit.dll") == nullptr) throwLastError();
  replaceControl();
}

RichEditView::~RichEditView() {
  if (control_) RemoveWindowSubclass(window(), controlProcedure, kSubclass);
}

UniqueWindow RichEditView::makeControl() {
  RECT place{};
  GetClientRect(parent_, &place);
  UniqueWindow control(
      CreateWindowExW(0, MSFTEDIT_CLASS, L"",
                      WS_CHILD | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY |
                          ES_AUTOHSCROLL | ES_AUTOVSCROLL | ES_NOHIDESEL,
                      0, 0, place.right, place.bottom, parent_, nullptr, nullptr, nullptr));
  if (!control) throwLastError();
  setAccessibleName(control.get(), windowText(parent_));
  if (SetWindowSubclass(control.get(), controlProcedure, kSubclass,
                        reinterpret_cast<DWORD_PTR>(this)) == FALSE)
    throw Win32Error(E_FAIL);
  return control;
}

// Some engines take a minute to clear a long text, but no time to go away with it.
void RichEditView::replaceControl() {
  UniqueWindow control = makeControl();
  if (control_) RemoveWindowSubclass(window(), controlProcedure, kSubclass);
  const bool focused = control_ && GetFocus() == window();
  const UniqueWindow old = std::exchange(control_, std::move(control));
  send(EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
  send(EM_SETUNDOLIMIT, 0);
  send(EM_SETTARGETDEVICE, 0, 1);  // lines do not wrap
  send(EM_AUTOURLDETECT, 0);       // only the page's own links
  setFormats();
  fitDpi();
  ShowWindow(window(), SW_SHOWNA);
  if (focused) SetFocus(window());
}

// What the text has where a page says nothing, and in its last paragraph, which is the control's
// own wherever a piece ends. Without it the font would be the system's bold one.
void RichEditView::setFormats() const {
  CHARFORMAT2W characters{};
  characters.cbSize = sizeof characters;
  characters.dwMask = CFM_FACE | CFM_SIZE | CFM_COLOR | CFM_BACKCOLOR | CFM_EFFECTS;
  characters.dwEffects = CFE_AUTOCOLOR | CFE_AUTOBACKCOLOR;
  characters.yHeight = kFontHeight;
  characters.bPitchAndFamily = FIXED_PITCH | FF_MODERN;
  lstrcpyW(characters.szFaceName, L"Courier New");
  send(EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&characters));
  PARAFORMAT2 paragraphs{};
  paragraphs.cbSize = sizeof paragraphs;
  paragraphs.dwMask = PFM_STARTINDENT | PFM_TABSTOPS;
  paragraphs.dxStartIndent = kLeftMargin;
  paragraphs.cTabCount = kTabStops;
  for (int i = 0; i < kTabStops; ++i) paragraphs.rgxTabs[i] = tabStop(i + 1);
  send(EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&paragraphs));
}

// In a dark window a page has the ground that it says, or that of paper, as everywhere; else the
// window's. Contrasting colours of the system leave no room for others.
void RichEditView::setColors() {
  constexpr Color kPaper = 0xFFFFFF, kInk = 0x000000;
  colors_ = {.text = std::nullopt, .ofPage = !theme::isHighContrast()};
  if (theme::isHighContrast() || !theme::isDark()) return;
  colors_.text = page_.ink.value_or(kInk);
  const Color ground = page_.ground.value_or(kPaper);
  send(EM_SETBKGNDCOLOR, FALSE, RGB(ground >> 16 & 0xFF, ground >> 8 & 0xFF, ground & 0xFF));
  theme::dress(window());
}

void RichEditView::followTheme() { show(RenderedPage(page_), true); }

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

void RichEditView::navigate(const std::filesystem::path& file, bool keepPlace) {
  show(renderPage(readFile(file)), keepPlace);
}

void RichEditView::showAnchor(const std::wstring& id) {
  const auto position = id.empty() ? std::nullopt : page_.anchorPosition(id);
  if (position) jumpTo({*position, std::min(page_.text.find(L'\n', *position), page_.text.size())});
}

void RichEditView::show(RenderedPage page, bool keepPlace) {
  const std::size_t place = keepPlace ? placeIn(page) : 0;
  replaceControl();  // and its timer
  pressed_ = nullptr;
  jump_.reset();
  if (place > 0) jump_ = Jump{place, place};
  page_ = std::move(page);
  setColors();
  shown_ = 0;
  appendPieces(kFirstMoment);
}

// Where the next page shows what this one shows at its top.
std::size_t RichEditView::placeIn(const RenderedPage& next) const {
  const LRESULT line = send(EM_GETFIRSTVISIBLELINE);
  if (line <= 0) return 0;
  const auto start = static_cast<std::size_t>(send(EM_LINEINDEX, static_cast<WPARAM>(line)));
  const auto here = std::ranges::equal_range(page_.anchors, start, {}, &Anchor::position);
  for (const Anchor& anchor : here)
    if (const auto position = next.anchorPosition(anchor.name)) return *position;
  const auto share = static_cast<double>(std::min(start, page_.text.size())) /
                     static_cast<double>(page_.text.size());
  const auto about = static_cast<std::size_t>(share * static_cast<double>(next.text.size()));
  return next.text.rfind(L'\n', about) + 1;  // 0 in the first line
}

void RichEditView::fitDpi() const {
  // The control's points are those of the system's resolution, whatever screen it is on.
  const UINT system = GetDpiForSystem(), screen = GetDpiForWindow(window());
  const bool same = screen == system || screen == 0;
  send(EM_SETZOOM, same ? 0 : screen, same ? 0 : static_cast<LPARAM>(system));
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
  if (jump_ && reached(*jump_)) goTo(*std::exchange(jump_, {}));
  if (!loaded()) SetTimer(window(), kTimer, kBetweenPieces, nullptr);
}

void RichEditView::appendPiece(std::size_t end) {
  const std::string text = richText(page_, shown_, end, colors_);
  std::string_view rest = text;
  EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&rest), 0, readText};
  const CHARRANGE behind{-1, -1};  // found at once, however long the text is
  send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&behind));
  send(EM_STREAMIN, SF_RTF | SFF_SELECTION, reinterpret_cast<LPARAM>(&stream));
  shown_ = end;
}

void RichEditView::onTimer() {
  if (GetCapture() == window()) return;  // the user is selecting or scrolling with the mouse
  KillTimer(window(), kTimer);
  appendPieces(kMoment);
}

// Where a character's upper left corner is.
POINT RichEditView::placeOf(std::size_t position) const {
  POINTL place{};
  send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&place), asLong(position));
  return {place.x, place.y};
}

// The link at a place of the window, or nullptr.
const TextRun* RichEditView::linkAt(POINT place) const {
  const POINTL asked{place.x, place.y};
  const auto nearest =
      static_cast<std::size_t>(send(EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&asked)));
  // Right of its middle, a character's right neighbour may be nearer.
  for (const std::size_t position : {nearest, nearest - 1}) {
    const TextRun* const run = page_.runAt(position);
    if (run == nullptr || !run->looks.link || position >= shown_) continue;
    const POINT corner = placeOf(position), next = placeOf(position + 1);
    const int height = MulDiv(kLineHeight, static_cast<int>(GetDpiForWindow(window())), 1440);
    if (place.x >= corner.x && place.x < next.x && place.y >= corner.y &&
        place.y < corner.y + height)
      return run;
  }
  return nullptr;
}

// The window around knows what is in it.
void RichEditView::askForMenu(POINT place) const {
  ClientToScreen(window(), &place);
  SendMessageW(parent_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(parent_),
               MAKELPARAM(place.x, place.y));
}

bool RichEditView::showHand() const {
  POINT place{};
  GetCursorPos(&place);
  ScreenToClient(window(), &place);
  if (linkAt(place) == nullptr) return false;
  SetCursor(LoadCursorW(nullptr, IDC_HAND));
  return true;
}

// A link is followed when the mouse is released where it was pressed and nothing was selected.
LRESULT RichEditView::onButtonUp(WPARAM wParam, LPARAM lParam) {
  const LRESULT result = DefSubclassProc(window(), WM_LBUTTONUP, wParam, lParam);
  const TextRun* const pressed = std::exchange(pressed_, nullptr);
  const CHARRANGE selected = selection();
  if (pressed != nullptr && selected.cpMin == selected.cpMax && linkAt(pointOf(lParam)) == pressed)
    followLink(pressed);
  return result;
}

void RichEditView::followLink(const TextRun* run) {
  if (run == nullptr || !run->looks.link) return;
  const LinkTarget target = classifyLink(page_.targets[*run->looks.link]);
  if (target.kind == LinkTarget::Kind::External && onExternalLink_) onExternalLink_(target.value);
  if (target.kind != LinkTarget::Kind::Anchor) return;
  const auto anchor = page_.anchorPosition(target.value);
  if (!anchor) return;
  jumpTo({*anchor, *anchor});
  if (onAnchor_) onAnchor_(target.value);
}

void RichEditView::jumpTo(Jump jump) {
  jump_.reset();
  if (reached(jump))
    goTo(jump);
  else
    jump_ = jump;
}

// Whether it can be done: what is to stand below the place is shown, too.
bool RichEditView::reached(const Jump& jump) const {
  return loaded() || jump.to + kSmallestPiece <= shown_;
}

// A place comes to the top of the window, with the caret; a range is marked where it is, or, when
// nobody would see it, comes nearly to the top.
void RichEditView::goTo(Jump jump) {
  const LRESULT line = lineAt(jump.from);
  if (jump.from == jump.to) {
    select(jump.from, jump.from);
    return scrollTo(line);
  }
  {
    Standstill standstill(window());
    standstill.select({asLong(jump.from), asLong(jump.to)});
  }
  RECT client{};
  GetClientRect(window(), &client);
  const POINTL corner{0, client.bottom - 1};
  const auto below =
      static_cast<std::size_t>(send(EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&corner)));
  if (line < send(EM_GETFIRSTVISIBLELINE) || line >= lineAt(below))
    scrollTo(std::max<LRESULT>(line - kLinesAbove, 0));
}

LRESULT RichEditView::lineAt(std::size_t position) const {
  return send(EM_EXLINEFROMCHAR, 0, asLong(position));
}

void RichEditView::scrollTo(LRESULT line) const {
  send(EM_LINESCROLL, 0, line - send(EM_GETFIRSTVISIBLELINE));
}

LRESULT CALLBACK RichEditView::controlProcedure(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam, UINT_PTR, DWORD_PTR view) {
  auto& self = *reinterpret_cast<RichEditView*>(view);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, controlProcedure, kSubclass);
    self.control_.release();  // the parent has destroyed it
    return DefSubclassProc(window, message, wParam, lParam);
  }
  try {
    return self.onMessage(message, wParam, lParam);
  } catch (const std::exception&) {
    return 0;  // what is shown stays: no exception may leave a window procedure
  }
}

LRESULT RichEditView::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_TIMER:
      if (wParam != kTimer) break;
      onTimer();
      return 0;
    case WM_GETDLGCODE:
      // Tab leaves the view, as nothing is typed into it; Enter follows a link.
      return DLGC_WANTARROWS | (wParam == VK_RETURN ? DLGC_WANTMESSAGE : 0);
    case WM_KEYDOWN:
      if (wParam != VK_RETURN) break;
      followLink(page_.runAt(static_cast<std::size_t>(selection().cpMin)));
      return 0;
    case WM_SETCURSOR:
      if (LOWORD(lParam) == HTCLIENT && showHand()) return TRUE;
      break;
    case WM_RBUTTONUP:  // not every engine makes a request for a menu of it
      askForMenu(pointOf(lParam));
      return 0;
    case WM_LBUTTONDOWN:
      pressed_ = linkAt(pointOf(lParam));
      break;
    case WM_LBUTTONUP:
      return onButtonUp(wParam, lParam);
    default:
      break;
  }
  return DefSubclassProc(window(), message, wParam, lParam);
}

}  // namespace tintline
