// See text.h. Tested by tests/unit/vb/text_test.cpp.
#include "vb/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "base/block.h"
#include "base/resources.h"

namespace tintline::vb {
namespace {

constexpr CodePage kUtf16LittleEndian = 1200, kUtf16BigEndian = 1201, kAscii = 20127;
constexpr char32_t kReplacement = 0xFFFD;

// How many bytes are not ASCII.
std::size_t countHighBytes(std::string_view bytes) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;  // times them: all bytes added in the highest
  std::size_t count = 0, i = 0;
  while (bytes.size() - i >= sizeof(Block)) {
    Block counts{};  // one in each byte, for as many rounds as the sum of eight fits into a byte
    const std::size_t rounds = std::min<std::size_t>((bytes.size() - i) / sizeof(Block), 31);
    for (std::size_t round = 0; round < rounds; ++round, i += sizeof(Block))
      counts += loadBlock(bytes.data() + i) >> 7;
    for (const std::uint64_t half : std::bit_cast<std::array<std::uint64_t, 2>>(counts))
      count += half * kOnes >> 56;
  }
  for (; i < bytes.size(); ++i) count += (bytes[i] & 0x80) != 0;
  return count;
}

// The first byte from `p` on that is not ASCII.
const char* skipAscii(const char* p, const char* end) {
  for (; end - p >= static_cast<std::ptrdiff_t>(sizeof(Block)); p += sizeof(Block))
    if (const std::size_t ascii = firstMarked(loadBlock(p) >= 0x80); ascii < sizeof(Block))
      return p + ascii;
  while (p < end && (*p & 0x80) == 0) ++p;
  return p;
}

// Writes a text from its beginning into `room` bytes, which it may not need.
class Writer {
 public:
  Writer(Decoded& decoded, std::size_t room) : decoded_(decoded) {
    decoded.text.resize(room);
    next_ = decoded.text.data();
  }
  ~Writer() { decoded_.text.resize(static_cast<std::size_t>(next_ - decoded_.text.data())); }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  void bytes(const char* p, const char* end) {
    std::memcpy(next_, p, static_cast<std::size_t>(end - p));
    next_ += end - p;
  }
  // Gives the first byte that is not ASCII.
  const char* ascii(const char* p, const char* end) {
    for (; end - p >= static_cast<std::ptrdiff_t>(sizeof(Block)); p += sizeof(Block)) {
      const Block block = loadBlock(p);
      std::memcpy(next_, &block, sizeof block);  // what is too much is written anew
      if (const std::size_t copied = firstMarked(block >= 0x80); copied < sizeof(Block)) {
        next_ += copied;
        return p + copied;
      }
      next_ += sizeof(Block);
    }
    while (p < end && (*p & 0x80) == 0) *next_++ = static_cast<char8_t>(*p++);
    return p;
  }
  void character(char32_t c) {
    const auto trail = [c](unsigned shift) {
      return static_cast<char8_t>(0x80 | (c >> shift & 0x3F));
    };
    if (c < 0x80) {
      *next_++ = static_cast<char8_t>(c);
    } else if (c < 0x800) {
      *next_++ = static_cast<char8_t>(0xC0 | c >> 6);
      *next_++ = trail(0);
    } else if (c < 0x10000) {
      *next_++ = static_cast<char8_t>(0xE0 | c >> 12);
      *next_++ = trail(6);
      *next_++ = trail(0);
    } else {
      *next_++ = static_cast<char8_t>(0xF0 | c >> 18);
      *next_++ = trail(12);
      *next_++ = trail(6);
      *next_++ = trail(0);
    }
  }
  void replacement(std::size_t count) {
    decoded_.replaced += count;
    for (; count > 0; --count) character(kReplacement);
  }

