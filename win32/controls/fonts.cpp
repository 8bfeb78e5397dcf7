// See fonts.h.
#include "win32/controls/fonts.h"

namespace tintline {
namespace {

constexpr int kListFontPoints = 10;

void apply(const FontLook& look, LOGFONTW& font) {
  font.lfHeight = MulDiv(font.lfHeight, look.percent, 100);
  if (look.bold) font.lfWeight = FW_BOLD;
  font.lfItalic = look.italic;
  font.lfUnderline = look.underlined;
}

}  // namespace

UniqueFont messageFont(unsigned dpi, const FontLook& look) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
  apply(look, metrics.lfMessageFont);
  return UniqueFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

UniqueFont listFont(unsigned dpi, const FontLook& look) {
  LOGFONTW font{};
  font.lfHeight = -MulDiv(kListFontPoints, static_cast<int>(dpi), 72);
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfQuality = CLEARTYPE_QUALITY;
  // Where there is no Consolas, any other font of this pitch will do.
  font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
  std::wstring_view(L"Consolas").copy(font.lfFaceName, LF_FACESIZE - 1);
  apply(look, font);
  return UniqueFont(CreateFontIndirectW(&font));
}

CharacterSize characterSize(HFONT font) {
  const WindowDc dc(nullptr);
  const Selected selected(dc, font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(dc, &metrics);
  SIZE ten{};  // (average widths are too small in some fonts)
  GetTextExtentPoint32W(dc, L"MMMMMMMMMM", 10, &ten);
  return {static_cast<int>(ten.cx) / 10, static_cast<int>(metrics.tmHeight)};
}

SIZE textSize(HFONT font, std::wstring_view text) {
  const WindowDc dc(nullptr);
  const Selected selected(dc, font);
  SIZE size{};
  GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size);
  return size;
}

}  // namespace tintline
