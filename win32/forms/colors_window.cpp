// See colors_window.h.
#include "win32/forms/colors_window.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "win32/control_ids.h"
#include "win32/controls/widgets.h"

namespace tintline {
namespace {

// Pixels at 96 dpi.
constexpr int kMargin = 14, kGap = 8, kFieldWidth = 90, kButtonWidth = 92, kSwatchWidth = 40,
              kSampleMargin = 4;

COLORREF colorRef(Color color) { return RGB(color >> 16 & 0xFF, color >> 8 & 0xFF, color & 0xFF); }

void fill(HDC dc, const RECT& area, COLORREF color) {
  SetBkColor(dc, color);
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, L"", 0, nullptr);
}

// The border tells it from a ground of the same colour.
class SwatchWidget final : public LabelWidget {
 public:
  SwatchWidget(WidgetHost& host, ColorSwatch& model, int id)
      : LabelWidget(host, model, id, SS_OWNERDRAW | SS_NOTIFY | WS_BORDER), swatch_(model) {}

  void draw(const DRAWITEMSTRUCT& item) override { fill(item.hDC, item.rcItem, swatch_.Value); }

  HCURSOR pointer() const override { return LoadCursorW(nullptr, IDC_HAND); }

 private:
  void show() override {
    LabelWidget::show();
    InvalidateRect(hwnd(), nullptr, FALSE);
  }

  ColorSwatch& swatch_;
};

class SampleWidget final : public LabelWidget {
 public:
  SampleWidget(WidgetHost& host, SampleLabel& model, int id)
      : LabelWidget(host, model, id, SS_OWNERDRAW | SS_NOPREFIX | WS_BORDER), sample_(model) {}

  void setFont(HFONT font, unsigned dpi) override {
    dpi_ = dpi;
    character_ = characterSize(listFont(dpi).get());
    LabelWidget::setFont(font, dpi);
  }

  void draw(const DRAWITEMSTRUCT& item) override {
    const CodeSample& sample = sample_.Sample;
    fill(item.hDC, item.rcItem, colorRef(sample.ground));
    RECT row = item.rcItem;
    row.top += scaled(kSampleMargin, dpi_);
    for (const CodeSample::Line& line : sample.lines) {
      row.bottom = row.top + character_.height;
      drawLine(item.hDC, row, line);
      row.top = row.bottom;
    }
  }

 private:
  void drawLine(HDC dc, const RECT& row, const CodeSample::Line& line) const {
    const CodeSample& sample = sample_.Sample;
    if (line.ground) fill(dc, row, colorRef(*line.ground));
    RECT area = row;
    area.left += scaled(2 * kSampleMargin, dpi_);
    for (const CodeSample::Piece& piece : line.pieces) {
      const UniqueFont look = listFont(dpi_, {.bold = piece.looks.bold,
                                              .italic = piece.looks.italic,
                                              .underlined = piece.looks.underlined});
      const Selected font(dc, look.get());
      SetTextColor(dc, colorRef(piece.looks.color.value_or(sample.ink)));
      SetBkColor(dc,
                 colorRef(piece.looks.background.value_or(line.ground.value_or(sample.ground))));
      const auto length = static_cast<int>(piece.text.size());
      const std::vector<int> widths(piece.text.size(), character_.width);  // of italic ones, too
      area.right = std::min(area.left + length * character_.width, row.right);
      ExtTextOutW(dc, area.left, area.top, ETO_OPAQUE | ETO_CLIPPED, &area, piece.text.data(),
                  static_cast<UINT>(length), widths.data());
      area.left = area.right;
    }
  }

  void show() override {
    LabelWidget::show();
    InvalidateRect(hwnd(), nullptr, FALSE);  // the colours may be others
  }

  SampleLabel& sample_;
  CharacterSize character_{1, 1};
  unsigned dpi_ = kDesignDpi;
};

}  // namespace

