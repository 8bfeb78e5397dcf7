// See locale.h.
#include "win32/system/locale.h"

#include <windows.h>

namespace tintline {

wchar_t SystemLocale::decimalSeparator() {
  wchar_t text[4]{};  // three characters at most
  const int length = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, text, 4);
  return length > 1 ? text[0] : L',';
}

}  // namespace tintline
