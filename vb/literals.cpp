// See literals.h. Tested by the cases in tests/golden/language.
#include "vb/literals.h"

#include <string_view>

#include "vb/scan.h"

namespace tintline::vb {
namespace {

bool isWordAt(const char8_t* p, const char8_t* end) {
  return p < end && (isWordByte(*p) || *p >= 0x80);
}

// The end of the digits at `p` when there are 1 to `most` of them, else null.
const char8_t* fewDigits(const char8_t* p, const char8_t* end, std::ptrdiff_t most) {
  const char8_t* const behind = skipDigits(p, end);
  return behind > p && behind - p <= most ? behind : nullptr;
}

char8_t lower(char8_t c) { return classOf(c) == ByteClass::Letter ? c | 0x20U : c; }

// The end of an English month's name at `p`, whole or its first three letters, or null.
const char8_t* monthEnd(const char8_t* p, const char8_t* end) {
  static constexpr std::u8string_view kMonths[] = {
      u8"january", u8"february", u8"march",     u8"april",   u8"may",      u8"june",
      u8"july",    u8"august",   u8"september", u8"october", u8"november", u8"december"};
  constexpr std::ptrdiff_t kLongest = 9;
  char8_t name[kLongest];
  const char8_t* behind = p;
  for (; isWordAt(behind, end); ++behind) {
    if (behind - p == kLongest || classOf(*behind) != ByteClass::Letter) return nullptr;
    name[behind - p] = lower(*behind);
  }
  const std::u8string_view word(name, static_cast<std::size_t>(behind - p));
  for (const std::u8string_view month : kMonths)
    if (word == month || word == month.substr(0, 3)) return behind;
  return nullptr;
}

// The end of AM, PM, A or P at `p`, or null.
const char8_t* halfDayEnd(const char8_t* p, const char8_t* end) {
  if (p == end || (lower(*p) != u8'a' && lower(*p) != u8'p')) return nullptr;
  ++p;
  if (p < end && lower(*p) == u8'm') ++p;
  return isWordAt(p, end) ? nullptr : p;
}

// The end of the time of day at `p`, or null: at least a separator or half of the day.
const char8_t* timeEnd(const char8_t* p, const char8_t* end) {
  p = fewDigits(p, end, 2);
  int numbers = 1;
  for (; p != nullptr && numbers < 3; ++numbers) {
    const char8_t* const separator = skipBlanks(p, end);
    if (separator == end || (*separator != u8':' && *separator != u8'.')) break;
    p = fewDigits(skipBlanks(separator + 1, end), end, 2);
  }
  if (p == nullptr) return nullptr;
  if (const char8_t* const halfDay = halfDayEnd(skipBlanks(p, end), end)) return halfDay;
  return numbers > 1 ? p : nullptr;
}

// The end of the days, months and years at `p`, or null: two or three parts.
const char8_t* dayEnd(const char8_t* p, const char8_t* end) {
  bool named = false;
  for (int parts = 1;; ++parts) {
    const char8_t* part = fewDigits(p, end, 4);
    if (part == nullptr && !named) {
      part = monthEnd(p, end);
      named = true;
    }
    if (part == nullptr || parts == 3) return part;
    p = skipBlanks(part, end);
    const bool separated = p < end && (*p == u8'/' || *p == u8'-' || *p == u8',');
    const char8_t* const next = separated ? skipBlanks(p + 1, end) : p;
    if (parts == 2 && !separated && (next == part || timeEnd(next, end) != nullptr)) return part;
    if (next == part || next == end || *next == u8'#')
      return parts == 2 && !separated ? part : nullptr;
    p = next;
  }
}

}  // namespace

std::size_t suffixAt(const char8_t* p, const char8_t* end, bool hash) {
  const char8_t next = end - p > 1 ? p[1] : u8'\n';
  const bool wordFollows = isWordByte(next) || next >= 0x80;
  switch (*p) {
    case u8'%':
    case u8'@':
    case u8'$':
      return 1;
    case u8'#':
      return hash ? 1 : 0;
    case u8'!':
      return (wordFollows && !isDigit(next)) || next == u8'[' ? 0 : 1;
    case u8'&':
      return wordFollows || next == u8'"' ? 0 : 1;
    case u8'^':
      return next == u8')' || next == u8',' || isLineEnd(next) ? 1 : 0;
    default:
      return 0;
  }
}

const char8_t* decimalEnd(const char8_t* p, const char8_t* end) {
  p = skipDigits(p, end);
  if (p < end && *p == u8'.') p = skipDigits(p + 1, end);
  if (p < end && (lower(*p) == u8'e' || lower(*p) == u8'd')) {
    const char8_t* exponent = p + 1;
    if (exponent < end && (*exponent == u8'+' || *exponent == u8'-')) ++exponent;
    const char8_t* const behind = skipDigits(exponent, end);
    if (behind > exponent) p = behind;
  }
  if (p < end && *p == u8'$') return p;  // numbers have no text suffix
  return p + suffixLength(p, end, true);
}

const char8_t* radixEnd(const char8_t* p, const char8_t* end) {
  const char8_t* digits = p + 1;
  if (digits == end) return nullptr;
  const char8_t radix = lower(*digits);
  if (radix == u8'h' || radix == u8'o') ++digits;
  const char8_t* q = digits;
  const auto isRadixDigit = [radix](char8_t c) {
    return (c >= u8'0' && c <= u8'7') ||
           (radix == u8'h' && (isDigit(c) || (lower(c) >= u8'a' && lower(c) <= u8'f')));
  };
  while (q < end && isRadixDigit(*q)) ++q;
  if (q == digits || isWordAt(q, end)) return nullptr;
  if (q < end && (*q == u8'%' || *q == u8'&' || *q == u8'^')) q += suffixLength(q, end, false);
  return q;
}

const char8_t* dateEnd(const char8_t* p, const char8_t* end) {
  const char8_t* const first = skipBlanks(p + 1, end);
  if (first == end || !isWordByte(*first)) return nullptr;
  const char8_t* q = dayEnd(first, end);
  if (q != nullptr) {
    const char8_t* const time = timeEnd(skipBlanks(q, end), end);
    if (time != nullptr) q = time;
  } else {
    q = timeEnd(first, end);
  }
  if (q == nullptr) return nullptr;
  q = skipBlanks(q, end);
  return q < end && *q == u8'#' ? q + 1 : nullptr;
}

}  // namespace tintline::vb
