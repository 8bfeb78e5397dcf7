// See text_container.h. Tested by tests/unit/sources/office_file_test.cpp.
#include "sources/office_file/text_container.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "sources/office_file/ascii.h"
#include "sources/office_file/byte_source.h"
#include "sources/office_file/inflate.h"

namespace tintline::office_file {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";  // byte-order mark
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::int8_t kNone = -1, kBlank = -2;

constexpr std::array<std::int8_t, 256> kBase64Values = [] {
  std::array<std::int8_t, 256> values{};
  values.fill(kNone);
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (std::size_t i = 0; i < kDigits.size(); ++i)
    values[static_cast<unsigned char>(kDigits[i])] = static_cast<std::int8_t>(i);
  for (const char blank : kBlanks) values[static_cast<unsigned char>(blank)] = kBlank;
  return values;
}();

std::string_view withoutBlanks(std::string_view text) {
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  return text;
}

// The value of an attribute in a tag, whatever its prefix: name="/word/vbaProject.bin".
std::string_view attributeOf(std::string_view tag, std::string_view name) {
  for (std::size_t at = 0; (at = tag.find(name, at)) != tag.npos; at += name.size()) {
    const std::string_view rest = tag.substr(at + name.size());
    if (!rest.starts_with("=\"") || (at > 0 && tag[at - 1] != ':' && tag[at - 1] != ' ')) continue;
    return rest.substr(2, rest.find('"', 2) - 2);
  }
  return {};
}

bool isBinaryElement(std::string_view tag) {
  const std::string_view element = tag.substr(0, tag.find_first_of(" \t\r\n/"));
  const std::string_view local = element.substr(element.find(':') + 1);
  return local == "binaryData" || local == "binData";
}

// The line that begins at `at`, without its end.
std::string_view lineAt(std::string_view text, std::size_t at) {
  return text.substr(at, text.find_first_of("\r\n", at) - at);
}

}  // namespace

bool isXmlDocument(std::string_view beginning) {
  beginning = withoutBlanks(beginning);
  return beginning.starts_with('<') &&
         (beginning.find("schemas.microsoft.com/office/") != beginning.npos ||
          beginning.find("mso-application") != beginning.npos);
}

bool isWebArchive(std::string_view beginning) {
  constexpr std::string_view kHeader = "mime-version:";
  beginning = withoutBlanks(beginning);
  const std::string_view first = lineAt(beginning, 0);
  if (first.substr(0, first.find(':')).find_first_of(" \t'\"(") != first.npos) return false;
  const std::size_t at = findAscii(beginning, kHeader);
  return at == 0 || (at != beginning.npos && beginning[at - 1] == '\n');
}

void forEachXmlPart(std::string_view text, Budget& budget, const VisitPart& visit) {
  std::string_view part;  // the name in the last tag that has one
  for (std::size_t at = 0; (at = text.find('<', at)) != text.npos;) {
    const std::size_t end = text.find('>', ++at);
    if (end == text.npos) return;
    const std::string_view tag = text.substr(at, end - at);
    at = end + 1;
    if (const std::string_view name = attributeOf(tag, "name"); !name.empty()) part = name;
    if (!isBinaryElement(tag) || tag.ends_with('/')) continue;
    const std::string_view content = text.substr(at, text.find('<', at) - at);
    if (!budget.spend(content.size())) return;
    visit(part, fromBase64(content));
  }
}

void forEachArchivePart(std::string_view text, Budget& budget, const VisitPart& visit) {
  constexpr std::string_view kEncoding = "content-transfer-encoding:", kPlace = "content-location:";
  std::size_t before = 0;  // behind the part in front
  for (std::size_t at = 0; (at = findAscii(text, kEncoding, at)) != text.npos;) {
    const std::string_view encoding = lineAt(text, at + kEncoding.size());
    at += kEncoding.size();
    if (findAscii(encoding, "base64") == encoding.npos) continue;
    std::size_t body = std::min(text.find("\n\r\n", at), text.find("\n\n", at));
    if (body == text.npos) return;
    body += text[body + 1] == '\r' ? 3 : 2;
    const std::string_view head = text.substr(before, body - before);
    const std::size_t place = findAscii(head, kPlace);
    const std::string_view name = place == head.npos
                                      ? std::string_view()
                                      : withoutBlanks(lineAt(head, place + kPlace.size()));
    const std::string_view content = text.substr(body, text.find("\n--", body) - body);
    if (!budget.spend(content.size())) return;
    visit(name, fromBase64(content));
    before = at = body + content.size();
  }
}

std::string fromBase64(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 4 * 3);
  std::uint32_t bits = 0;
  int count = 0;
  for (const char c : text) {
    const std::int8_t value = kBase64Values[static_cast<unsigned char>(c)];
    if (value == kBlank) continue;
    if (value == kNone) break;
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    if ((count += 6) < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xFF);
  }
  return bytes;
}

bool isActiveMime(std::string_view part) { return part.starts_with("ActiveMime"); }

Bytes activeMimeContent(std::string_view part, Budget& budget) {
  constexpr std::size_t kUsual = 0x32, kOffsetAt = 0x1E, kBehindOffset = 46;
  MemorySource source(part);
  Bytes result;
  for (const std::size_t at : {kUsual, u16(part, kOffsetAt) + kBehindOffset}) {
    Bytes content = inflated(source, at, part.size(), Wrapping::Zlib, kMaxPart, budget);
    if (result.bytes.empty() || content.fault == Fault::None) result = std::move(content);
    if (result.fault == Fault::None) break;
  }
  return result;
}

}  // namespace tintline::office_file
