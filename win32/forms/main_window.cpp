// See main_window.h.
#include "win32/forms/main_window.h"

#include <shellapi.h>

#include <algorithm>
#include <string>

#include "win32/control_ids.h"
#include "win32/controls/opening_place.h"
#include "win32/controls/theme.h"
#include "win32/forms/menus.h"

namespace tintline {
namespace {

constexpr SIZE kSmallestClient{720, 440};  // pixels at 96 dpi
constexpr int kProgressWidth = 160;
constexpr int kButtonWidth = 84, kButtonHeight = 26, kGap = 6;
constexpr int kCheckMark = 26;  // a check mark's width with the blank behind it

// To the window itself: its colours are others, which commands wait for.
constexpr UINT kThemeChanged = WM_APP + 3;

SIZE sizeOf(const RECT& area) { return {area.right - area.left, area.bottom - area.top}; }

// Moves many windows in one step, so that none is painted twice.
class Moves {
 public:
  Moves() : moves_(BeginDeferWindowPos(24)) {}
  Moves(const Moves&) = delete;
  Moves& operator=(const Moves&) = delete;
  ~Moves() { EndDeferWindowPos(moves_); }

  void move(HWND window, const RECT& area) {
    const SIZE size = sizeOf(area);
    moves_ = DeferWindowPos(moves_, window, nullptr, static_cast<int>(area.left),
                            static_cast<int>(area.top), static_cast<int>(size.cx),
                            static_cast<int>(size.cy), SWP_NOZORDER | SWP_NOACTIVATE);
  }

