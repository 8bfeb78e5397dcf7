// See tool_bar.h.
#include "win32/controls/tool_bar.h"

#include <commctrl.h>

#include <string>
#include <vector>

#include "win32/control_ids.h"
#include "win32/controls/fonts.h"
#include "win32/controls/image_strips.h"
#include "win32/controls/own_drawing.h"
#include "win32/controls/theme.h"

namespace tintline {
namespace {

constexpr DWORD kBarStyle = TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | TBSTYLE_TRANSPARENT |
                            CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN;
constexpr int kPadding = 12;  // pixels at 96 dpi around a picture, both sides together

}  // namespace

// Without captions on the buttons their texts are their tool tips.
ToolBarWidget::ToolBarWidget(WidgetHost& host, frmVBACode& form, int id)
    : Widget(host, form.Toolbar1, id, {TOOLBARCLASSNAMEW, kBarStyle}), form_(form) {
  send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  send(TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DOUBLEBUFFER);
  addButtons();
}

void ToolBarWidget::addButtons() {
  std::vector<TBBUTTON> buttons;
  std::vector<std::wstring> texts;  // alive until the buttons have copied them
  texts.reserve(toolbar().size());
  for (const ToolbarButton& button : toolbar()) {
    TBBUTTON added{};
    if (button.command == Command::None) {
      added.fsStyle = BTNS_SEP;
    } else {
      added.iBitmap = pictureOf(Strip::Toolbar, button.key);
      added.idCommand = commandId(button.command);
      added.fsState = TBSTATE_ENABLED;
      added.fsStyle =
          BTNS_AUTOSIZE | (button.command == Command::mnuVorschau ? BTNS_CHECK : BTNS_BUTTON);
      added.iString = reinterpret_cast<INT_PTR>(texts.emplace_back(button.toolTip).c_str());
    }
    buttons.push_back(added);
  }
  send(TB_ADDBUTTONSW, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
}

void ToolBarWidget::setFont(HFONT font, unsigned dpi) {
  UniqueImageList before = std::exchange(pictures_, loadStrip(Strip::Toolbar, dpi));
  send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures_.get()));
  Widget::setFont(font, dpi);
  const int padding = scaled(kPadding, dpi);
  send(TB_SETPADDING, 0, MAKELPARAM(padding, padding));
  send(TB_AUTOSIZE);
}

void ToolBarWidget::followTheme() {
  theme::dress(hwnd());
  theme::dressTips(reinterpret_cast<HWND>(send(TB_GETTOOLTIPS)));
}

LRESULT ToolBarWidget::notify(NMHDR& header) {
  if (header.code != NM_CUSTOMDRAW || !theme::isOwn()) return CDRF_DODEFAULT;
  return own_drawing::drawToolBar(reinterpret_cast<NMTBCUSTOMDRAW&>(header));
}

int ToolBarWidget::height() const { return HIWORD(send(TB_GETBUTTONSIZE)); }

void ToolBarWidget::show() {
  for (const ToolbarButton& button : toolbar()) {
    if (button.command == Command::None) continue;
    const auto number = static_cast<WPARAM>(commandId(button.command));
    const bool enabled = form_.isEnabled(button.command);
    if (enabled != (send(TB_ISBUTTONENABLED, number) != 0))
      send(TB_ENABLEBUTTON, number, MAKELPARAM(enabled, 0));
    const bool checked = form_.isChecked(button.command);
    if (checked != (send(TB_ISBUTTONCHECKED, number) != 0))
      send(TB_CHECKBUTTON, number, MAKELPARAM(checked, 0));
  }
}

}  // namespace tintline
