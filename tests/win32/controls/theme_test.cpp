// Tests of win32/controls/theme.h and own_drawing.h, and of win32/forms/menu_drawing.h.
#include "win32/controls/theme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "app/controls/list_box.h"
#include "app/controls/selection_colors.h"
#include "win32/controls/list_view.h"
#include "win32/controls/status_line.h"
#include "win32/controls/widgets.h"
#include "win32/forms/form_window.h"
#include "win32/forms/menu_drawing.h"

namespace tintline {
namespace {

using theme::Look;

TEST(theme, followsTheUserThenTheSystemAndNothingButContrastingColours) {
  using enum Brightness;
  constexpr struct {
    Brightness wanted;
    theme::SystemState system;  // high contrast, dark colours, dark programs
    Look look;
  } kCases[] = {
      {System, {false, false, false}, Look::System}, {System, {false, false, true}, Look::Dark},
      {System, {false, true, false}, Look::Dark},    {System, {false, true, true}, Look::Dark},
      {Dark, {false, false, false}, Look::Dark},     {Dark, {false, true, false}, Look::Dark},
      {Light, {false, false, true}, Look::System},   {Light, {false, true, true}, Look::Light},
      {Dark, {true, false, true}, Look::System},     {Light, {true, true, false}, Look::System},
  };
  for (const auto& [wanted, system, look] : kCases)
    EXPECT_EQ(theme::decide(wanted, system), look)
        << static_cast<int>(wanted) << system.highContrast << system.darkColors << system.darkApps;
}

struct AllControls final : Form {
  Label Caption1, Status;
  CommandButton Push, Disabled;
  CheckBox Check;
  OptionButton Option;
  TextBox Text;
  ComboBox Choice;
  Frame Around;
  ListBox Lines;
  ProgressBar Progress;
};

// One control below the other, each with a text.
class AllControlsWindow final : public FormWindow {
 public:
  AllControlsWindow(MessagePump& pump, AllControls& form) : FormWindow(pump, form) {
    createWindow(L"TINTLINE_TestTheme", WS_POPUP | WS_CAPTION);
    widgets = {&add<LabelWidget>(form.Caption1, 1),
               &add<StatusWidget>(form.Status, 2),
               &add<ButtonWidget>(form.Push, 3),
               &add<ButtonWidget>(form.Disabled, 4),
               &add<ToggleWidget<CheckBox>>(form.Check, 5, kCheckStyle),
               &add<ToggleWidget<OptionButton>>(form.Option, 6, kOptionStyle),
               &add<EditWidget>(form.Text, 7),
               &add<ComboWidget>(form.Choice, 8),
               &add<FrameWidget>(form.Around, 9),
               &add<ListView>(form.Lines, 10, 8),
               &add<ProgressWidget>(form.Progress, 11)};
  }

  std::vector<Widget*> widgets;

