// See page_markup.h. Tested by tests/unit/output/rendered_page_test.cpp.
#include "output/page_markup.h"

#include <algorithm>
#include <charconv>

#include "base/codepage.h"
#include "base/text.h"

namespace tintline {
namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::string_view kSpace = " \t\r\n\f";

bool isSpace(char c) { return kSpace.find(c) != npos; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

std::string_view trimSpace(std::string_view text) {
  const std::size_t from = text.find_first_not_of(kSpace);
  if (from == npos) return {};
  return text.substr(from, text.find_last_not_of(kSpace) + 1 - from);
}

// The number that the whole text is.
std::optional<std::uint32_t> number(std::string_view text, int base) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return {};
  return value;
}

std::optional<Color> readColor(std::string_view value) {
  if (value.size() != 7 || value[0] != '#') return {};
  return number(value.substr(1), 16);
}

void readDeclaration(std::string_view property, std::string_view value, Looks& looks) {
  if (equalsIgnoreCase(property, "color")) {
    looks.color = readColor(value);
  } else if (equalsIgnoreCase(property, "background") ||
             equalsIgnoreCase(property, "background-color")) {
    looks.background = readColor(value);
  } else if (equalsIgnoreCase(property, "border")) {
    looks.border = readColor(value.substr(value.rfind(' ') + 1));
  } else if (equalsIgnoreCase(property, "border-color")) {
    looks.border = readColor(value);
  } else if (equalsIgnoreCase(property, "font-weight")) {
    looks.bold = equalsIgnoreCase(value, "bold") || value == "600" || value == "700";
  } else if (equalsIgnoreCase(property, "font-style")) {
    looks.italic = equalsIgnoreCase(value, "italic");
  }
}

void setAttribute(Tag& tag, std::string_view name, std::string_view value) {
  const auto set = [&](std::string_view known, std::optional<std::string_view>& attribute) {
    if (!attribute && equalsIgnoreCase(name, known)) attribute = value;
  };
  set("class", tag.className);
  set("style", tag.style);
  set("id", tag.id);
  set("name", tag.anchor);
  set("href", tag.target);
}

}  // namespace

Looks readDeclarations(std::string_view declarations) {
  Looks looks;
  while (!declarations.empty()) {
    const std::string_view one = declarations.substr(0, declarations.find(';'));
    declarations.remove_prefix(std::min(declarations.size(), one.size() + 1));
    const std::size_t colon = one.find(':');
    if (colon == npos) continue;
    readDeclaration(trimSpace(one.substr(0, colon)), trimSpace(one.substr(colon + 1)), looks);
  }
  return looks;
}

TagReader::TagReader(std::string_view text)
    : text_(text), lastBracket_(text.rfind('>') == npos ? 0 : text.rfind('>')) {}

TagReader::Result TagReader::read(std::size_t at) {
  const std::string_view rest = text_.substr(at);
  const bool ends = at < lastBracket_;
  if (ends && rest.starts_with("<!--")) return readComment(at);
  if (ends && (rest.starts_with("<!") || rest.starts_with("<?")))
    return {.end = text_.find('>', at) + 1, .isText = false, .tag = {}};
  const std::size_t name = rest.starts_with("</") ? 2 : 1;
  if (ends && name < rest.size() && isLetter(rest[name])) return readTag(at);
  return {.end = at + 1, .isText = true, .tag = {}};
}

TagReader::Result TagReader::readComment(std::size_t at) {
  constexpr std::string_view kBegin = "<!--", kEnd = "-->";
  const std::size_t end = commentsEnd_ ? text_.find(kEnd, at + kBegin.size()) : npos;
  commentsEnd_ = end != npos;
  if (!commentsEnd_) return {.end = at + kBegin.size(), .isText = true, .tag = {}};
  return {.end = end + kEnd.size(), .isText = false, .tag = {}};
}