 private:
  HDWP moves_;
};

RECT part(const RECT& row, LONG left, LONG width) {
  return {left, row.top, left + width, row.bottom};
}

}  // namespace

MainWindow::MainWindow(MessagePump& pump, frmVBACode& form, Shell& shell, int designCharacterWidth)
    : FormWindow(pump, form),
      form_(form),
      accelerators_(makeAccelerators()),
      browser_((createWindow(kMainClass, WS_OVERLAPPEDWINDOW, WS_EX_ACCEPTFILES), hwnd()),
               host().tips, form.wBrowser, id::kBrowser, shell) {
  menu_ = makeMenuBar();
  SetMenu(hwnd(), menu_.release());  // the window owns it from now on
  addControls(designCharacterWidth);
  form_.TellPlace = [this] { rememberPlace(); };
  form_.PopupMenu = [this](std::span<const MenuEntry> entries) {
    popUp(entries, controls_.tree->menuPlace());
  };
}

// Their order is the tab order; what lies below others comes last.
void MainWindow::addControls(int designCharacterWidth) {
  Controls& c = controls_;
  c.tree = &add<TreeWidget>(form_.TreeView1, id::kTreeView1);
  c.tree->locked = [this] { return form_.isEnabled(Command::mnuAbbrechen); };  // a run goes on
  auto& list1 = add<ListView>(form_.List1, id::kList1, designCharacterWidth);
  c.list1 = &list1;
  c.modul = &add<ButtonWidget>(form_.cmdModul, id::kCmdModul);
  c.makro = &add<ButtonWidget>(form_.cmdMakro, id::kCmdMakro);
  c.auswahl = &add<ButtonWidget>(form_.cmdAuswahl, id::kCmdAuswahl);
  c.vbaClp = &add<ButtonWidget>(form_.cmdVBAClp, id::kCmdVBAClp);
  c.check1 = &add<ToggleWidget<CheckBox>>(form_.Check1, id::kCheck1, kCheckStyle);
  c.check2 = &add<ToggleWidget<CheckBox>>(form_.Check2, id::kCheck2, kCheckStyle);
  c.optKlassisch = &add<ToggleWidget<OptionButton>>(form_.optKlassisch, id::kOptKlassisch,
                                                    kOptionStyle | WS_GROUP | WS_TABSTOP);
  c.optGenau = &add<ToggleWidget<OptionButton>>(form_.optGenau, id::kOptGenau, kOptionStyle);
  c.optClass = &add<ToggleWidget<OptionButton>>(form_.optClass, id::kOptClass,
                                                kOptionStyle | WS_GROUP | WS_TABSTOP);
  c.optStyle = &add<ToggleWidget<OptionButton>>(form_.optStyle, id::kOptStyle, kOptionStyle);
  auto& list2 = add<ListView>(form_.List2, id::kList2, designCharacterWidth);
  c.list2 = &list2;
  c.exportButton = &add<ButtonWidget>(form_.cmdExport, id::kCmdExport);
  c.word = &add<ButtonWidget>(form_.cmdWord, id::kCmdWord);
  c.htmClp = &add<ButtonWidget>(form_.cmdHTMClp, id::kCmdHTMClp);
  c.status = {&add<StatusWidget>(form_.Label9, id::kLabel9),
              &add<StatusWidget>(form_.Label10, id::kLabel10),
              &add<StatusWidget>(form_.lblExportPfad, id::kExportPfad)};
  c.progress = &add<ProgressWidget>(form_.Fortschritt, id::kFortschritt);
  c.toolBar = &add<ToolBarWidget>(form_, id::kToolbar1);
  c.frame1 = &add<FrameWidget>(form_.Frame1, id::kFrame1);
  c.frame2 = &add<FrameWidget>(form_.Frame2, id::kFrame2);
  c.framePreview = &add<FrameWidget>(form_.FrameVorschau, id::kFrameVorschau);
  followFocus(list1, form_.List1);
  followFocus(list2, form_.List2);
}

void MainWindow::followFocus(ListView& list, ListBox& model) {
  list.focused = [this, &list, &model](bool focused) {
    if (focused)
      form_.ActiveControl = &model;
    else if (form_.ActiveControl == &model)
      form_.ActiveControl = nullptr;
    form_.Toolbar1.changed();
    if (list.hwnd() != nullptr) InvalidateRect(list.hwnd(), nullptr, FALSE);
  };
}

void MainWindow::show() {
  FormWindow::show();
  SetFocus(controls_.tree->hwnd());
}

bool MainWindow::translate(MSG& message) {
  if (hwnd() == nullptr || !IsWindowEnabled(hwnd())) return false;
  if (message.hwnd != hwnd() && !IsChild(hwnd(), message.hwnd)) return false;
  PreviewPane& pane = browser_.pane();
  if (!pane.usesKey(message) && TranslateAcceleratorW(hwnd(), accelerators_.get(), &message) != 0)
    return true;
  return pane.translate(message) || FormWindow::translate(message);
}

// Where it stood the last time.
int MainWindow::openingState() {
  const WindowMemory::Place& place = form_.memory.place;
  const WindowMemory::Shares& shares = form_.memory.shares;
  if (shares.tree > 0) division_.tree = shares.tree;
  if (shares.preview > 0) division_.preview = shares.preview;
  if (shares.source > 0) division_.source = shares.source;
  RECT wanted{};
  GetWindowRect(hwnd(), &wanted);
  if (place.width > 0 && place.height > 0)
    wanted = {place.left, place.top, place.left + place.width, place.top + place.height};
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromRect(&wanted, MONITOR_DEFAULTTONEAREST), &monitor);
  const int step = GetSystemMetricsForDpi(SM_CYCAPTION, dpi()) + px(kGap);
  const RECT free = openingPlace(wanted, monitor.rcWork, placesOfOthers(hwnd(), kMainClass), step);
  SetWindowPos(hwnd(), nullptr, static_cast<int>(free.left), static_cast<int>(free.top),
               static_cast<int>(sizeOf(free).cx), static_cast<int>(sizeOf(free).cy),
               SWP_NOZORDER | SWP_NOACTIVATE);
  return place.maximized ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
}

