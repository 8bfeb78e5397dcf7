// See documentation.h. Tested by tests/unit/site/site_test.cpp.
#include "site/documentation.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "listing/utf8.h"
#include "vb/fold.h"
#include "vb/token_cursor.h"

namespace tintline::site {
namespace {

using vb::TokenKind;

// More than that is not a description; the code has it all.
constexpr std::size_t kMostBytes = 4000;

bool isBlank(char8_t c) { return c == u8' ' || c == u8'\t'; }
bool isFrame(char8_t c) { return isBlank(c) || c == u8'*' || c == u8'#' || c == u8'|'; }

template <class Test>
std::u8string_view trimmed(std::u8string_view text, Test test) {
  while (!text.empty() && test(text.front())) text.remove_prefix(1);
  while (!text.empty() && test(text.back())) text.remove_suffix(1);
  return text;
}

bool saysSomething(std::u8string_view line) {
  return std::ranges::any_of(line, [](char8_t c) {
    return c >= 0x80 || (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'z');
  });
}

// The word of `tag` ("@param") off the front of a line, without regard to case.
bool takeTag(std::u8string_view& line, std::u8string_view tag) {
  if (line.size() < tag.size() || !vb::equalFolded(line.substr(0, tag.size()), tag)) return false;
  const std::u8string_view rest = line.substr(tag.size());
  if (!rest.empty() && !isBlank(rest[0]) && rest[0] != u8'(' && rest[0] != u8':') return false;
  line = trimmed(rest, [](char8_t c) { return isBlank(c) || c == u8':'; });
  return true;
}

// What an annotation says: Description("text"), Description "text", Description text.
std::u8string_view annotated(std::u8string_view text) {
  if (text.starts_with(u8'(') && text.ends_with(u8')')) text = text.substr(1, text.size() - 2);
  text = trimmed(text, isBlank);
  if (text.size() >= 2 && text.front() == u8'"' && text.back() == u8'"')
    text = text.substr(1, text.size() - 2);
  return text;
}

void append(std::u8string& to, std::u8string_view text, char8_t between) {
  if (to.size() + text.size() > kMostBytes) return;
  if (!to.empty()) to += between;
  to += text;
}

// Takes comment lines, one after the other.
class Reader {
 public:
  explicit Reader(Documentation& documentation) : documentation_(documentation) {}

  void comment(std::u8string_view token) {
    if (token.starts_with(u8'\''))
      token.remove_prefix(1);
    else
      token.remove_prefix(std::min<std::size_t>(3, token.size()));  // Rem
    while (!token.empty()) {
      const std::size_t end = std::min(token.find_first_of(u8"\r\n"), token.size());
      line(token.substr(0, end));
      token.remove_prefix(std::min(token.size(), end + 1));
    }
  }

 private:
  void line(std::u8string_view text) {
    text = trimmed(text, [](char8_t c) { return isFrame(c) || c == u8'\''; });
    if (text.starts_with(u8'@')) return tag(text);
    if (!saysSomething(text)) {
      open_ = nullptr;
      return;
    }
    if (open_ != nullptr)
      append(*open_, text, u8' ');
    else
      append(documentation_.text, text, u8'\n');
  }

  void tag(std::u8string_view text) {
    open_ = nullptr;
    if (takeTag(text, u8"@description") || takeTag(text, u8"@moduledescription")) {
      documentation_.structured = true;
      append(documentation_.text, annotated(text), u8'\n');
    } else if (takeTag(text, u8"@param")) {
      const auto end = std::min(text.find_first_of(u8" \t:"), text.size());
      const auto behind = trimmed(text.substr(end),
                                  [](char8_t c) { return isBlank(c) || c == u8':' || c == u8'-'; });
      if (end == 0 || documentation_.parameters.size() == 255) return;  // as many as can be
      documentation_.structured = true;
      documentation_.parameters.emplace_back(text.substr(0, end), u8"");
      open_ = &documentation_.parameters.back().second;
      append(*open_, behind, u8' ');
    } else if (takeTag(text, u8"@return") || takeTag(text, u8"@returns")) {
      documentation_.structured = true;
      open_ = &documentation_.returns;
      append(*open_, text, u8' ');
    }  // any other tag is for other programs
  }

