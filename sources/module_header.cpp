// See module_header.h. Tested by tests/unit/sources/sources_test.cpp.
#include "sources/module_header.h"

namespace tintline {

std::array<std::string, 3> Modulkopf(std::string_view moduleName) {
  const std::string rule = "'-------" + std::string(moduleName.size(), '-');
  return {rule, "' Modul:" + std::string(moduleName), rule};
}

}  // namespace tintline
