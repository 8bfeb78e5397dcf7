// See colors_window.h.
#include "win32/forms/colors_window.h"

#include <algorithm>

#include "win32/control_ids.h"
#include "win32/controls/widgets.h"

namespace tintline {
namespace {

constexpr int kMargin = 14, kGap = 8, kFieldWidth = 120, kButtonWidth = 92;  // pixels at 96 dpi

// A piece of code in its colours.
class SampleWidget final : public Widget {
 public:
  SampleWidget(WidgetHost& host, SampleLabel& model, int id)
      : Widget(host, model, id, {WC_STATICW, SS_OWNERDRAW}), model_(model) {}

  void setFont(HFONT, unsigned dpi) override {
    font_ = listFont(dpi);
    margin_ = scaled(6, dpi);
    Widget::setFont(font_.get(), dpi);
  }

  void draw(const DRAWITEMSTRUCT& item) override {
    const Selected font(item.hDC, font_.get());
    SetBkColor(item.hDC, kPage);
    ExtTextOutW(item.hDC, 0, 0, ETO_OPAQUE, &item.rcItem, L"", 0, nullptr);
    const std::wstring_view text = model_.Caption(), plain = model_.Plain();
    const std::size_t from = plain.empty() ? text.size() : text.find(plain);
    RECT area = item.rcItem;
    area.left += margin_;
    drawPiece(item.hDC, area, text.substr(0, from), true);
    drawPiece(item.hDC, area, plain, false);
    drawPiece(item.hDC, area, text.substr(from + plain.size()), true);
  }

 private:
  static constexpr COLORREF kPage = RGB(255, 255, 255), kPageText = RGB(0, 0, 0);

  // Takes the room of the piece from the area.
  void drawPiece(HDC dc, RECT& area, std::wstring_view text, bool colored) const {
    SetTextColor(dc, colored ? model_.ForeColor() : kPageText);
    SetBkColor(dc, colored && !model_.Transparent ? model_.BackColor() : kPage);
    SIZE size{};
    const auto length = static_cast<int>(text.size());
    GetTextExtentPoint32W(dc, text.data(), length, &size);
    const int top = static_cast<int>(area.top + area.bottom - size.cy) / 2;
    ExtTextOutW(dc, area.left, top, ETO_CLIPPED, &area, text.data(), static_cast<UINT>(length),
                nullptr);
    area.left += size.cx;
  }

  void show() override {
    showText(model_.Caption);
    InvalidateRect(hwnd(), nullptr, FALSE);  // the colours may be others
  }

  SampleLabel& model_;
  UniqueFont font_;
  int margin_ = 0;
};

}  // namespace

ColorsWindow::ColorsWindow(MessagePump& pump, frmFarbeinstellung& form)
    : FormWindow(pump, form), form_(form) {
  createWindow(kColorsClass, WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME,
               workingWindow());
  kategorie_ = &add<LabelWidget>(form.lblKategorie, id::kLblKategorie);
  kategorien_ = &add<ComboWidget>(form.cboKategorie, id::kCboKategorie);
  text_ = &add<LabelWidget>(form.lblText, id::kLblText);
  textFarbe_ = &add<EditWidget>(form.txtFarbe, id::kTxtFarbe);
  farbe_ = &add<ButtonWidget>(form.cmdFarbe, id::kCmdFarbe);
  hintergrund_ = &add<LabelWidget>(form.lblHintergrund, id::kLblHintergrund);
  hintergrundFarbe_ = &add<EditWidget>(form.txtHintergrund, id::kTxtHintergrund);
  hintergrundButton_ = &add<ButtonWidget>(form.cmdHintergrund, id::kCmdHintergrund);
  transparent_ =
      &add<ToggleWidget<CheckBox>>(form.chkTransparent, id::kChkTransparent, kCheckStyle);
  hinweis_ = &add<LabelWidget>(form.lblHinweis, id::kLblHinweis, SS_LEFT | SS_NOPREFIX);
  beispiel_ = &add<LabelWidget>(form.lblBeispiel, id::kLblBeispiel);
  muster_ = &add<SampleWidget>(form.lblMuster, id::kLblMuster);
  schema_ = &add<LabelWidget>(form.lblSchema, id::kLblSchema);
  for (std::size_t i = 0; i < form.lblMusterSchema.size(); ++i)
    schemaMuster_.push_back(
        &add<SampleWidget>(form.lblMusterSchema[i], id::kLblMusterSchema + static_cast<int>(i)));
  standard_ = &add<ButtonWidget>(form.cmdStandard, id::kCmdStandard);
  hilfe_ = &add<ButtonWidget>(form.cmdHilfe, id::kCmdHilfe);
  speichern_ = &add<ButtonWidget>(form.cmdSpeichern, id::kOk, BS_DEFPUSHBUTTON);
  abbrechen_ = &add<ButtonWidget>(form.cmdAbbrechen, id::kCancel);
}

LRESULT ColorsWindow::handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_HELP) {
    form_.mnufarbe_Click();
    return TRUE;
  }
  return FormWindow::handle(message, wParam, lParam);
}