 private:
  Decoded& decoded_;
  char8_t* next_;
};

// The bytes of the UTF-8 sequence at `p`, which is not ASCII; 0 when it is none.
std::size_t sequenceLength(const char* p, const char* end) {
  const auto at = [p](int i) { return static_cast<unsigned char>(p[i]); };
  const unsigned lead = at(0);
  const std::size_t length = lead < 0xC2   ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
  if (length == 0 || static_cast<std::size_t>(end - p) < length) return 0;
  const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;  // no shorter form
  const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;   // no surrogate
  if (at(1) < least || at(1) > most) return 0;
  for (std::size_t i = 2; i < length; ++i)
    if ((at(static_cast<int>(i)) & 0xC0U) != 0x80) return 0;
  return length;
}

// The end of the valid UTF-8 at `p`.
const char* skipUtf8(const char* p, const char* end) {
  for (std::size_t length; (p = skipAscii(p, end)) < end; p += length)
    if ((length = sequenceLength(p, end)) == 0) break;
  return p;
}

void decodeUtf8(std::string_view bytes, std::size_t highBytes, Decoded& decoded) {
  const char *p = bytes.data(), *const end = p + bytes.size();
  const bool valid = skipUtf8(p, end) == end;
  Writer writer(decoded, bytes.size() + (valid ? 0 : 2 * highBytes));
  while (p < end) {
    const char* const behind = skipUtf8(p, end);
    writer.bytes(p, behind);
    p = behind;
    if (p < end) {
      writer.replacement(1);
      ++p;
    }
  }
}

void decodeUtf16(std::string_view bytes, bool bigEndian, Decoded& decoded) {
  const std::size_t units = bytes.size() / 2;
  const auto unit = [&](std::size_t i) -> char32_t {
    const auto first = static_cast<unsigned char>(bytes[2 * i]);
    const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
    return bigEndian ? first << 8 | second : second << 8 | first;
  };
  std::size_t room = 3;
  for (std::size_t i = 0; i < units; ++i) room += unit(i) < 0x80 ? 1 : unit(i) < 0x800 ? 2 : 3;
  Writer writer(decoded, room);
  for (std::size_t i = 0; i < units; ++i) {
    const char32_t c = unit(i);
    const char32_t next = c >= 0xD800 && c < 0xDC00 && i + 1 < units ? unit(i + 1) : 0;
    if (next >= 0xDC00 && next < 0xE000) {
      writer.character(0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00));
      ++i;
    } else if (c >= 0xD800 && c < 0xE000) {
      writer.replacement(1);
    } else {
      writer.character(c);
    }
  }
  if (bytes.size() % 2 != 0) writer.replacement(1);
}

// A page of data/codepages.bin; data/make_codepages.py says what stands there.
class Table {
 public:
  static std::optional<Table> ofPage(CodePage page) {
    const std::string_view file = programResource(103);
    for (std::size_t i = 0, pages = number<std::uint32_t>(file, 0); i < pages; ++i)
      if (number<std::uint32_t>(file, 4 + 8 * i) == page)
        return Table(file, number<std::uint32_t>(file, 8 + 8 * i));
    return std::nullopt;
  }

  // The character of a byte from 0x80 on, 0 for the first byte of two.
  char32_t single(unsigned char byte) const {
    return number<std::uint16_t>(file_, begin_ + std::size_t{2} * (byte - 0x80U));
  }
  char32_t pair(unsigned char lead, unsigned char trail) const {
    const std::size_t row = begin_ + std::size_t{2} * 0x80 + std::size_t{8} * (lead - 0x80U);
    const unsigned column = trail - unsigned{number<std::uint16_t>(file_, row)};
    if (column >= number<std::uint16_t>(file_, row + 2)) return kReplacement;  // (or before it)
    return number<std::uint16_t>(file_,
                                 number<std::uint32_t>(file_, row + 4) + std::size_t{2} * column);
  }

 private:
  Table(std::string_view file, std::size_t begin) : file_(file), begin_(begin) {}

  template <typename Number>
  static Number number(std::string_view file, std::size_t at) {
    Number value;
    std::memcpy(&value, file.data() + at, sizeof value);
    return value;
  }

  std::string_view file_;
  std::size_t begin_;
};

void decodeByTable(std::string_view bytes, std::size_t highBytes, const Table& table,
                   Decoded& decoded) {
  Writer writer(decoded, bytes.size() + 2 * highBytes);
  const char *p = bytes.data(), *const end = p + bytes.size();
  while (p < end) {
    if ((p = writer.ascii(p, end)) == end) return;
    const auto byte = static_cast<unsigned char>(*p++);
    char32_t c = table.single(byte);
    if (c == 0) {
      const auto trail = static_cast<unsigned char>(p < end ? *p : '\0');
      c = table.pair(byte, trail);
      if (c != kReplacement || trail >= 0x80) ++p;  // an ASCII byte stands for itself
      if (c == kReplacement && trail >= 0x80) writer.replacement(1);
    }
    c == kReplacement ? writer.replacement(1) : writer.character(c);
  }
}

void decodeAscii(std::string_view bytes, std::size_t highBytes, Decoded& decoded) {
  Writer writer(decoded, bytes.size() + 2 * highBytes);
  const char *p = bytes.data(), *const end = p + bytes.size();
  for (; p < end; ++p) {
    if ((p = writer.ascii(p, end)) == end) return;
    writer.replacement(1);
  }
}

struct Mark {
  CodePage page;
  std::string_view bytes;
};
constexpr Mark kMarks[] = {
    {kUtf8, "\xEF\xBB\xBF"}, {kUtf16LittleEndian, "\xFF\xFE"}, {kUtf16BigEndian, "\xFE\xFF"}};

