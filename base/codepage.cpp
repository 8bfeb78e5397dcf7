// The conversions that are the same on every platform. See codepage.h.
// Tested by tests/unit/base/codepage_test.cpp.
#include "base/codepage.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace tintline {
namespace {

constexpr char32_t kReplacement = 0xFFFD, kNoCharacter = 0xFFFFFFFF;

bool isSurrogate(char32_t unit, char32_t first) { return unit >= first && unit < first + 0x400; }

char32_t joinSurrogates(char32_t high, char32_t low) {
  return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

void appendWide(std::wstring& text, char32_t character) {
  if (sizeof(wchar_t) == 2 && character > 0xFFFF) {
    text += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xDC00 + ((character - 0x10000) & 0x3FF));
  } else {
    text += static_cast<wchar_t>(character);
  }
}

void appendUtf8(std::string& text, char32_t character) {
  const auto put = [&text](char32_t unit) { text += static_cast<char>(unit); };
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 | (character >> 6));
  } else if (character < 0x10000) {
    put(0xE0 | (character >> 12));
    put(0x80 | ((character >> 6) & 0x3F));
  } else {
    put(0xF0 | (character >> 18));
    put(0x80 | ((character >> 12) & 0x3F));
    put(0x80 | ((character >> 6) & 0x3F));
  }
  put(0x80 | (character & 0x3F));
}

// Takes one character off the front of `text`; U+FFFD for a byte that starts
// no well-formed sequence.
char32_t takeUtf8(std::string_view& text) {
  const auto byteAt = [&text](std::size_t i) {
    return static_cast<char32_t>(static_cast<unsigned char>(text[i]));
  };
  const char32_t lead = byteAt(0);
  const std::size_t length = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  char32_t character = length == 1 ? lead : lead & (0x7FU >> length);
  bool wellFormed = length > 0 && length <= text.size();
  for (std::size_t i = 1; wellFormed && i < length; ++i) {
    wellFormed = (byteAt(i) & 0xC0) == 0x80;
    character = (character << 6) | (byteAt(i) & 0x3F);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  wellFormed = wellFormed && character >= kSmallest[length] && character <= 0x10FFFF &&
               !(character >= 0xD800 && character < 0xE000);
  text.remove_prefix(wellFormed ? length : 1);
  return wellFormed ? character : kReplacement;
}

// Collects characters for the system's code page, which is asked once, and counts those that it
// lacks. (None holds a character that needs two units of UTF-16.)
class AnsiWriter {
 public:
  void put(char32_t character) {
    appendWide(run_, character <= 0xFFFF ? character : U'?');
    questionMarks_ += character == U'?';
  }

  std::string text(std::size_t* replaced) const {
    std::string result = toAnsi(run_);
    if (replaced != nullptr)
      *replaced = static_cast<std::size_t>(std::ranges::count(result, '?') - questionMarks_);
    return result;
  }

 private:
  std::wstring run_;
  std::ptrdiff_t questionMarks_ = 0;  // of the text itself
};

}  // namespace

std::string toUtf8(std::wstring_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    auto character = static_cast<char32_t>(text[i]);
    if (isSurrogate(character, 0xD800) && i + 1 < text.size() &&
        isSurrogate(static_cast<char32_t>(text[i + 1]), 0xDC00))
      character = joinSurrogates(character, static_cast<char32_t>(text[++i]));
    const bool valid = character <= 0x10FFFF && !(character >= 0xD800 && character < 0xE000);
    appendUtf8(result, valid ? character : kReplacement);
  }
  return result;
}

std::wstring fromUtf8(std::string_view text) {
  std::wstring result;
  result.reserve(text.size());
  while (!text.empty()) appendWide(result, takeUtf8(text));
  return result;
}

std::string utf16ToAnsi(std::string_view bytes, ByteOrder order, std::size_t* replaced) {
  const auto unitAt = [&](std::size_t i) {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<char32_t>(order == ByteOrder::LittleEndian ? first | second << 8
                                                                  : first << 8 | second);
  };
  AnsiWriter writer;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const char32_t unit = unitAt(i);
    const bool pair =
        isSurrogate(unit, 0xD800) && i + 3 < bytes.size() && isSurrogate(unitAt(i + 2), 0xDC00);
    if (pair) i += 2;
    const bool single = !(unit >= 0xD800 && unit < 0xE000);
    writer.put(single ? unit : kNoCharacter);
  }
  if (bytes.size() % 2 == 1) writer.put(kNoCharacter);
  return writer.text(replaced);
}

std::string utf8ToAnsi(std::string_view text, std::size_t* replaced) {
  AnsiWriter writer;
  while (!text.empty()) writer.put(takeUtf8(text));
  return writer.text(replaced);
}

}  // namespace tintline
