// See exact_page.h. Tested by tests/unit/output/rendered_page_test.cpp.
#include "output/exact_page.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "base/codepage.h"
#include "base/text.h"
#include "output/page_markup.h"
#include "output/page_text.h"

namespace tintline {
namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::size_t kNumberWidth = 5;  // columns of a line's number
constexpr std::size_t kDeepest = 32;     // elements inside each other; pages have fewer
constexpr Color kRuleColor = 0x808080;   // where the page says nothing
constexpr std::string_view kLineNumbers = "a[id]:empty:before";

// ------------------------------------------------------------------- style sheet
using StyleSheet = std::map<std::string, Looks, std::less<>>;  // by selector

void addRule(StyleSheet& sheet, std::string_view selectors, std::string_view declarations) {
  const Looks looks = readDeclarations(declarations);
  for (const std::string_view selector : Split(selectors, ',')) {
    Looks& known = sheet[std::string(Trim(selector))];
    if (looks.color) known.color = looks.color;
    if (looks.background) known.background = looks.background;
    if (looks.border) known.border = looks.border;
    known.bold = known.bold || looks.bold;
    known.italic = known.italic || looks.italic;
  }
}

// The rules outside of "@media" and its like: a light page on a screen, or a dark one where a page
// is dark on every screen.
StyleSheet readStyleSheet(std::string_view head) {
  StyleSheet sheet;
  const std::size_t begin = head.find("<style>");
  std::string_view rules = begin == npos ? std::string_view() : head.substr(begin + 7);
  rules = rules.substr(0, rules.find("</style"));
  int depth = 0;  // of blocks that are passed over
  while (!rules.empty()) {
    const std::size_t brace = rules.find_first_of("{}");
    if (brace == npos) break;
    std::string_view selectors = rules.substr(0, brace);
    while (selectors.starts_with('\n')) selectors.remove_prefix(1);
    const bool opens = rules[brace] == '{';
    rules.remove_prefix(brace + 1);
    if (depth == 0 && selectors == "@media screen") continue;
    if (depth > 0 || selectors.starts_with('@')) {
      depth += opens ? 1 : -1;
    } else if (opens) {
      const std::size_t end = rules.find('}');
      addRule(sheet, selectors, rules.substr(0, end));
      rules.remove_prefix(end == npos ? rules.size() : end + 1);
    }
  }
  return sheet;
}

// -------------------------------------------------------------------- elements
enum class Kind : std::uint8_t { Inline, Block, Region, Heading, Item, Code };
struct ElementName {
  std::string_view name;
  Kind kind;
};
constexpr ElementName kElements[] = {
    {"a", Kind::Inline},      {"span", Kind::Inline},   {"code", Kind::Code},
    {"pre", Kind::Block},     {"section", Kind::Block}, {"details", Kind::Block},
    {"summary", Kind::Block}, {"div", Kind::Block},     {"p", Kind::Block},
    {"ul", Kind::Block},      {"li", Kind::Item},       {"header", Kind::Region},
    {"nav", Kind::Region},    {"main", Kind::Region},   {"h1", Kind::Heading},
    {"h2", Kind::Heading},    {"h3", Kind::Heading}};

const ElementName* elementNamed(std::string_view name) {
  const auto* const found = std::ranges::find(kElements, name, &ElementName::name);
  return found == std::end(kElements) ? nullptr : found;
}

// The number of a line whose anchor has that id: "12", "Modul1.12".
std::string_view numberOf(std::string_view id) { return id.substr(id.rfind('.') + 1); }

// A link to itself stands in front of each line.
bool isLineNumber(const Tag& tag) {
  return tag.id && tag.target && tag.target->size() == tag.id->size() + 1 &&
         tag.target->starts_with('#') && tag.target->substr(1) == *tag.id;
}

// As UTF-16 on every platform. Some characters would end a line in a rich-edit control.
std::wstring unitsOf(std::string_view utf8) {
  std::wstring units;
  for (const wchar_t c : fromUtf8(utf8)) {
    const auto character = static_cast<std::uint32_t>(c);
    if (character > 0xFFFF) {
      units += static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10));
      units += static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
    } else if (c == L'\u2028' || c == L'\u2029' || c == L'\u0085') {
      units += L'\uFFFD';
    } else if (c >= L' ' || c == L'\t') {
      units += c;
    }
  }
  return units;
}

