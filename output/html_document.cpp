// See html_document.h. Tested by tests/unit/output/output_test.cpp and tests/golden/run.py.
#include "output/html_document.h"

namespace tintline {
namespace {

void writeBody(std::ostream& datei, std::string_view htmlText) {
  datei << "<pre>\r\n" << htmlText << "\r\n</pre>\r\n";
}

}  // namespace

void writeExport(std::ostream& datei, const DocumentFrame& frame, const ProcedureNames& ProzNamen,
                 std::string_view htmlText) {
  frame.HTMLKopf(datei);
  frame.Procuebersicht(datei, ProzNamen);
  writeBody(datei, htmlText);
  frame.HTMLFuss(datei);
}

void HTMLDateierstellen(std::ostream& datei, const DocumentFrame& frame,
                        std::string_view htmlText) {
  frame.HTMLKopf(datei);
  writeBody(datei, htmlText);
  frame.HTMLFuss(datei);
}

void DummySeite(std::ostream& datei, const DocumentFrame& frame, std::string& htmlText) {
  frame.HTMLKopf(datei);
  htmlText += Dummytext();
  datei << htmlText << "\r\n";  // without "<pre>", unlike the result page
  frame.HTMLFuss(datei);
}

std::string_view Dummytext() {
  return "In diesem Bereich wird der<span class='Parms'> VB(A)-Code</span> angezeigt.";
}

}  // namespace tintline
