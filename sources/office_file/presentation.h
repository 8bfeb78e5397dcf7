// Objects in a binary presentation (.ppt, [MS-PPT]): its project, and documents embedded in it.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "sources/office_file/fault.h"
#include "sources/office_file/limits.h"

namespace tintline::office_file {

// Whether the stream "Current User" says that the presentation is encrypted.
bool isEncryptedPresentation(std::string_view currentUser);

// Calls `visit` with each object, a compound file, that the last state of the presentation names.
// Older states stay in the stream. `document` is the stream "PowerPoint Document". Without a usable
// stream "Current User" every object in the document counts.
void forEachObject(std::string_view document, std::string_view currentUser, Budget& budget,
                   const std::function<void(const Bytes& object)>& visit);

}  // namespace tintline::office_file