void MainWindow::rememberPlace() {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  if (hwnd() == nullptr || !GetWindowPlacement(hwnd(), &placement)) return;
  RECT normal = placement.rcNormalPosition;  // counted from the work area
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(hwnd(), MONITOR_DEFAULTTONEAREST), &monitor);
  OffsetRect(&normal, static_cast<int>(monitor.rcWork.left - monitor.rcMonitor.left),
             static_cast<int>(monitor.rcWork.top - monitor.rcMonitor.top));
  const bool maximized =
      placement.showCmd == SW_SHOWMAXIMIZED ||
      (placement.showCmd == SW_SHOWMINIMIZED && (placement.flags & WPF_RESTORETOMAXIMIZED) != 0);
  form_.memory.place = {.left = static_cast<int>(normal.left),
                        .top = static_cast<int>(normal.top),
                        .width = static_cast<int>(sizeOf(normal).cx),
                        .height = static_cast<int>(sizeOf(normal).cy),
                        .maximized = maximized};
  form_.memory.shares = {
      .tree = division_.tree, .preview = division_.preview, .source = division_.source};
}

// -------------------------------------------------------------------------- messages
LRESULT MainWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITMENUPOPUP:
      updateMenu(reinterpret_cast<HMENU>(wParam), form_);
      menus_.dress(reinterpret_cast<HMENU>(wParam));
      return 0;
    case WM_UNINITMENUPOPUP:
      menus_.undress(reinterpret_cast<HMENU>(wParam));
      break;
    case WM_NCPAINT:
    case WM_NCACTIVATE: {
      const LRESULT result = FormWindow::handle(message, wParam, lParam);
      MenuDrawing::paintRestOfBar(hwnd());
      return result;
    }
    case WM_MENUCHAR:
      if (!theme::isOwn()) break;
      return menus_.entryOf(reinterpret_cast<HMENU>(lParam), static_cast<wchar_t>(LOWORD(wParam)));
    case WM_MEASUREITEM:
      if (reinterpret_cast<const MEASUREITEMSTRUCT*>(lParam)->CtlType != ODT_MENU) break;
      MenuDrawing::measure(hwnd(), *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_DRAWITEM:
      if (reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)->CtlType != ODT_MENU) break;
      MenuDrawing::draw(hwnd(), *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_CONTEXTMENU:
      if (contextMenu(reinterpret_cast<HWND>(wParam), lParam)) return 0;
      break;
    case WM_DROPFILES:
      filesDropped(wParam);
      return 0;
    case WM_HELP:  // from a dialog: here F1 is a command
      form_.KontexthilfeZeigen();
      return TRUE;
    case WM_GETMINMAXINFO:
      limitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
      return 0;
    case WM_LBUTTONDOWN:
      startDrag(pointOf(lParam));
      return 0;
    case WM_MOUSEMOVE:
      drag(pointOf(lParam));
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      return 0;
    case kThemeChanged:
      form_.FarbenGewechselt();
      return 0;
    case WM_CAPTURECHANGED:
      dragged_ = Splitter::None;
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      break;
    default:
      break;
  }
  return FormWindow::handle(message, wParam, lParam);
}

bool MainWindow::command(int id, WORD code) {
  if (id <= commandId(Command::None) || id > commandId(Command::mnuAbbrechen))
    return FormWindow::command(id, code);
  const auto command = static_cast<Command>(id - kCommandBase);
  if (isOfWindow(command))
    arrange(command);
  else
    form_.execute(command);
  return true;
}

void MainWindow::closeRequested() {
  if (form_.QueryUnload()) form_.Unload();
}

// The menu of a list or of the preview, which gets the keyboard: the commands go by that.
bool MainWindow::contextMenu(HWND control, LPARAM where) {
  HWND pane = browser_.pane().window();
  const bool preview = control == pane || IsChild(pane, control);
  if (!preview && control != controls_.list1->hwnd() && control != controls_.list2->hwnd())
    return false;
  POINT place = pointOf(where);
  if (where == -1) place = placeOfMenu(control);  // by key
  if (!IsChild(control, GetFocus())) SetFocus(control);
  popUp(preview ? previewMenu() : listMenu(), place);
  return true;
}

