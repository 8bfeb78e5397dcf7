// The system's clipboard.
//
// Tested by tests/win32/system/ports_test.cpp.
#pragma once

#include "ports/clipboard.h"

namespace tintline {

// Waits a moment when another program holds the clipboard.
class SystemClipboard final : public Clipboard {
 public:
  void setText(std::wstring_view text) override;
  void setFormats(const Formats& formats) override;
  std::wstring text() override;
};

}  // namespace tintline
