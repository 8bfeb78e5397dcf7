// See file_header.h. Tested by tests/unit/reformat/wrapping_test.cpp.
#include "reformat/file_header.h"

#include "base/text.h"
#include "reformat/code_line.h"

namespace tintline {
namespace {

// The text behind the first word and the separators that follow it.
std::string_view behindFirstWord(std::string_view text) {
  const std::string_view word = firstWord(text);
  const auto end = static_cast<std::size_t>(word.data() + word.size() - text.data());
  return text.substr(skipSeparators(text, end));
}

bool isVersion(std::string_view line) {
  if (!equalsIgnoreCase(firstWord(line), "VERSION")) return false;
  const std::string_view number = behindFirstWord(line);
  return !number.empty() && number.front() >= '0' && number.front() <= '9';
}

bool isObject(std::string_view line) {
  return equalsIgnoreCase(firstWord(line), "Object") && behindFirstWord(line).starts_with('=');
}

}  // namespace

bool isAttribute(std::string_view line) {
  if (!equalsIgnoreCase(firstWord(line), "Attribute")) return false;
  const std::string_view name = behindFirstWord(line);
  const std::string_view owner = firstWord(name);
  return startsWithIgnoreCase(name, "VB_") ||
         (!owner.empty() && startsWithIgnoreCase(name.substr(owner.size()), ".VB_"));
}

bool FileHeader::holds(std::string_view line) {
  const std::string_view word = firstWord(line);
  if (!inside_) return inside_ = isVersion(line);
  if (isAttribute(line)) {  // the header has ended, whatever is missing of it
    inside_ = false;
    depth_ = 0;
  } else if (equalsIgnoreCase(word, "Begin") || equalsIgnoreCase(word, "BeginProperty")) {
    ++depth_;
  } else if (depth_ == 0) {
    inside_ = skipSeparators(line, 0) == line.size() || isObject(line) || isVersion(line);
  } else if (equalsIgnoreCase(word, "End") || equalsIgnoreCase(word, "EndProperty")) {
    --depth_;
    inside_ = depth_ > 0;
    return true;
  }
  return inside_;
}

}  // namespace tintline
