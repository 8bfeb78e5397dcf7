// The exported document and the two pages of the preview.
//
// Tested by tests/unit/output/output_test.cpp and tests/golden/run.py.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "engine/document_frame.h"

namespace tintline {

// The exported document: head, procedure index, body inside "<pre>", foot.
void writeExport(std::ostream& datei, const DocumentFrame& frame, const ProcedureNames& ProzNamen,
                 std::string_view htmlText);

// The preview page: as the document, without the index.
void HTMLDateierstellen(std::ostream& datei, const DocumentFrame& frame, std::string_view htmlText);

// The placeholder page; adds the placeholder text to the HTML text, which is
// empty whenever the placeholder is wanted.
void DummySeite(std::ostream& datei, const DocumentFrame& frame, std::string& htmlText);

// The placeholder text.
std::string_view Dummytext();

}  // namespace tintline
