// The system's clipboard.
#pragma once

#include <string>
#include <string_view>

namespace tintline {

class Clipboard {
 public:
  virtual ~Clipboard() = default;

  // A content in several formats, of which the receiver takes the one that it knows best.
  struct Formats {
    std::string html;  // "HTML Format"
    std::string rtf;
    std::wstring text;
  };

  // Clears the clipboard and puts the text, or the formats in this order, on it. Throws
  // std::runtime_error when the clipboard cannot be used.
  virtual void setText(std::wstring_view text) = 0;
  virtual void setFormats(const Formats& formats) = 0;

  // The text on the clipboard, "" when there is none. Throws as above.
  virtual std::wstring text() = 0;
};

}  // namespace tintline
