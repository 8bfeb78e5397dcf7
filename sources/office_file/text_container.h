// Documents that hold their binary parts as text: flat XML packages, the XML forms of 2003, web
// archives. The parts are found by their marks alone; nothing else of the text is understood.
//
// The formats are those of ISO/IEC 29500 (flat OPC as in its pkg: namespace), of WordprocessingML
// 2003 and of RFC 2557; base64 is RFC 4648's.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "sources/office_file/fault.h"
#include "sources/office_file/limits.h"

namespace tintline::office_file {

// Whether a text begins like one of these documents.
bool isXmlDocument(std::string_view beginning);
bool isWebArchive(std::string_view beginning);

// Calls `visit` with the name, "" where it has none, and the bytes of each binary part.
using VisitPart = std::function<void(std::string_view name, std::string_view bytes)>;
void forEachXmlPart(std::string_view text, Budget& budget, const VisitPart& visit);
void forEachArchivePart(std::string_view text, Budget& budget, const VisitPart& visit);

// The base64 text up to the first character that cannot stand in it; blanks are passed over.
std::string fromBase64(std::string_view text);

// An ActiveMime part, in which the XML forms of 2003 and web archives have the project: a compound
// file, compressed by zlib behind a header.
bool isActiveMime(std::string_view part);
Bytes activeMimeContent(std::string_view part, Budget& budget);

}  // namespace tintline::office_file
