// What a run tells on the error stream: lines for people, or for programs one JSON object a line.
//
// Tested by tests/cli/run.py.
#pragma once

#include <cstdint>
#include <string>

#include "base/message.h"

namespace tintline {

enum class NoticeFormat : std::uint8_t { Text, Json };

struct Notice {
  enum class Severity : std::uint8_t { Error, Warning, Note };
  Severity severity;
  std::wstring file{};  // what it is about, as given: "-" is the standard input; "": no file
  Message message;
};

// "tintline: a.bas: file not found", or {"file":"a.bas","severity":"error","code":"file-not-found",
// "message":"file not found"} with "line" where it is known; closed by a line feed.
std::wstring noticeText(const Notice& notice, NoticeFormat format, Language language);

}  // namespace tintline
