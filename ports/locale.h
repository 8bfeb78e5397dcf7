// What the user's language settings decide.
#pragma once

namespace tintline {

class Locale {
 public:
  virtual ~Locale() = default;

  // The sign between the whole and the fraction of a decimal number.
  virtual wchar_t decimalSeparator() = 0;
};

}  // namespace tintline