// The page of texts that say it themselves.
std::optional<CodePage> ownPage(std::string_view bytes, std::size_t highBytes) {
  for (const Mark& mark : kMarks)
    if (bytes.starts_with(mark.bytes)) return mark.page;
  const char* const end = bytes.data() + bytes.size();
  if (highBytes > 0 && skipUtf8(bytes.data(), end) == end) return kUtf8;
  return std::nullopt;
}

struct PageName {
  std::string_view name;  // only its small letters and digits
  CodePage page;
};
constexpr PageName kNames[] = {
    {"utf8", kUtf8},
    {"utf16", kUtf16LittleEndian},
    {"utf16le", kUtf16LittleEndian},
    {"unicode", kUtf16LittleEndian},
    {"utf16be", kUtf16BigEndian},
    {"ascii", kAscii},
    {"usascii", kAscii},
    {"ansi", 1252},
    {"latin1", 28591},
    {"latin2", 28592},
    {"latin9", 28605},
    {"tis620", 874},
    {"shiftjis", 932},
    {"sjis", 932},
    {"mskanji", 932},
    {"gb2312", 936},
    {"gbk", 936},
    {"euckr", 949},
    {"ksc5601", 949},
    {"uhc", 949},
    {"big5", 950},
    {"koi8r", 20866},
    {"koi8u", 21866},
    {"mac", 10000},
    {"macintosh", 10000},
    {"macroman", 10000},
    {"macgreek", 10006},
    {"maccyrillic", 10007},
    {"macromanian", 10010},
    {"maccentraleurope", 10029},
    {"macce", 10029},
    {"maclatin2", 10029},
    {"maciceland", 10079},
    {"macturkish", 10081},
    {"maccroatian", 10082},
};

// The small letters and digits of a page's name; nothing when it holds other characters.
std::optional<std::string> plainPageName(std::string_view name) {
  if (name.starts_with("x-")) name.remove_prefix(2);
  std::string plain;
  for (const char c : name) {
    if (c >= 'A' && c <= 'Z')
      plain += static_cast<char>(c + 0x20);
    else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))
      plain += c;
    else if (c != '-' && c != '_' && c != ' ')
      return std::nullopt;
  }
  return plain;
}

// The number that a text of digits is, 0 when it is none.
CodePage pageNumber(std::string_view digits) {
  unsigned number = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9' || number > 6553) return 0;
    number = number * 10 + static_cast<unsigned>(c - '0');
  }
  return number <= 0xFFFF ? static_cast<CodePage>(number) : CodePage{0};
}

}  // namespace

bool isKnown(CodePage page) {
  return page == kUtf8 || page == kUtf16LittleEndian || page == kUtf16BigEndian || page == kAscii ||
         Table::ofPage(page).has_value();
}

std::optional<CodePage> codePageNamed(std::string_view name) {
  const std::optional<std::string> plain = plainPageName(name);
  if (!plain) return std::nullopt;
  std::string_view rest = *plain;
  for (const PageName& known : kNames)
    if (rest == known.name) return known.page;
  CodePage page = 0;
  if (rest.starts_with("iso8859")) {
    const CodePage part = pageNumber(rest.substr(7));
    page = part > 0 && part < 16 ? static_cast<CodePage>(28590 + part) : CodePage{0};
  } else {
    for (const std::string_view prefix : {"windows", "cp", "ibm", "dos", "ms"})
      if (rest.starts_with(prefix)) {
        rest.remove_prefix(prefix.size());
        break;
      }
    page = pageNumber(rest);
  }
  return page != 0 && isKnown(page) ? std::optional(page) : std::nullopt;
}

bool hasMark(std::string_view bytes) {
  return std::ranges::any_of(kMarks,
                             [=](const Mark& mark) { return bytes.starts_with(mark.bytes); });
}

Decoded decode(std::string_view bytes, std::optional<CodePage> page, CodePage fallback) {
  Decoded decoded;
  const std::size_t highBytes = countHighBytes(bytes);
  decoded.codePage = page ? *page : ownPage(bytes, highBytes).value_or(fallback);
  for (const Mark& mark : kMarks)
    if (mark.page == decoded.codePage && bytes.starts_with(mark.bytes))
      bytes.remove_prefix(mark.bytes.size());
  if (decoded.codePage == kUtf16LittleEndian || decoded.codePage == kUtf16BigEndian)
    decodeUtf16(bytes, decoded.codePage == kUtf16BigEndian, decoded);
  else if (highBytes == 0 || decoded.codePage == kUtf8)
    decodeUtf8(bytes, highBytes, decoded);
  else if (const std::optional<Table> table = Table::ofPage(decoded.codePage))
    decodeByTable(bytes, highBytes, *table, decoded);
  else
    decodeAscii(bytes, highBytes, decoded);
  return decoded;
}

}  // namespace tintline::vb
