// Text functions of the literal transcription, as plain as they can be.
// Tested by tests/unit/engine/engine_property_test.cpp
#include "tests/support/literal_text.h"

namespace tintline::literal {

std::string LTrim(const std::string& text) {
  std::string result = text;
  while (Left(result, 1) == " ") result = Mid(result, 2);
  return result;
}

std::string RTrim(const std::string& text) {
  std::string result = text;
  while (Right(result, 1) == " ") result = Left(result, result.size() - 1);
  return result;
}

std::string Trim(const std::string& text) { return LTrim(RTrim(text)); }

std::string Left(const std::string& text, std::size_t count) { return text.substr(0, count); }

std::string Right(const std::string& text, std::size_t count) {
  if (count >= text.size()) return text;
  return text.substr(text.size() - count);
}

std::string Mid(const std::string& text, std::size_t start) {
  if (start > text.size()) return "";
  return text.substr(start - 1);
}

std::string UCase(const std::string& text) {
  // Small letters and, at the same place, their capitals: the alphabet, then s and z with caron and
  // the oe ligature, a-grave to thorn without the division sign, and y with diaeresis.
  const std::string small =
      "abcdefghijklmnopqrstuvwxyz"
      "\x9A\x9C\x9E"
      "\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB\xEC\xED\xEE\xEF"
      "\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF8\xF9\xFA\xFB\xFC\xFD\xFE"
      "\xFF";
  const std::string capital =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
      "\x8A\x8C\x8E"
      "\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xCA\xCB\xCC\xCD\xCE\xCF"
      "\xD0\xD1\xD2\xD3\xD4\xD5\xD6\xD8\xD9\xDA\xDB\xDC\xDD\xDE"
      "\x9F";
  std::string result;
  for (char c : text) {
    const std::size_t place = small.find(c);
    result += place == std::string::npos ? c : capital[place];
  }
  return result;
}

std::size_t InStr(std::size_t start, const std::string& text, const std::string& what) {
  const std::size_t found = text.find(what, start - 1);
  return found == std::string::npos ? 0 : found + 1;
}

std::size_t InStr(const std::string& text, const std::string& what) { return InStr(1, text, what); }

std::size_t InStrRev(const std::string& text, const std::string& what) {
  const std::size_t found = text.rfind(what);
  return found == std::string::npos ? 0 : found + 1;
}

std::size_t InStrText(const std::string& text, const std::string& what) {
  return InStr(UCase(text), UCase(what));
}

std::size_t InStrRevText(const std::string& text, const std::string& what) {
  return InStrRev(UCase(text), UCase(what));
}

std::string Replace(const std::string& text, const std::string& find, const std::string& with) {
  std::string result;
  std::string rest = text;
  while (InStr(rest, find) > 0) {
    const std::size_t position = InStr(rest, find);
    result += Left(rest, position - 1) + with;
    rest = Mid(rest, position + find.size());
  }
  return result + rest;
}

std::vector<std::string> Split(const std::string& text, const std::string& delimiter) {
  std::vector<std::string> parts;
  if (text.empty()) return parts;
  std::string rest = text;
  while (InStr(rest, delimiter) > 0) {
    const std::size_t position = InStr(rest, delimiter);
    parts.push_back(Left(rest, position - 1));
    rest = Mid(rest, position + delimiter.size());
  }
  parts.push_back(rest);
  return parts;
}

std::string Space(int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += " ";
  return result;
}

int QuoteCount(const std::string& text) {
  int count = 0;
  for (char c : text) {
    if (c == '"') ++count;
  }
  return count;
}

}  // namespace tintline::literal
