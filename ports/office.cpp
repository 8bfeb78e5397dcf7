// See office.h. Tested by the tests of those who use it.
#include "ports/office.h"

#include <utility>

namespace tintline {

OfficeError::OfficeError(Kind kind, long number, std::wstring description, std::uint32_t hresult)
    : std::runtime_error("a call to an Office application failed"),
      kind_(kind),
      number_(number),
      description_(std::move(description)),
      hresult_(hresult) {}

}  // namespace tintline
