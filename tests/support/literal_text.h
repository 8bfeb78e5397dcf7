// Text functions of the processed language for the literal transcription: positions count from 1,
// 0 means "not found". Deliberately shares nothing with the program, so that both cannot be wrong
// in the same way. Texts are Windows-1252, one byte one character.
// Tested by tests/unit/engine/engine_property_test.cpp
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tintline::literal {

// The text without blanks (code 32 only) at its start, its end, or both.
std::string LTrim(const std::string& text);
std::string RTrim(const std::string& text);
std::string Trim(const std::string& text);

// The first or last `count` characters (all of them when there are fewer).
std::string Left(const std::string& text, std::size_t count);
std::string Right(const std::string& text, std::size_t count);

// The text from position `start` (1 or more) to its end.
std::string Mid(const std::string& text, std::size_t start);

// The text with every letter of Windows-1252 that has a capital partner replaced by that capital.
std::string UCase(const std::string& text);

// Position of the first occurrence of `what` at or behind position `start`, with regard to case.
std::size_t InStr(std::size_t start, const std::string& text, const std::string& what);
std::size_t InStr(const std::string& text, const std::string& what);

// Position of the last occurrence, with regard to case.
std::size_t InStrRev(const std::string& text, const std::string& what);

// The same searches without regard to case.
std::size_t InStrText(const std::string& text, const std::string& what);
std::size_t InStrRevText(const std::string& text, const std::string& what);

// Every occurrence of `find` (not empty) replaced, with regard to case, from the first character
// on.
std::string Replace(const std::string& text, const std::string& find, const std::string& with);

// The parts between the delimiters; an empty text has no parts.
std::vector<std::string> Split(const std::string& text, const std::string& delimiter);

// So many blanks; none when `count` is below 0.
std::string Space(int count);

// How many double quotes the text holds.
int QuoteCount(const std::string& text);

}  // namespace tintline::literal
