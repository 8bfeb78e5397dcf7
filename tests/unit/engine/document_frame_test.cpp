// Tests engine/document_frame.h.
#include "engine/document_frame.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tintline {
namespace {

ColorScheme defaults() {
  ColorScheme scheme;
  modColor::Farbesetzen(scheme);
  return scheme;
}

std::string kopf(const DocumentFrame& frame) {
  std::ostringstream datei;
  frame.HTMLKopf(datei);
  return datei.str();
}

TEST(DocumentFrame, InlineHeadHasNoStyleSheet) {
  EXPECT_EQ(kopf(DocumentFrame(defaults(), StyleMode::Inline)),
            "<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>\r\n<html>\r\n<head>\r\n"
            "</head>\r\n<body><a name='Index'></a>\r\n");
}

TEST(DocumentFrame, ClassHeadHasOneRuleAClass) {
  EXPECT_EQ(kopf(DocumentFrame(defaults(), StyleMode::Class)),
            "<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>\r\n<html>\r\n<head>\r\n"
            "<style type='text/css'>\r\n<!--\r\n"
            ".Code {\r\n color: #0000FF;\r\n background-color: #FFFFFF;\r\n}\r\n"
            ".Parms {\r\n color: #008080;\r\n background-color: #FFFFFF;\r\n}\r\n"
            ".Marks {\r\n color: #FF0000;\r\n background-color: #FFFFFF;\r\n}\r\n"
            ".Rem {\r\n color: #008000;\r\n background-color: #FFFFFF;\r\n}\r\n"
            ".Sub {\r\n color: #000080;\r\n font: italic bold;\r\n background-color: #DFDFDF;\r\n"
            "}\r\n"
            ".EndSub {\r\n color: #000080;\r\n font: italic bold;\r\n background-color: #DFDFDF;"
            "\r\n}\r\n"
            "-->\r\n</style>\r\n</head>\r\n<body><a name='Index'></a>\r\n");
}

TEST(DocumentFrame, CodeIsTransparentExactlyWhenParmsIs) {
  ColorScheme scheme = defaults();
  scheme[kReservierteWorte][kTransparency] = "1";
  EXPECT_NE(kopf(DocumentFrame(scheme, StyleMode::Class))
                .find(".Code {\r\n color: #0000FF;\r\n background-color: #FFFFFF;"),
            std::string::npos);
  scheme = defaults();
  scheme[kParameter][kTransparency] = "1";
  EXPECT_NE(kopf(DocumentFrame(scheme, StyleMode::Class))
                .find(".Code {\r\n color: #0000FF;\r\n background-color: inherit;"),
            std::string::npos);
}

TEST(DocumentFrame, IndexListsTheTrimmedNamesInBothModes) {
  const auto index = [](StyleMode mode) {
    std::ostringstream datei;
    DocumentFrame(defaults(), mode).Procuebersicht(datei, {" Main", " Main", " "});
    return datei.str();
  };
  constexpr std::string_view kNames =
      "&nbsp;&nbsp;<a HREF='#Main'>Main</a><br>\r\n&nbsp;&nbsp;<a HREF='#Main'>Main</a><br>\r\n"
      "&nbsp;&nbsp;<a HREF='#'></a><br>\r\n";
  EXPECT_EQ(index(StyleMode::Class),
            "<div style='border: thin solid #000080;'>\r\n"
            "<span name='Index' class='Sub'>&Uuml;bersicht &uuml;ber die enthaltenen Prozeduren "
            "(Sub und Function)</span><br>\r\n" +
                std::string(kNames) +
                "<span class='Sub'>Ende der &Uuml;bersicht </span><br>\r\n</div><hr>\r\n");
  EXPECT_EQ(index(StyleMode::Inline),
            "<div style='border: thin solid #000080;'>\r\n"
            "<span name='Index' style=\" color:#0000FF; background: inherit;\">&Uuml;bersicht "
            "&uuml;ber die enthaltenen Prozeduren (Sub und Function)</span><br>\r\n" +
                std::string(kNames) +
                "<span style=\" color:#0000FF; background: inherit;\">Ende der &Uuml;bersicht"
                "</span><br>\r\n</div><hr>\r\n");
}

TEST(DocumentFrame, ReplaceStyleTurnsEveryClassIntoItsStyle) {
  ColorScheme scheme = defaults();
  scheme[kKommentare][kTransparency] = "1";
  const DocumentFrame frame(scheme, StyleMode::Inline);
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"<b>plain</b>", "<b>plain</b>"},
      {"class='Code' class='Code'",
       "style=\" color:#0000FF; background: #FFFFFF;\" style=\" color:#0000FF; background: "
       "#FFFFFF;\""},
      {"class='Parms'", "style=\" color:#008080; background: #FFFFFF;\""},
      {"class='Marks'", "style=\" color:#FF0000; background: #FFFFFF;\""},
      {"class='Rem'", "style=\" color:#008000; background: inherit;\""},
      {"class='Sub'", "style=\" color:#000080; background: #DFDFDF; font: italic bold;\""},
      {"class='EndSub'", "style=\" color:#000080; background: #DFDFDF; font: italic bold;\""},
      {"class='sub' CLASS='Code'", "class='sub' CLASS='Code'"},
  };
  for (const auto& [line, expected] : cases) EXPECT_EQ(frame.fkt_ReplaceStyle(line), expected);
}

TEST(DocumentFrame, ReplaceTransparentKnowsTheReservedWordsBackgroundOnly) {
  const DocumentFrame frame(defaults(), StyleMode::Inline);
  EXPECT_EQ(frame.fkt_ReplaceTransparent("background: #FFFFFF; background: #DFDFDF;"),
            "background: inherit; background: #DFDFDF;");
}

}  // namespace
}  // namespace tintline
