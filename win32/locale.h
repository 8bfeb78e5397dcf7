// The user's language settings.
//
// Tested by the tests that drive the program.
#pragma once

#include "ports/locale.h"

namespace tintline {

class SystemLocale final : public Locale {
 public:
  wchar_t decimalSeparator() override;
};

}  // namespace tintline