// In the list below its current line, if that is to be seen.
POINT MainWindow::placeOfMenu(HWND control) const {
  POINT place{px(kGap), px(kGap)};
  RECT line{}, inside{};
  const LRESULT current = SendMessageW(control, LB_GETCARETINDEX, 0, 0);
  if ((control == controls_.list1->hwnd() || control == controls_.list2->hwnd()) && current >= 0 &&
      SendMessageW(control, LB_GETITEMRECT, static_cast<WPARAM>(current),
                   reinterpret_cast<LPARAM>(&line)) != LB_ERR) {
    GetClientRect(control, &inside);
    if (line.top >= 0 && line.bottom <= inside.bottom) place.y = line.bottom;
  }
  ClientToScreen(control, &place);
  return place;
}

// Its states are set when it opens, as those of the menu bar.
void MainWindow::popUp(std::span<const MenuEntry> entries, POINT place) {
  const UniqueMenu menu = makePopupMenu(entries);
  const int chosen = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y,
                                    0, hwnd(), nullptr);
  if (chosen != 0) command(chosen, 0);
}

void MainWindow::filesDropped(WPARAM drop) {
  const UniqueHandle<HDROP, DragFinish> files(reinterpret_cast<HDROP>(drop));
  std::wstring path(DragQueryFileW(files.get(), 0, nullptr, 0) + 1, L'\0');
  path.resize(DragQueryFileW(files.get(), 0, path.data(), static_cast<UINT>(path.size())));
  if (!path.empty()) form_.fileDropped(path);
}

// ---------------------------------------------------------------------------- layout
void MainWindow::flushed() {
  if (previewShown_ != form_.FrameVorschau.Visible) layout();
  if (statusWidths_ != shareStatus() || progressShown_ != form_.Fortschritt.Visible) placeStatus();
  browser_.flush(form_.FrameVorschau.Visible);  // in its place: a page without room scrolls away
}

void MainWindow::fontsChanged() { browser_.pane().dpiChanged(); }

void MainWindow::themeChanged() {
  menus_.dress(GetMenu(hwnd()));
  DrawMenuBar(hwnd());
  browser_.pane().followTheme();
  PostMessageW(hwnd(), kThemeChanged, 0, 0);
}

LayoutMetrics MainWindow::metrics() const {
  const auto text = static_cast<int>(textSize(font(), L"Ag").cy);
  int options = 0;
  for (const auto* caption :
       {&form_.Check1.Caption(), &form_.Check2.Caption(), &form_.optKlassisch.Caption(),
        &form_.optGenau.Caption(), &form_.optClass.Caption(), &form_.optStyle.Caption()})
    options += widthFor(*caption, kCheckMark + 2 * kGap);
  options += px(4 * kGap);  // between the groups
  return {.dpi = dpi(),
          .toolBar = controls_.toolBar->height() + px(4),
          .status = text + px(8),
          .button = std::max(px(kButtonHeight), text + px(10)),
          .caption = text + px(4),
          .option = text + px(8),
          .optionsWidth = options};
}

MainLayout MainWindow::currentLayout() {
  RECT client{};
  GetClientRect(hwnd(), &client);
  return layOut(sizeOf(client), division_, metrics(), form_.FrameVorschau.Visible);
}

