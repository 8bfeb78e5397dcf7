// See project_stream.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/project_stream.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "sources/office_file/ascii.h"
#include "sources/office_file/byte_source.h"
#include "sources/office_file/compound_file.h"
#include "vb/fold.h"

namespace tintline::office_file {
namespace {

std::string_view takeProperty(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

std::string_view unquoted(std::string_view value) {
  if (value.starts_with('"')) value.remove_prefix(1);
  if (value.ends_with('"')) value.remove_suffix(1);
  return value;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = lowerAscii(c);
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// The four bytes that a value hides. It is obscured, not encrypted: [MS-OVBA] 2.4.3.3.
std::optional<std::uint32_t> hiddenNumber(std::string_view hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 2 <= hex.size(); i += 2) {
    const int high = hexDigit(hex[i]), low = hexDigit(hex[i + 1]);
    if (high < 0 || low < 0) return {};
    bytes += static_cast<char>(high << 4 | low);
  }
  if (bytes.size() < 3) return {};
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned seed = byte(0);
  unsigned plainBefore = seed ^ byte(2);  // the project's key
  unsigned encryptedBefore = byte(2), encryptedTwoBefore = byte(1);
  std::string plain;
  for (std::size_t i = 3; i < bytes.size(); ++i) {
    plainBefore = (byte(i) ^ (encryptedTwoBefore + plainBefore)) & 0xFF;
    encryptedTwoBefore = std::exchange(encryptedBefore, byte(i));
    plain += static_cast<char>(plainBefore);
  }
  const std::size_t ignored = (seed & 6) / 2, length = 4;
  if (plain.size() < ignored + length + 4 || u32(plain, ignored) != 4) return {};
  return u32(plain, ignored + length);
}

// Any of the three who can protect a project did. What cannot be read was made by tools that want
// to lock it even more.
bool isLocked(std::string_view protection) { return hiddenNumber(protection).value_or(1) != 0; }

std::optional<vb::ModuleKind> kindOf(std::string_view key) {
  using enum vb::ModuleKind;
  static constexpr std::pair<std::string_view, vb::ModuleKind> kKinds[] = {
      {"module", Standard}, {"class", Class}, {"document", Document}, {"baseclass", Form}};
  for (const auto& [known, kind] : kKinds)
    if (equalsAscii(key, known)) return kind;
  return {};
}

}  // namespace

TrueNames readTrueNames(std::string_view stream) {
  TrueNames names;
  while (!stream.empty() && stream.front() != '\0') {
    const std::size_t end = stream.find('\0');
    if (end == stream.npos) break;
    const std::string name(stream.substr(0, end));
    stream.remove_prefix(end + 1);
    std::u16string unicode;
    while (stream.size() >= 2 && u16(stream, 0) != 0) {
      unicode += static_cast<char16_t>(u16(stream, 0));
      stream.remove_prefix(2);
    }
    stream.remove_prefix(std::min<std::size_t>(stream.size(), 2));
    names.emplace(name, nameText(unicode));
  }
  return names;
}

ProjectProperties readProperties(std::string_view stream, vb::CodePage page,
                                 const TrueNames& trueNames) {
  ProjectProperties properties;
  while (!stream.empty() && !stream.starts_with('[')) {  // sections for the editor follow
    const std::string_view line = takeProperty(stream);
    const std::size_t equals = std::min(line.find('='), line.size());
    const std::string_view key = line.substr(0, equals);
    const std::string_view value = unquoted(line.substr(std::min(equals + 1, line.size())));
    if (const auto kind = kindOf(key)) {
      const std::string_view name = value.substr(0, value.find('/'));
      const auto known = trueNames.find(name);
      properties.kinds.emplace(
          vb::folded(known != trueNames.end() ? known->second : vb::decode(name, page).text),
          *kind);
    } else if (equalsAscii(key, "name")) {
      properties.name = vb::decode(value, page).text;
    } else if (equalsAscii(key, "cmg")) {
      properties.locked = isLocked(value);
    }
  }
  return properties;
}

}  // namespace tintline::office_file
