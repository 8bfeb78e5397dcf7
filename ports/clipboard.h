// The system's clipboard, as plain text.
#pragma once

#include <string>
#include <string_view>

namespace tintline {

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  // Clears the clipboard and puts the text (ANSI code page) on it. Throws
  // std::runtime_error when the clipboard cannot be used.
  virtual void setText(std::string_view text) = 0;

  // The text on the clipboard in the ANSI code page, "" when there is none. Throws
  // as above.
  virtual std::string text() = 0;
};

}  // namespace tintline