class Layout {
 public:
  // `numbered`: the page shows the numbers of its lines, which stand in their ids.
  Layout(std::string_view body, const StyleSheet& sheet, bool numbered)
      : body_(body), sheet_(sheet), numbered_(numbered) {}

  RenderedPage run() &&;

 private:
  // An open element, and what closing it brings back.
  struct Open {
    const ElementName* element;
    TextLooks looksBefore;
    bool hiddenBefore;
  };

  void addText(std::string_view text);
  void addWords(std::string_view text);
  void addVisible(std::wstring_view text);
  void startLine();
  void rule();
  void open(const ElementName& element, const Tag& tag);
  void close(const ElementName& element);
  void closeInnermost();
  void applyLooks(const ElementName& element, const Tag& tag);
  void apply(std::string_view selector);
  void apply(const Looks& looks);
  void writeLineNumber(const Tag& tag);
  std::string_view region() const;
  bool isIn(Kind kind) const {
    return std::ranges::any_of(stack_, [kind](const Open& o) { return o.element->kind == kind; });
  }

  std::string_view body_;
  const StyleSheet& sheet_;
  bool numbered_;
  PageText text_{TextEncoding::Utf8};
  TextLooks looks_;
  bool hidden_ = false;  // inside of what only a keyboard shows
  bool blank_ = false;   // a blank that stands only if text follows on its line
  std::vector<Open> stack_;
};

RenderedPage Layout::run() && {
  TagReader tags(body_);
  for (std::size_t i = 0; i < body_.size();) {
    if (body_[i] == '<') {
      const TagReader::Result found = tags.read(i);
      const ElementName* const element = found.tag ? elementNamed(found.tag->name) : nullptr;
      if (found.isText) addText(body_.substr(i, found.end - i));
      if (element != nullptr && found.tag->closing) close(*element);
      if (element != nullptr && !found.tag->closing) open(*element, *found.tag);
      i = found.end;
    } else if (const auto reference =
                   body_[i] == '&' ? readReference(body_.substr(i)) : std::nullopt) {
      addVisible({&reference->character, 1});
      i += reference->length;
    } else {
      const std::size_t end = std::min(body_.find_first_of("<&", i + 1), body_.size());
      addText(body_.substr(i, end - i));
      i = end;
    }
  }
  return std::move(text_).take();
}

// In code, blanks and line ends count.
void Layout::addText(std::string_view text) {
  if (!isIn(Kind::Code)) return addWords(text);
  for (;;) {
    const std::size_t end = text.find('\n');
    addVisible(unitsOf(text.substr(0, end)));
    if (end == npos) return;
    text_.append(L"\n", {});
    text.remove_prefix(end + 1);
  }
}

void Layout::addWords(std::string_view text) {
  constexpr std::string_view kSpace = " \n\t\r";
  while (!text.empty()) {
    const std::size_t word = std::min(text.find_first_not_of(kSpace), text.size());
    blank_ = blank_ || word > 0;
    text.remove_prefix(word);
    const std::size_t end = std::min(text.find_first_of(kSpace), text.size());
    addVisible(unitsOf(text.substr(0, end)));
    text.remove_prefix(end);
  }
}

void Layout::addVisible(std::wstring_view text) {
  if (hidden_ || text.empty()) return;
  if (blank_ && !text_.atLineStart()) text_.append(L" ", looks_);
  blank_ = false;
  text_.append(text, looks_);
}

void Layout::startLine() {
  blank_ = false;
  if (!text_.atLineStart()) text_.append(L"\n", {});
}

// Below a region of the page.
void Layout::rule() {
  startLine();
  TextLooks looks;
  const auto border = sheet_.find("header");
  looks.color = border == sheet_.end() ? kRuleColor : border->second.border.value_or(kRuleColor);
  text_.append(std::wstring(kRuleLength, kRuleCharacter), looks);
  startLine();
}