 private:
  void layout() override {
    int top = 0;
    for (const Widget* widget : widgets) place(*widget, 0, std::exchange(top, top + 30), 200, 30);
  }
  SIZE clientSize() override { return {200, 330}; }
};

// The pixels, as 0x00BBGGRR, of what is painted on an area of that size.
std::vector<std::uint32_t> painted(LONG width, LONG height, const std::function<void(HDC)>& paint) {
  BITMAPINFO format{};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = width;
  format.bmiHeader.biHeight = -height;  // from the top
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const UniqueHandle<HDC, DeleteDC> dc(CreateCompatibleDC(nullptr));
  const UniqueBitmap bitmap(CreateDIBSection(dc.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
  const Selected selected(dc.get(), bitmap.get());
  paint(dc.get());
  GdiFlush();
  const auto* first = static_cast<const std::uint32_t*>(bits);
  std::vector<std::uint32_t> pixels(first, first + width * height);
  for (std::uint32_t& pixel : pixels)
    pixel = RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
  return pixels;
}

std::vector<std::uint32_t> paintedBy(Widget& widget) {
  HWND control = widget.hwnd();
  RECT area{};
  GetClientRect(control, &area);
  return painted(area.right, area.bottom, [&](HDC dc) {
    SendMessageW(control, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    SendMessageW(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    NMCUSTOMDRAW drawn{};
    drawn.hdr = {control, 0, NM_CUSTOMDRAW};
    drawn.dwDrawStage = CDDS_PREPAINT;
    drawn.hdc = dc;
    widget.notify(drawn.hdr);  // buttons, when they are the system's of today
  });
}

// How well the most different colour is read on the one that most pixels have, and this one.
std::pair<double, std::uint32_t> readability(std::vector<std::uint32_t> pixels) {
  std::ranges::sort(pixels);
  std::uint32_t ground = 0;
  for (std::ptrdiff_t most = 0; const std::uint32_t color : pixels) {
    const auto same = std::ranges::equal_range(pixels, color);
    if (std::ssize(same) > most) most = std::ssize(same), ground = color;
  }
  double best = 1;
  for (const std::uint32_t color : pixels) best = std::max(best, contrast(ground, color));
  return {best, ground};
}

TEST(theme, everyControlIsReadableInTheDarkAndTheSystemsAgainAfterwards) {
  MessagePump pump;
  AllControls form;
  for (auto* text :
       {&form.Caption1.Caption, &form.Status.Caption, &form.Push.Caption, &form.Disabled.Caption,
        &form.Check.Caption, &form.Option.Caption, &form.Text.Text, &form.Around.Caption})
    *text = L"MMMMMM";
  form.Choice.List = {L"MMMMMM"};
  form.Choice.ListIndex = 0;
  form.Disabled.Enabled = false;
  form.Progress.Max = 100;
  form.Progress.Value = 30;
  LineList lines;
  lines.append("MMMMMM");
  form.Lines.setLines(std::move(lines), TextEncoding::Ansi);
  std::vector<Widget*> widgets;
  form.makeView = [&] {
    auto view = std::make_unique<AllControlsWindow>(pump, form);
    widgets = view->widgets;
    return view;
  };
  form.Show();
  for (const auto& [wanted, dark] :
       {std::pair{Brightness::Dark, true}, {Brightness::Light, false}}) {
    theme::choose(wanted);
    pump.flush();
    EXPECT_EQ(theme::isDark(), dark);
    for (Widget* widget : widgets) {
      const auto [contrast, ground] = readability(paintedBy(*widget));
      EXPECT_GE(contrast, dark ? kTextContrast : 1) << widget->id() << " on " << ground;
      EXPECT_EQ(GetRValue(ground) < 0x60, dark) << widget->id() << " on " << ground;
    }
  }
  form.Unload();
  theme::choose(Brightness::System);
}

TEST(theme, menusAreReadableInTheDarkWithTheirKeysAndTheSystemsAgainAfterwards) {
  const UniqueMenu menu(CreatePopupMenu());
  AppendMenuW(menu.get(), MF_STRING, 1, L"A&&B &\u00D6ffnen\tStrg+O");
  AppendMenuW(menu.get(), MF_STRING, 2, L"Neu");
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE | MIIM_DATA;
  theme::choose(Brightness::Dark);
  MenuDrawing menus;
  menus.dress(menu.get());
  EXPECT_EQ(menus.entryOf(menu.get(), L'\u00F6'), MAKELRESULT(0, MNC_EXECUTE));
  EXPECT_EQ(menus.entryOf(menu.get(), L'b'), MAKELRESULT(0, MNC_IGNORE));
  GetMenuItemInfoW(menu.get(), 0, TRUE, &info);
  EXPECT_EQ(std::wstring(reinterpret_cast<const MSAAMENUINFO*>(info.dwItemData)->pszWText),
            L"A&&B &\u00D6ffnen");
  MEASUREITEMSTRUCT size{ODT_MENU, 0, 1, 0, 0, info.dwItemData};
  MenuDrawing::measure(nullptr, size);
  const auto width = static_cast<LONG>(size.itemWidth), height = static_cast<LONG>(size.itemHeight);
  for (const UINT state : {UINT{0}, UINT{ODS_SELECTED}, UINT{ODS_GRAYED}, UINT{ODS_CHECKED}}) {
    const auto [contrast, ground] = readability(painted(width, height, [&](HDC dc) {
      MenuDrawing::draw(nullptr, {.CtlType = ODT_MENU,
                                  .CtlID = 0,
                                  .itemID = 1,
                                  .itemAction = ODA_DRAWENTIRE,
                                  .itemState = state,
                                  .hwndItem = reinterpret_cast<HWND>(menu.get()),
                                  .hDC = dc,
                                  .rcItem = {0, 0, width, height},
                                  .itemData = info.dwItemData});
    }));
    EXPECT_GE(contrast, kTextContrast) << state;
    EXPECT_LT(GetRValue(ground), 0x60) << state;
  }
  menus.undress(menu.get());
  theme::choose(Brightness::System);
  menus.dress(menu.get());
  GetMenuItemInfoW(menu.get(), 0, TRUE, &info);
  EXPECT_EQ(info.fType, static_cast<UINT>(MFT_STRING));
}

}  // namespace
}  // namespace tintline