// ---------------------------------------------------------------------------- layout
// The height of a field or a row.
int ColorsWindow::line() const { return static_cast<int>(textSize(font(), L"Ag").cy) + px(9); }

int ColorsWindow::labelWidth() const {
  int width = 0;
  for (const Label* label : {&form_.lblKategorie, &form_.lblText, &form_.lblHintergrund})
    width = std::max(width, widthFor(label->Caption, kGap));
  return width;
}

SIZE ColorsWindow::clientSize() {
  const int step = line() + px(kGap);
  const int rows = 6 * step + static_cast<int>(schemaMuster_.size()) * line();
  const int buttons = line() + px(2);
  return {labelWidth() + px(kFieldWidth + kGap + kButtonWidth + 2 * kMargin),
          rows + buttons + px(3 * kMargin)};
}

void ColorsWindow::layout() {
  const SIZE client = clientSize();
  const int left = px(kMargin), width = static_cast<int>(client.cx) - 2 * left;
  placeFields(left, px(kMargin));
  const int step = line() + px(kGap);
  const int samples = px(kMargin) + 5 * step;
  place(*hinweis_, left, px(kMargin) + 4 * step, width, line());
  placeSamples(left, samples);

  const int height = line() + px(2), top = static_cast<int>(client.cy) - px(kMargin) - height;
  const int button = std::min(px(kButtonWidth), (width - 3 * px(kGap)) / 4);
  const int right = left + width;
  place(*standard_, left, top, button, height);
  place(*hilfe_, left + button + px(kGap), top, button, height);
  place(*speichern_, right - 2 * button - px(kGap), top, button, height);
  place(*abbrechen_, right - button, top, button, height);
}

// Three rows of label, field and button, and the check box.
void ColorsWindow::placeFields(int left, int top) {
  const int label = labelWidth(), height = line(), step = height + px(kGap);
  const int field = left + label, button = field + px(kFieldWidth + kGap);
  const int drop = 12 * height;  // of a drop-down list the opened height counts
  const auto labelAt = [&](const Widget* widget, int row) {
    place(*widget, left, top + row * step + px(4), label, height - px(4));
  };
  labelAt(kategorie_, 0);
  place(*kategorien_, field, top, px(kFieldWidth + kGap + kButtonWidth), drop);
  labelAt(text_, 1);
  place(*textFarbe_, field, top + step, px(kFieldWidth), height);
  place(*farbe_, button, top + step, px(kButtonWidth), height);
  labelAt(hintergrund_, 2);
  place(*hintergrundFarbe_, field, top + 2 * step, px(kFieldWidth), height);
  place(*hintergrundButton_, button, top + 2 * step, px(kButtonWidth), height);
  place(*transparent_, field, top + 3 * step, px(kFieldWidth + kGap + kButtonWidth), height);
}

// The sample of the category, and below it the whole scheme.
void ColorsWindow::placeSamples(int left, int top) {
  const int height = line(), step = height + px(kGap);
  const int width = static_cast<int>(clientSize().cx) - 2 * left, label = labelWidth();
  place(*beispiel_, left, top + px(4), label, height - px(4));
  place(*muster_, left + label, top, width - label, height);
  top += step;
  place(*schema_, left, top + px(4), label, height - px(4));
  for (const Widget* sample : schemaMuster_) {
    place(*sample, left + label, top, width - label, height);
    top += height;
  }
}

}  // namespace tintline