  Documentation& documentation_;
  std::u8string* open_ = nullptr;  // what the next line goes on with
};

// Whether a token is the first of its line.
bool beginsLine(const vb::Tokens& tokens, std::uint32_t token) {
  return token == 0 || tokens[token - 1].kind == TokenKind::LineEnd;
}

// The block of comments whose first lies at or behind `from`, with nothing else in front of it.
// Returns whether there is one.
bool readBlock(const vb::Module& module, std::uint32_t from, std::uint32_t end, Reader& reader) {
  bool any = false;
  for (std::uint32_t i = from; i < end; ++i) {
    const TokenKind kind = module.tokens[i].kind;
    if (kind == TokenKind::Comment && beginsLine(module.tokens, i)) {
      reader.comment(module.textOf(i));
      any = true;
    } else if (kind == TokenKind::LineEnd) {
      if (any && i > 0 && module.tokens[i - 1].kind == TokenKind::LineEnd) return true;
    } else {
      return any;
    }
  }
  return any;
}

// The text of `Attribute Name.VB_Description = "..."` at a token.
std::optional<std::u8string> attributeText(const vb::Module& module, std::uint32_t token) {
  bool named = false;
  for (std::uint32_t i = token;
       module.tokens[i].kind != TokenKind::LineEnd && module.tokens[i].kind != TokenKind::End;
       ++i) {
    if (module.tokens[i].kind == TokenKind::Directive)
      named = named || vb::equalFolded(module.textOf(i), u8"VB_Description");
    if (!named || module.tokens[i].kind != TokenKind::String) continue;
    std::u8string text;
    const std::u8string_view quoted = module.textOf(i);
    for (std::size_t c = 1; c + 1 < quoted.size(); ++c) {
      text += quoted[c];
      c += quoted[c] == u8'"';
    }
    return text;
  }
  return {};
}

// The attribute lines directly behind a head.
std::optional<std::u8string> describedBelow(const vb::Module& module, std::uint32_t from,
                                            std::uint32_t end) {
  for (std::uint32_t i = from; i < end; ++i) {
    const TokenKind kind = module.tokens[i].kind;
    if (kind == TokenKind::LineEnd) continue;
    if (module.tokens[i].word != vb::Word::Attribute) return {};
    if (auto text = attributeText(module, i)) return text;
    while (i < end && module.tokens[i].kind != TokenKind::LineEnd) ++i;
  }
  return {};
}

// Behind the lines of attributes at a token.
std::uint32_t behindAttributes(const vb::Module& module, std::uint32_t at, std::uint32_t end) {
  for (; at < end; ++at) {
    if (module.tokens[at].kind == TokenKind::LineEnd) continue;
    if (module.tokens[at].word != vb::Word::Attribute) return at;
    while (at < end && module.tokens[at].kind != TokenKind::LineEnd) ++at;
  }
  return at;
}

}  // namespace

Documentation documentationOf(const vb::Module& module, const listing::Section& section) {
  Documentation documentation;
  if (auto text = describedBelow(module, section.headEnd, section.end); text && !text->empty()) {
    documentation.text = std::move(*text);
    documentation.structured = true;
  }
  const bool described = !documentation.text.empty();
  Documentation comments;
  Reader reader(comments);
  if (!readBlock(module, section.begin, section.headLine, reader))
    readBlock(module, behindAttributes(module, section.headEnd, section.end), section.end, reader);
  if (!described) documentation.text = std::move(comments.text);
  documentation.parameters = std::move(comments.parameters);
  documentation.returns = std::move(comments.returns);
  documentation.structured = documentation.structured || comments.structured;
  return documentation;
}

std::u8string descriptionOf(const vb::Module& module,
                            const std::vector<listing::Section>& sections) {
  if (!module.description.empty()) return module.description;
  const std::uint32_t end = sections.empty() ? static_cast<std::uint32_t>(module.tokens.size() - 1)
                                             : sections.front().begin;
  for (std::uint32_t i = module.header.end; i < end; ++i) {
    if (module.tokens[i].kind != TokenKind::Comment || !beginsLine(module.tokens, i)) continue;
    Documentation documentation;
    Reader reader(documentation);
    readBlock(module, i, end, reader);
    if (!documentation.text.empty()) return documentation.text;
  }
  return {};
}

}  // namespace tintline::site
