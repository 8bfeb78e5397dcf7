// A machine without Office applications.
#pragma once

#include <string_view>

#include "ports/office.h"

namespace tintline::test {

class FakeOffice final : public Office {
 public:
  OfficeApplication connect(std::wstring_view) override {
    throw OfficeError(OfficeError::Kind::NotInstalled, 429, L"Objekterstellung nicht möglich",
                      0x800401F3);
  }
};

}  // namespace tintline::test
