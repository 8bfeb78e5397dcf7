// See link_check.h. Tested by tests/unit/site/site_test.cpp and tests/browser/site.py.
#include "site/link_check.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "base/text.h"

namespace tintline::site {
namespace {

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
bool isLetter(char c) { return (c | 0x20) >= 'a' && (c | 0x20) <= 'z'; }

// Goes through the start tags of a document, as browsers find them.
class TagReader {
 public:
  explicit TagReader(std::string_view html) : html_(html) {}

  // Goes to the next tag; false at the end.
  bool next() {
    skipRawText();
    while (true) {
      const std::size_t open = html_.find('<', at_);
      if (open == std::string_view::npos || open + 1 >= html_.size()) return false;
      at_ = open + 1;
      if (html_.compare(at_, 3, "!--") == 0) {
        at_ = behind("-->");
      } else if (isLetter(html_[at_])) {
        const std::size_t begin = at_;
        while (at_ < html_.size() && !isSpace(html_[at_]) && html_[at_] != '>' && html_[at_] != '/')
          ++at_;
        name_ = html_.substr(begin, at_ - begin);
        return true;
      }
    }
  }

  // The next attribute of the tag; false behind the last.
  bool nextAttribute() {
    while (at_ < html_.size() && (isSpace(html_[at_]) || html_[at_] == '/')) ++at_;
    if (at_ == html_.size() || html_[at_] == '>') return false;
    const std::size_t begin = at_++;
    while (at_ < html_.size() && !isSpace(html_[at_]) && html_[at_] != '>' && html_[at_] != '/' &&
           html_[at_] != '=')
      ++at_;
    attribute_ = html_.substr(begin, at_ - begin);
    value_ = {};
    std::size_t equals = at_;
    while (equals < html_.size() && isSpace(html_[equals])) ++equals;
    if (equals == html_.size() || html_[equals] != '=') return true;
    at_ = equals + 1;
    readValue();
    return true;
  }

  bool is(std::string_view name) const { return equalsIgnoreCase(name_, name); }
  bool isAttribute(std::string_view name) const { return equalsIgnoreCase(attribute_, name); }
  std::string_view value() const { return value_; }
  std::size_t at() const { return at_; }

 private:
  void readValue() {
    while (at_ < html_.size() && isSpace(html_[at_])) ++at_;
    const char quote = at_ < html_.size() ? html_[at_] : '\0';
    const std::size_t begin = quote == '"' || quote == '\'' ? at_ + 1 : at_;
    std::size_t end = begin;
    if (begin > at_)
      end = std::min(html_.find(quote, begin), html_.size());
    else
      while (end < html_.size() && !isSpace(html_[end]) && html_[end] != '>') ++end;
    value_ = html_.substr(begin, end - begin);
    at_ = std::min(html_.size(), begin > at_ ? end + 1 : end);
  }

  // What stands in these is no markup.
  void skipRawText() {
    for (const std::string_view raw : {"script", "style", "textarea", "title"}) {
      if (!is(raw)) continue;
      name_ = {};
      const std::size_t end = findIgnoreCase(html_, "</" + std::string(raw), at_);
      at_ = std::min(end, html_.size());
      return;
    }
  }

  std::size_t behind(std::string_view mark) const {
    const std::size_t found = html_.find(mark, at_);
    return found == std::string_view::npos ? html_.size() : found + mark.size();
  }

