// Language settings of the test's choice.
#pragma once

#include "ports/locale.h"

namespace tintline::test {

class FakeLocale final : public Locale {
 public:
  wchar_t decimalSeparator() override { return separator; }

  wchar_t separator = L',';
};

}  // namespace tintline::test
