// Tests of output/html_document.h.
#include "output/html_document.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

namespace tintline {
namespace {

const DocumentFrame& frame() {
  static const DocumentFrame frame = [] {
    ColorScheme colors;
    modColor::Farbesetzen(colors);
    return DocumentFrame(colors, StyleMode::Inline);
  }();
  return frame;
}

std::string written(const std::function<void(std::ostream&)>& write) {
  std::ostringstream datei;
  write(datei);
  return datei.str();
}

const ProcedureNames kNames = {" Lesen", " Schreiben"};

TEST(HtmlDocument, exportHasAnIndexInFrontOfTheBody) {
  const std::string index =
      written([](std::ostream& datei) { frame().Procuebersicht(datei, kNames); });
  const std::string head = written([](std::ostream& datei) { frame().HTMLKopf(datei); });
  const std::string foot = written([](std::ostream& datei) { frame().HTMLFuss(datei); });
  EXPECT_EQ(written([](std::ostream& datei) { writeExport(datei, frame(), kNames, "x<br>\ny"); }),
            head + index + "<pre>\r\nx<br>\ny\r\n</pre>\r\n" + foot);
}

TEST(HtmlDocument, previewOfNothingIsAWholePage) {
  EXPECT_EQ(written([](std::ostream& datei) { HTMLDateierstellen(datei, frame(), ""); }),
            "<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>\r\n"
            "<html>\r\n<head>\r\n</head>\r\n<body><a name='Index'></a>\r\n"
            "<pre>\r\n\r\n</pre>\r\n"
            "</body>\r\n</html>\r\n");
}

TEST(HtmlDocument, placeholderIsAddedToTheHtmlText) {
  std::string htmlText = "alt";
  const std::string page =
      written([&htmlText](std::ostream& datei) { DummySeite(datei, frame(), htmlText); });
  EXPECT_EQ(htmlText,
            "altIn diesem Bereich wird der<span class='Parms'> VB(A)-Code</span> angezeigt.");
  EXPECT_TRUE(
      page.ends_with("<body><a name='Index'></a>\r\n" + htmlText + "\r\n</body>\r\n</html>\r\n"))
      << page;
}

}  // namespace
}  // namespace tintline