void MainWindow::layout() {
  previewShown_ = form_.FrameVorschau.Visible;
  const MainLayout areas = currentLayout();
  const Controls& c = controls_;
  {
    Moves moves;
    moves.move(c.toolBar->hwnd(), areas.toolBar);
    moves.move(c.tree->hwnd(), areas.tree);
    moves.move(c.frame1->hwnd(), areas.frame1);
    moves.move(c.list1->hwnd(), areas.list1);
    moves.move(c.frame2->hwnd(), areas.frame2);
    moves.move(c.list2->hwnd(), areas.list2);
    moves.move(c.framePreview->hwnd(), areas.preview);
    moves.move(browser_.pane().window(), areas.browser);
    const RECT &row1 = areas.buttons1, &row2 = areas.buttons2;
    const LONG room = (sizeOf(row1).cx - 3 * px(kGap)) / 4;
    const LONG width = std::min<LONG>(px(kButtonWidth), room), step = width + px(kGap);
    moves.move(c.modul->hwnd(), part(row1, row1.left, width));
    moves.move(c.makro->hwnd(), part(row1, row1.left + step, width));
    moves.move(c.auswahl->hwnd(), part(row1, row1.left + 2 * step, width));
    moves.move(c.vbaClp->hwnd(), part(row1, row1.right - width, width));
    moves.move(c.exportButton->hwnd(), part(row2, row2.left, width));
    moves.move(c.word->hwnd(), part(row2, row2.left + step, width));
    moves.move(c.htmClp->hwnd(), part(row2, row2.right - width, width));
  }
  placeOptions(areas.options);
  statusLine_ = areas.status;
  placeStatus();
}

// Side by side, or two upon two where there is too little room.
void MainWindow::placeOptions(const RECT& row) {
  const Controls& c = controls_;
  const LayoutMetrics sizes = metrics();
  const bool twoRows = row.right - row.left < sizes.optionsWidth;
  auto left = static_cast<int>(row.left) + px(2), top = static_cast<int>(row.top);
  const auto put = [&](const Widget* widget, const std::wstring& caption) {
    const int width = widthFor(caption, kCheckMark);
    place(*widget, left, top, width, sizes.option);
    left += width + px(2 * kGap);
  };
  put(c.check1, form_.Check1.Caption);
  put(c.check2, form_.Check2.Caption);
  if (!twoRows) left += px(2 * kGap);  // what is chosen together stands together
  put(c.optKlassisch, form_.optKlassisch.Caption);
  put(c.optGenau, form_.optGenau.Caption);
  if (twoRows) {
    left = static_cast<int>(row.left) + px(2);
    top += sizes.option;
  }
  if (!twoRows) left += px(2 * kGap);
  put(c.optClass, form_.optClass.Caption);
  put(c.optStyle, form_.optStyle.Caption);
}

// The widths of the labels in the status line, with the gap behind each.
std::array<int, 3> MainWindow::shareStatus() const {
  std::array<int, 3> needed{};
  for (std::size_t i = 0; i < needed.size(); ++i)
    if (const int text = controls_.status[i]->needed(); text != 0) needed[i] = text + px(2 * kGap);
  return shareLine(statusRoom() + px(2 * kGap), needed);
}

// What the labels have: beside the progress, while it shows.
int MainWindow::statusRoom() const {
  const int room = static_cast<int>(sizeOf(statusLine_).cx);
  return form_.Fortschritt.Visible ? room - px(kProgressWidth + kGap) : room;
}

void MainWindow::placeStatus() {
  statusWidths_ = shareStatus();
  progressShown_ = form_.Fortschritt.Visible;
  const int margin = px(5);
  place(*controls_.progress, static_cast<int>(statusLine_.right) - px(kProgressWidth),
        static_cast<int>(statusLine_.top) + margin, px(kProgressWidth),
        static_cast<int>(sizeOf(statusLine_).cy) - 2 * margin);
  auto left = static_cast<int>(statusLine_.left);
  for (std::size_t i = 0; i < statusWidths_.size(); ++i) {
    place(*controls_.status[i], left, static_cast<int>(statusLine_.top),
          std::max(statusWidths_[i] - px(2 * kGap), 0), static_cast<int>(sizeOf(statusLine_).cy));
    InvalidateRect(controls_.status[i]->hwnd(), nullptr, FALSE);  // another part of the text
    left += statusWidths_[i];
  }
}