void Layout::open(const ElementName& element, const Tag& tag) {
  if (stack_.size() == kDeepest) return;
  stack_.push_back({&element, looks_, hidden_});
  if (element.kind != Kind::Inline && element.kind != Kind::Code) startLine();
  if (tag.id && !hidden_) text_.addAnchor(attributeText(*tag.id, TextEncoding::Utf8));
  hidden_ = hidden_ || tag.className == "skip";
  applyLooks(element, tag);
  if (numbered_ && element.name == "a" && isLineNumber(tag)) writeLineNumber(tag);
  if (element.kind == Kind::Item) addVisible(L"  ");
}

void Layout::applyLooks(const ElementName& element, const Tag& tag) {
  const std::string place = std::string(region()) + " " + std::string(element.name);
  const auto styled = sheet_.find(place);
  const bool ofCode = styled != sheet_.end() && styled->second.background;
  looks_.bold = looks_.bold || (element.kind == Kind::Heading && !ofCode);
  if (element.name == "a" && tag.target) {
    looks_.link = text_.addTarget(*tag.target);
    looks_.underlined = isIn(Kind::Code) && tag.className != "v";
  }
  apply(element.name);
  apply(place);
  if (tag.className) {
    const std::string name = "." + std::string(*tag.className);
    apply(name);
    if (isIn(Kind::Heading)) apply("main h2 " + name), apply("main h3 " + name);
  }
  if (tag.style) apply(readDeclarations(*tag.style));
}

void Layout::apply(std::string_view selector) {
  if (const auto rule = sheet_.find(selector); rule != sheet_.end()) apply(rule->second);
}

void Layout::apply(const Looks& looks) {
  if (looks.color) looks_.color = looks.color;
  if (looks.background) looks_.background = looks.background;
  looks_.bold = looks_.bold || looks.bold;
  looks_.italic = looks_.italic || looks.italic;
}

// The look of the page's "pre" is that of all its code; numbers have their own.
void Layout::writeLineNumber(const Tag& tag) {
  apply(kLineNumbers);
  looks_.underlined = looks_.bold = looks_.italic = false;
  const std::wstring number = attributeText(numberOf(*tag.id), TextEncoding::Utf8);
  addVisible(std::wstring(kNumberWidth - std::min(kNumberWidth, number.size()), L' ') + number);
  TextLooks blanks;
  blanks.background = looks_.background;
  if (!hidden_) text_.append(L"  ", blanks);
}

std::string_view Layout::region() const {
  for (auto open = stack_.rbegin(); open != stack_.rend(); ++open)
    if (open->element->kind == Kind::Region) return open->element->name;
  return {};
}

// Closes the innermost element of that kind with all it holds.
void Layout::close(const ElementName& element) {
  const auto is = [&](const Open& open) { return open.element == &element; };
  if (std::ranges::none_of(stack_, is)) return;
  while (!is(stack_.back())) closeInnermost();
  closeInnermost();
}

void Layout::closeInnermost() {
  const Open closed = stack_.back();
  stack_.pop_back();
  looks_ = closed.looksBefore;
  hidden_ = closed.hiddenBefore;
  const std::string_view name = closed.element->name;
  if (closed.element->kind == Kind::Inline || closed.element->kind == Kind::Code) return;
  if (name == "header" || name == "nav")
    rule();
  else
    startLine();
}

}  // namespace

bool isExactPage(std::string_view html) { return html.starts_with("<!DOCTYPE html>\n"); }

RenderedPage renderExactPage(std::string_view html) {
  const std::size_t body = std::min(html.find("<body"), html.size());
  const std::string_view head = html.substr(0, body);
  const StyleSheet sheet = readStyleSheet(head);
  const bool numbered = head.find("content:attr(id)") != npos ||
                        head.find("content:attr(data-n)") != npos;  // of several modules
  RenderedPage page = Layout(html.substr(body), sheet, numbered).run();
  if (const auto rule = sheet.find("body"); rule != sheet.end()) {
    page.ground = rule->second.background;
    page.ink = rule->second.color;
  }
  return page;
}

}  // namespace tintline