TagReader::Result TagReader::readTag(std::size_t at) {
  Tag tag;
  tag.closing = text_[at + 1] == '/';
  const std::size_t name = at + (tag.closing ? 2 : 1);
  std::size_t i = std::min(text_.find_first_of(" \t\r\n\f/>", name), text_.size());
  tag.name = text_.substr(name, i - name);
  while (true) {
    while (i < text_.size() && (isSpace(text_[i]) || text_[i] == '/')) ++i;
    if (i == text_.size()) return {.end = i, .isText = true, .tag = {}};
    if (text_[i] == '>') return {.end = i + 1, .isText = false, .tag = tag};
    // A "=" at the front belongs to the name, so every round takes a character.
    const std::size_t nameEnd = std::min(text_.find_first_of(" \t\r\n\f/>=", i + 1), text_.size());
    const std::string_view attribute = text_.substr(i, nameEnd - i);
    i = skipSpace(nameEnd);
    if (i == text_.size() || text_[i] != '=') continue;
    i = skipSpace(i + 1);
    if (i < text_.size() && (text_[i] == '\'' || text_[i] == '"')) {
      const auto value = readQuoted(i);
      if (!value) return {.end = i + 1, .isText = true, .tag = {}};
      setAttribute(tag, attribute, *value);
      i += value->size() + 2;
    } else {
      const std::size_t end = std::min(text_.find_first_of(" \t\r\n\f>", i), text_.size());
      setAttribute(tag, attribute, text_.substr(i, end - i));
      i = end;
    }
  }
}

std::size_t TagReader::skipSpace(std::size_t at) const {
  return std::min(text_.find_first_not_of(kSpace, at), text_.size());
}

std::optional<std::string_view> TagReader::readQuoted(std::size_t quoteAt) {
  bool& ends = quotesEnd_[text_[quoteAt] == '"' ? 1 : 0];
  const std::size_t end = ends ? text_.find(text_[quoteAt], quoteAt + 1) : npos;
  ends = end != npos;
  if (!ends) return {};
  return text_.substr(quoteAt + 1, end - quoteAt - 1);
}

std::optional<Reference> readReference(std::string_view text) {
  constexpr std::size_t kLongestReference = 8;  // "&#x20AC;"
  struct Named {
    std::string_view name;
    wchar_t character;
  };
  static constexpr Named kNamed[] = {{"lt", L'<'},         {"gt", L'>'},        {"amp", L'&'},
                                     {"quot", L'"'},       {"apos", L'\''},     {"nbsp", L'\u00A0'},
                                     {"auml", L'\u00E4'},  {"ouml", L'\u00F6'}, {"uuml", L'\u00FC'},
                                     {"Auml", L'\u00C4'},  {"Ouml", L'\u00D6'}, {"Uuml", L'\u00DC'},
                                     {"szlig", L'\u00DF'}, {"euro", L'\u20AC'}};
  const std::size_t end = text.substr(0, kLongestReference).find(';');
  if (end == npos || end < 3) return {};
  const std::string_view name = text.substr(1, end - 1);
  if (name[0] == '#') {
    const bool hex = name[1] == 'x' || name[1] == 'X';
    const auto code = number(name.substr(hex ? 2 : 1), hex ? 16 : 10);
    // Line separators and what lies beyond the letters have a meaning of their own for some
    // controls: they stay as they are written.
    if (!code || *code >= 0xD800 || *code == 0x2028 || *code == 0x2029) return {};
    return Reference{static_cast<wchar_t>(*code), end + 1};
  }
  for (const Named& known : kNamed)
    if (known.name == name) return Reference{known.character, end + 1};
  return {};
}

std::wstring attributeText(std::string_view value, TextEncoding encoding) {
  std::wstring result;
  for (std::size_t i = 0; i < value.size();) {
    if (const auto reference = value[i] == '&' ? readReference(value.substr(i)) : std::nullopt) {
      result += reference->character;
      i += reference->length;
      continue;
    }
    const std::size_t end = std::min(value.find('&', i + 1), value.size());
    result += toWide(value.substr(i, end - i), encoding);
    i = end;
  }
  return result;
}

}  // namespace tintline
