// The user's language settings.
//
// Tested by tests/win32/system/ports_test.cpp.
#pragma once

#include "ports/locale.h"

namespace tintline {

class SystemLocale final : public Locale {
 public:
  wchar_t decimalSeparator() override;
};

}  // namespace tintline
