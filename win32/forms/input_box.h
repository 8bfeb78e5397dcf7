// A small dialog that asks for one line of text.
//
// Tested by tests/win32/program/convert_test.cpp.
#pragma once

#include <optional>
#include <string>

#include "win32/message_pump.h"

namespace tintline {

// Nothing when the user cancels. Enter stands for "OK", Escape for "Abbrechen".
std::optional<std::wstring> askForText(MessagePump& pump, const std::wstring& caption,
                                       const std::wstring& prompt, const std::wstring& value);

}  // namespace tintline
