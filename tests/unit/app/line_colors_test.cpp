#include "app/controls/line_colors.h"

#include <gtest/gtest.h>

#include <string>

#include "base/codepage.h"

namespace tintline {
namespace {

// "Dim=Word| x": each part with its tint, where it has one.
std::string described(const std::wstring& line, const LineInks& inks) {
  constexpr const char* kNames[] = {"Text",  "Page",   "Word",   "Name",  "Head",
                                    "Param", "Rem",    "Str",    "Num",   "Dir",
                                    "Err",   "LineNo", "Border", "Quiet", "Target"};
  std::string text;
  std::size_t begin = 0;
  for (const InkedPart& part : inkedParts(line, inks)) {
    text += (begin == 0 ? "" : "|") + toUtf8(line.substr(begin, part.end - begin));
    if (part.tint) text += std::string("=") + kNames[static_cast<int>(*part.tint)];
    begin = part.end;
  }
  return begin == line.size() ? text : "not the whole line";
}

TEST(inkedParts, CoverTheLineInTheColoursOfItsWordsOrTags) {
  ColorScheme colors;
  modColor::Farbesetzen(colors);
  using enum LineInks::Lines;
  const struct {
    LineInks::Lines lines;
    Mode mode;
    std::wstring line;
    std::string expected;
  } rows[] = {
      {Plain, Mode::Exact, L"Dim x", "Dim x"},
      {Source, Mode::Classic, L"", ""},
      {Source, Mode::Classic, L"  Dim ä = 12 ' ü ", "  Dim=Word| ä = 12| ' ü =Rem"},
      {Source, Mode::Exact, L"x = \"\U0001F600ß\" & 12", "x = |\"\U0001F600ß\"=Str| & |12=Num"},
      {Html, Mode::Classic, L"<span class='Code'>Dim</span> a < b <br>",
       "<span class='Code'>=Quiet|Dim=Word|</span>=Quiet| a < b |<br>=Quiet"},
      {Html, Mode::Classic, L"<i class='Rem'>'<hr>x<br>y",
       "<i class='Rem'>=Quiet|'=Rem|<hr>=Quiet|x=Rem|<br>=Quiet|y=Rem"},
      {Html, Mode::Exact, L"<b><i class=\"c x\">'</i> <a class=k>If",
       "<b><i class=\"c x\">=Quiet|'=Rem|</i>=Quiet| |<a class=k>=Quiet|If=Word"},
      {Html, Mode::Classic, L"<a href='#x' style='color:#800080;'>P</a>",
       "<a href='#x' style='color:#800080;'>=Quiet|P=Name|</a>=Quiet"},
      {Html, Mode::Classic, L"</span>x<span", "</span>=Quiet|x<span"},
  };
  colors[kProzeduren][kTextColor] = "#800080";
  for (const auto& row : rows)
    EXPECT_EQ(described(row.line, inksOf(row.lines, row.mode, colors)), row.expected);
  const auto parts = inkedParts(std::wstring(1 << 20, L'"'), inksOf(Source, Mode::Exact, colors));
  EXPECT_EQ(parts.back(), (InkedPart{1 << 20, std::nullopt}));
}

}  // namespace
}  // namespace tintline