void MainWindow::limitSize(MINMAXINFO& limits) const {
  const SIZE smallest = windowSize(
      {px(static_cast<int>(kSmallestClient.cx)), px(static_cast<int>(kSmallestClient.cy))});
  limits.ptMinTrackSize = {smallest.cx, smallest.cy};
}

// ------------------------------------------------------------------------- splitters
HCURSOR MainWindow::ownPointer() {
  POINT point{};
  GetCursorPos(&point);
  ScreenToClient(hwnd(), &point);
  const Splitter below = dragged_ != Splitter::None ? dragged_ : currentLayout().splitterAt(point);
  if (below == Splitter::None) return nullptr;
  return LoadCursorW(nullptr, below == Splitter::Source ? IDC_SIZENS : IDC_SIZEWE);
}

void MainWindow::startDrag(POINT point) {
  dragged_ = currentLayout().splitterAt(point);
  if (dragged_ != Splitter::None) SetCapture(hwnd());
}

void MainWindow::drag(POINT point) {
  if (dragged_ != Splitter::None) moveSplitter(dragged_, point);
}

void MainWindow::moveSplitter(Splitter splitter, POINT point) {
  RECT client{};
  GetClientRect(hwnd(), &client);
  division_ =
      moved(splitter, point, sizeOf(client), division_, metrics(), form_.FrameVorschau.Visible);
  layout();
  UpdateWindow(hwnd());
}

// ----------------------------------------------------------------------- by keyboard
void MainWindow::arrange(Command command) {
  if (command == Command::mnuNaechsterBereich || command == Command::mnuVorigerBereich)
    focusNextPane(command == Command::mnuNaechsterBereich);
  else
    stepSplitter(command);
}

std::vector<HWND> MainWindow::panes() {
  std::vector<HWND> panes = {controls_.tree->hwnd(), controls_.list1->hwnd(),
                             controls_.list2->hwnd(), browser_.pane().window()};
  std::erase_if(panes, [](HWND pane) { return !IsWindowVisible(pane) || !IsWindowEnabled(pane); });
  return panes;
}

// From a button as well as from a pane: to the first one.
void MainWindow::focusNextPane(bool forward) {
  const std::vector<HWND> all = panes();
  const HWND focus = GetFocus();
  const auto now = std::ranges::find_if(
      all, [focus](HWND pane) { return pane == focus || IsChild(pane, focus); });
  const auto count = static_cast<std::ptrdiff_t>(all.size());
  const std::ptrdiff_t from = now == all.end() ? (forward ? -1 : 0) : now - all.begin();
  SetFocus(all[static_cast<std::size_t>((from + (forward ? 1 : count - 1)) % count)]);
}

// Upwards and downwards that between the lists, sideways that of the pane with the keyboard: the
// preview's left one, for all others that of the tree.
void MainWindow::stepSplitter(Command command) {
  constexpr int kStep = 24;  // pixels at 96 dpi
  const MainLayout now = currentLayout();
  const bool sideways = command == Command::mnuTeilerLinks || command == Command::mnuTeilerRechts;
  const bool preview = IsChild(browser_.pane().window(), GetFocus()) != FALSE;
  const Splitter splitter = !sideways ? Splitter::Source
                            : preview ? Splitter::Preview
                                      : Splitter::Tree;
  const RECT& area = !sideways ? now.sourceSplitter
                     : preview ? now.previewSplitter
                               : now.treeSplitter;
  const bool back = command == Command::mnuTeilerLinks || command == Command::mnuTeilerOben;
  const LONG step = back ? -px(kStep) : px(kStep);
  const LONG half = sizeOf(now.treeSplitter).cx / 2;
  POINT point{area.left + half, area.top + half};
  (sideways ? point.x : point.y) += step;
  moveSplitter(splitter, point);
}

}  // namespace tintline
