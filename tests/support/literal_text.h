// Text functions of the processed language for the literal transcription: positions count from 1,
// 0 means "not found". Deliberately shares nothing with the program, so that both cannot be wrong
// in the same way. Texts are Windows-1252, one byte one character.
// Tested by tests/unit/engine/engine_property_test.cpp
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace tintline::literal {

using std::string;

inline string Left(const string& text, std::size_t count) { return text.substr(0, count); }
inline string Right(const string& text, std::size_t count) {
  return text.substr(text.size() - std::min(count, text.size()));
}
inline string Mid(const string& text, std::size_t start) {
  return start > text.size() ? "" : text.substr(start - 1);
}

inline string LTrim(string text) {
  while (Left(text, 1) == " ") text = Mid(text, 2);
  return text;
}
inline string RTrim(string text) {
  while (Right(text, 1) == " ") text = Left(text, text.size() - 1);
  return text;
}
inline string Trim(const string& text) { return LTrim(RTrim(text)); }

// Small letters and, at the same place, their capitals: the alphabet, then s and z with caron and
// the oe ligature, a-grave to thorn without the division sign, and y with diaeresis.
inline string UCase(string text) {
  const string small =
      "abcdefghijklmnopqrstuvwxyz\x9A\x9C\x9E"
      "\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB\xEC\xED\xEE\xEF"
      "\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF8\xF9\xFA\xFB\xFC\xFD\xFE\xFF";
  const string capital =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZ\x8A\x8C\x8E"
      "\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xCA\xCB\xCC\xCD\xCE\xCF"
      "\xD0\xD1\xD2\xD3\xD4\xD5\xD6\xD8\xD9\xDA\xDB\xDC\xDD\xDE\x9F";
  for (char& c : text)
    if (small.find(c) != string::npos) c = capital[small.find(c)];
  return text;
}

inline std::size_t InStr(std::size_t start, const string& text, const string& what) {
  return text.find(what, start - 1) + 1;  // npos + 1 is 0
}
inline std::size_t InStr(const string& text, const string& what) { return InStr(1, text, what); }
inline std::size_t InStrRev(const string& text, const string& what) { return text.rfind(what) + 1; }
// Without regard to case.
inline std::size_t InStrText(const string& text, const string& what) {
  return InStr(UCase(text), UCase(what));
}
inline std::size_t InStrRevText(const string& text, const string& what) {
  return InStrRev(UCase(text), UCase(what));
}

inline std::vector<string> Split(const string& text, const string& delimiter) {
  if (text.empty()) return {};
  std::vector<string> parts;
  string rest = text;
  for (std::size_t at; (at = InStr(rest, delimiter)) > 0; rest = Mid(rest, at + delimiter.size()))
    parts.push_back(Left(rest, at - 1));
  parts.push_back(rest);
  return parts;
}

inline string Replace(const string& text, const string& find, const string& with) {
  string result, rest = text;
  for (std::size_t at; (at = InStr(rest, find)) > 0; rest = Mid(rest, at + find.size()))
    result += Left(rest, at - 1) + with;
  return result + rest;
}

inline string Space(int count) { return string(count > 0 ? count : 0, ' '); }

inline auto QuoteCount(const string& text) { return std::count(text.begin(), text.end(), '"'); }

}  // namespace tintline::literal
