// The text of a module as its project stores it: in the project's code page, with the attributes
// that the editor hides.
//
// Tested by tests/unit/sources/office_file_test.cpp.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tintline::office_file {

// Takes the first line off the text, without its end: CR LF, CR or LF.
std::string_view takeLine(std::string_view& text);

// Whether a line is an attribute, and the name of that attribute.
bool isAttribute(std::string_view line);
bool isAttribute(std::string_view line, std::string_view name);

// Whether there is a line that is neither blank nor an attribute.
bool hasCode(std::string_view source);

// The lines that the editor shows, each closed by CR LF, and how many they are.
std::string editorText(std::string_view source);
std::size_t editorLines(std::string_view source);

}  // namespace tintline::office_file
