// See module_text.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/module_text.h"

#include <algorithm>

#include "sources/office_file/ascii.h"

namespace tintline::office_file {
namespace {

constexpr std::string_view kAttribute = "attribute ";

// In windows: a text may have one of the two kinds of line ends alone, and be searched to its end
// for the other at each line.
std::size_t findLineEnd(std::string_view text) {
  constexpr std::size_t kWindow = 256;
  for (std::size_t at = 0; at < text.size(); at += kWindow) {
    const std::string_view window = text.substr(at, kWindow);
    const std::size_t end = std::min(window.find('\r'), window.find('\n'));
    if (end != window.npos) return at + end;
  }
  return text.size();
}

// `visit(line)` for each line that the editor shows.
template <class Visit>
void forEditorLines(std::string_view source, Visit visit) {
  while (!source.empty()) {
    const std::string_view line = takeLine(source);
    if (!isAttribute(line)) visit(line);
  }
}

}  // namespace

std::string_view takeLine(std::string_view& text) {
  const std::size_t end = findLineEnd(text);
  const std::string_view line = text.substr(0, end);
  const bool pair = text.substr(end).starts_with("\r\n");
  text.remove_prefix(std::min(end + (pair ? 2 : 1), text.size()));
  return line;
}

bool isAttribute(std::string_view line) {
  return line.size() > kAttribute.size() && lowerAscii(line.front()) == kAttribute.front() &&
         equalsAscii(line.substr(0, kAttribute.size()), kAttribute) &&
         findAscii(line, "vb_") != line.npos;
}

bool isAttribute(std::string_view line, std::string_view name) {
  if (!isAttribute(line)) return false;
  line.remove_prefix(kAttribute.size());
  return equalsAscii(line.substr(0, line.find_first_of(" =")), name);
}

bool hasCode(std::string_view source) {
  while (!source.empty()) {
    const std::string_view line = takeLine(source);
    if (line.find_first_not_of(" \t") != line.npos && !isAttribute(line)) return true;
  }
  return false;
}

std::string editorText(std::string_view source) {
  std::string text;
  text.reserve(source.size());
  forEditorLines(source, [&](std::string_view line) { text.append(line).append("\r\n"); });
  return text;
}

std::size_t editorLines(std::string_view source) {
  std::size_t lines = 0;
  forEditorLines(source, [&](std::string_view) { ++lines; });
  return lines;
}

}  // namespace tintline::office_file