ColorsWindow::ColorsWindow(MessagePump& pump, frmFarbeinstellung& form)
    : FormWindow(pump, form), form_(form) {
  createWindow(kColorsClass, WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME,
               workingWindow());
  kategorie_ = &add<LabelWidget>(form.lblKategorie, id::kLblKategorie);
  kategorien_ = &add<ComboWidget>(form.cboKategorie, id::kCboKategorie);
  text_ = &add<LabelWidget>(form.lblText, id::kLblText);
  swatch_ = &add<SwatchWidget>(form.lblFarbe, id::kLblFarbe);
  textFarbe_ = &add<EditWidget>(form.txtFarbe, id::kTxtFarbe);
  farbe_ = &add<ButtonWidget>(form.cmdFarbe, id::kCmdFarbe);
  hintergrund_ = &add<LabelWidget>(form.lblHintergrund, id::kLblHintergrund);
  hintergrundSwatch_ = &add<SwatchWidget>(form.lblHintergrundfarbe, id::kLblHintergrundfarbe);
  hintergrundFarbe_ = &add<EditWidget>(form.txtHintergrund, id::kTxtHintergrund);
  hintergrundButton_ = &add<ButtonWidget>(form.cmdHintergrund, id::kCmdHintergrund);
  transparent_ =
      &add<ToggleWidget<CheckBox>>(form.chkTransparent, id::kChkTransparent, kCheckStyle);
  hinweis_ = &add<LabelWidget>(form.lblHinweis, id::kLblHinweis, SS_LEFT | SS_NOPREFIX);
  klassisch_ = &add<LabelWidget>(form.lblKlassisch, id::kLblKlassisch);
  musterKlassisch_ = &add<SampleWidget>(form.lblMusterKlassisch, id::kLblMusterKlassisch);
  genau_ = &add<LabelWidget>(form.lblGenau, id::kLblGenau);
  musterGenau_ = &add<SampleWidget>(form.lblMusterGenau, id::kLblMusterGenau);
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

SIZE ColorsWindow::sampleSize() const {
  const CodeSample& sample = form_.lblMusterGenau.Sample;
  std::size_t columns = 0;
  for (const CodeSample::Line& line : sample.lines) {
    std::size_t width = 0;
    for (const CodeSample::Piece& piece : line.pieces) width += piece.text.size();
    columns = std::max(columns, width);
  }
  const CharacterSize character = characterSize(listFont(dpi()).get());
  return {static_cast<int>(columns) * character.width + px(4 * kSampleMargin) + px(2),
          static_cast<int>(sample.lines.size()) * character.height + px(2 * kSampleMargin) + px(2)};
}

SIZE ColorsWindow::clientSize() {
  const SIZE sample = sampleSize();
  const int samples = 2 * (static_cast<int>(sample.cy) + px(kGap));
  const int rows = 5 * (line() + px(kGap)), buttons = line() + px(2);
  return {labelWidth() + static_cast<int>(sample.cx) + 2 * px(kMargin),
          rows + samples + buttons + 2 * px(kMargin) + px(kGap)};
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
  const int swatch = left + label, field = swatch + px(kSwatchWidth + kGap);
  const int button = field + px(kFieldWidth + kGap);
  const int drop = 12 * height;  // of a drop-down list the opened height counts
  const auto labelAt = [&](const Widget* widget, int row) {
    place(*widget, left, top + row * step + px(4), label, height - px(4));
  };
  const int all = button + px(kButtonWidth) - swatch;
  labelAt(kategorie_, 0);
  place(*kategorien_, swatch, top, all, drop);
  labelAt(text_, 1);
  place(*swatch_, swatch, top + step, px(kSwatchWidth), height);
  place(*textFarbe_, field, top + step, px(kFieldWidth), height);
  place(*farbe_, button, top + step, px(kButtonWidth), height);
  labelAt(hintergrund_, 2);
  place(*hintergrundSwatch_, swatch, top + 2 * step, px(kSwatchWidth), height);
  place(*hintergrundFarbe_, field, top + 2 * step, px(kFieldWidth), height);
  place(*hintergrundButton_, button, top + 2 * step, px(kButtonWidth), height);
  place(*transparent_, swatch, top + 3 * step, all, height);
}

// One below the other, so that they can be compared.
void ColorsWindow::placeSamples(int left, int top) {
  const SIZE size = sampleSize();
  const int label = labelWidth(), height = static_cast<int>(size.cy);
  for (const auto& [caption, sample] :
       {std::pair(klassisch_, musterKlassisch_), std::pair(genau_, musterGenau_)}) {
    place(*caption, left, top + px(4), label, line() - px(4));
    place(*sample, left + label, top, static_cast<int>(size.cx), height);
    top += height + px(kGap);
  }
}

}  // namespace tintline