  std::string_view html_;
  std::size_t at_ = 0;
  std::string_view name_, attribute_, value_;
};

void appendUtf8(std::string& text, unsigned code) {
  if (code < 0x80) {
    text += static_cast<char>(code);
    return;
  }
  const int bytes = code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
  text += static_cast<char>((0xF00U >> bytes & 0xFF) | code >> 6 * (bytes - 1));
  for (int i = bytes - 2; i >= 0; --i) text += static_cast<char>(0x80 | (code >> 6 * i & 0x3F));
}

// The character of a reference without "&" and ";": "amp", "#38", "#x26".
std::optional<unsigned> referred(std::string_view name) {
  static constexpr std::pair<std::string_view, char> kNames[] = {
      {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
  for (const auto& [known, character] : kNames)
    if (name == known) return character;
  if (!name.starts_with('#')) return {};
  const bool hex = name.size() > 1 && (name[1] | 0x20) == 'x';
  name.remove_prefix(hex ? 2 : 1);
  unsigned code = 0;
  const auto [end, error] =
      std::from_chars(name.data(), name.data() + name.size(), code, hex ? 16 : 10);
  if (error != std::errc() || end != name.data() + name.size() || code > 0x10FFFF) return {};
  return code;
}

std::string decodedReferences(std::string_view value) {
  std::string text;
  while (!value.empty()) {
    const std::size_t mark = std::min(value.find('&'), value.size());
    text += value.substr(0, mark);
    value.remove_prefix(mark);
    if (value.empty()) break;
    const std::size_t end = value.substr(0, 16).find(';');
    const auto code =
        end == std::string_view::npos ? std::nullopt : referred(value.substr(1, end - 1));
    if (code)
      appendUtf8(text, *code);
    else
      text += '&';
    value.remove_prefix(code ? end + 1 : 1);
  }
  return text;
}

std::string decodedPercent(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned code = 0;
    const char* const digits = text.data() + i + 1;
    if (text[i] == '%' && i + 2 < text.size() &&
        std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
      result += static_cast<char>(code);
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

bool isElsewhere(std::string_view link) {
  if (link.starts_with("//")) return true;
  std::size_t end = 0;
  while (end < link.size() &&
         (isLetter(link[end]) ||
          (end > 0 && std::string_view("0123456789+-.").find(link[end]) != std::string_view::npos)))
    ++end;
  return end > 0 && end < link.size() && link[end] == ':';
}

// The file that a path leads to from another file; nothing outside of the folder.
std::optional<std::string> fileOf(std::string_view from, std::string_view path) {
  if (path.starts_with('/')) return {};
  std::vector<std::string_view> parts;
  for (const std::string_view part : Split(from, '/')) parts.push_back(part);
  if (!parts.empty()) parts.pop_back();
  for (const std::string_view part : Split(path, '/')) {
    if (part == ".") continue;
    if (part != "..") {
      parts.push_back(part);
    } else {
      if (parts.empty()) return {};
      parts.pop_back();
    }
  }
  std::string file;
  for (const std::string_view part : parts) (file += file.empty() ? "" : "/") += part;
  return file;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace

void LinkCheck::addFile(std::string file) { ids_.try_emplace(std::move(file)); }

void LinkCheck::addPage(std::string file, std::string_view html) {
  std::vector<std::size_t>& ids = ids_[std::move(file)];
  for (TagReader tags(html); tags.next();)
    while (tags.nextAttribute())
      if (tags.isAttribute("id") || (tags.is("a") && tags.isAttribute("name")))
        ids.push_back(std::hash<std::string>()(decodedReferences(tags.value())));
  std::ranges::sort(ids);
}

std::size_t LinkCheck::check(std::string_view file, std::string_view html,
                             const std::function<void(const BrokenLink&)>& tell) const {
  std::size_t landed = 0, line = 1, counted = 0;
  for (TagReader tags(html); tags.next();)
    while (tags.nextAttribute()) {
      if (!tags.isAttribute("href") && !tags.isAttribute("src")) continue;
      const std::string link = decodedReferences(trimmed(tags.value()));
      if (isElsewhere(link)) continue;
      BrokenLink::Reason reason{};
      if (lands(file, link, reason)) {
        ++landed;
        continue;
      }
      line += static_cast<std::size_t>(
          std::count(html.begin() + static_cast<std::ptrdiff_t>(counted),
                     html.begin() + static_cast<std::ptrdiff_t>(tags.at()), '\n'));
      counted = tags.at();
      tell({.line = line, .link = link, .reason = reason});
    }
  return landed;
}

bool LinkCheck::lands(std::string_view from, std::string_view link,
                      BrokenLink::Reason& reason) const {
  const std::size_t hash = std::min(link.find('#'), link.size());
  const std::string_view path = link.substr(0, std::min(link.find('?'), hash));
  const auto file =
      path.empty() ? std::optional(std::string(from)) : fileOf(from, decodedPercent(path));
  reason = BrokenLink::Reason::Outside;
  if (!file) return false;
  reason = BrokenLink::Reason::NoFile;
  const auto found = ids_.find(*file);
  if (found == ids_.end()) return false;
  reason = BrokenLink::Reason::NoId;
  const std::string_view id = link.substr(std::min(link.size(), hash + 1));
  if (id.empty() || equalsIgnoreCase(id, "top")) return true;
  const auto has = [&](const std::string& text) {
    return std::ranges::binary_search(found->second, std::hash<std::string>()(text));
  };
  return has(std::string(id)) || has(decodedPercent(id));
}

}  // namespace tintline::site
