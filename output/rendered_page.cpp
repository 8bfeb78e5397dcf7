// See rendered_page.h. Tested by tests/unit/output/rendered_page_test.cpp and
// fuzz/rendered_page_fuzz.cpp.
#include "output/rendered_page.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/codepage.h"
#include "base/text.h"
#include "output/exact_page.h"
#include "output/page_text.h"

namespace tintline {
namespace {

constexpr auto npos = std::string_view::npos;
constexpr Color kLinkColor = 0x0000FF;  // as browsers show links without a colour of their own
constexpr Color kRuleColor = 0x808080;

using StyleSheet = std::map<std::string, Looks, std::less<>>;  // by class name in lower case

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), toLower);
  return result;
}

// The class rules (".Code { … }") of the head's style sheet. Class names are compared without
// regard to case, as in every page whose document type names no definition file.
StyleSheet readStyleSheet(std::string_view head) {
  StyleSheet sheet;
  const std::size_t begin = findIgnoreCase(head, "<style");
  if (begin == npos) return sheet;
  std::string_view rules = head.substr(begin);
  rules = rules.substr(0, findIgnoreCase(rules, "</style"));
  while (true) {
    const std::size_t open = rules.find('{');
    const std::size_t close = rules.find('}', open == npos ? 0 : open);
    if (open == npos || close == npos) return sheet;
    const std::size_t dot = rules.substr(0, open).rfind('.');
    if (dot != npos)
      sheet[lowerCase(Trim(rules.substr(dot + 1, open - dot - 1)))] =
          readDeclarations(rules.substr(open + 1, close - open - 1));
    rules.remove_prefix(close + 1);
  }
}

enum class Element : std::uint8_t { Span, A, Div, Pre };

struct ElementName {
  std::string_view name;
  Element element;
};
constexpr ElementName kElements[] = {
    {"span", Element::Span}, {"a", Element::A}, {"div", Element::Div}, {"pre", Element::Pre}};

constexpr bool isBlock(Element element) {
  return element == Element::Div || element == Element::Pre;
}

// Walks through a body and lays out its lines.
class Layout {
 public:
  Layout(std::string_view body, const StyleSheet& sheet) : body_(body), sheet_(sheet) {}

  RenderedPage run() &&;

 private:
  // An open element: what closing it brings back.
  struct Open {
    Element element;
    TextLooks looksBefore;
    bool preservedBefore;
    std::size_t inlineBefore[2];  // of a block: the counts outside of it
    std::optional<Color> border;
  };

  void addText(std::string_view text);
  void addCharacter(wchar_t character);
  void addSpace();
  void addVisible(std::wstring_view text);
  void breakLine();
  void startLine();
  void addRule(Color color);
  void applyTag(const Tag& tag);
  void open(Element element, const Tag& tag);
  void close(Element element);
  void closeInnermost();
  Looks looksOf(const Tag& tag) const;

  std::string_view body_;
  const StyleSheet& sheet_;
  PageText builder_;
  TextLooks looks_;
  std::vector<Open> stack_;
  std::size_t inline_[2] = {0, 0};  // open spans and links inside the innermost block
  std::size_t blocks_[2] = {0, 0};  // open divs and pres
  bool preserved_ = false;          // inside "<pre>": blanks and line ends count
  bool skipLineEnd_ = false;        // the line end directly behind "<pre>" does not
  bool afterReturn_ = false;        // a line feed behind a carriage return is a part of it
  std::optional<TextLooks> space_;  // a blank that stands only if text follows on its line
};

RenderedPage Layout::run() && {
  TagReader tags(body_);
  for (std::size_t i = 0; i < body_.size();) {
    if (body_[i] == '<') {
      const TagReader::Result found = tags.read(i);
      if (found.isText) addText(body_.substr(i, found.end - i));
      if (found.tag) applyTag(*found.tag);
      i = found.end;
    } else if (const auto reference =
                   body_[i] == '&' ? readReference(body_.substr(i)) : std::nullopt) {
      addCharacter(reference->character);
      i += reference->length;
    } else {
      const std::size_t end = std::min(body_.find_first_of("<&", i + 1), body_.size());
      addText(body_.substr(i, end - i));
      i = end;
    }
  }
  while (!stack_.empty()) closeInnermost();
  return std::move(builder_).take();
}

void Layout::addText(std::string_view text) {
  const bool ascii = std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
  const std::wstring wide = ascii ? std::wstring(text.begin(), text.end()) : fromAnsi(text);
  const auto isControl = [](wchar_t c) { return c < L' '; };
  for (auto at = wide.begin(); at != wide.end();) {
    const auto collapses = [this](wchar_t c) { return c == L' ' && !preserved_; };
    const auto end =
        std::find_if(at, wide.end(), [&](wchar_t c) { return isControl(c) || collapses(c); });
    if (at != end) addVisible({&*at, static_cast<std::size_t>(end - at)});
    at = end;
    if (at != wide.end()) addCharacter(*at++);
  }
}

void Layout::addCharacter(wchar_t character) {
  const bool lineFeedOfReturn =
      std::exchange(afterReturn_, character == L'\r') && character == L'\n';
  if (lineFeedOfReturn) return;
  switch (character) {
    case L'\r':
    case L'\n':
      if (std::exchange(skipLineEnd_, false)) return;
      if (preserved_) return breakLine();
      return addSpace();
    case L'\t':
    case L' ':
      if (!preserved_) return addSpace();
      break;
    default:
      if (character < L' ') return;  // has no shape; a rich-edit control would act on some
  }
  addVisible({&character, 1});
}

void Layout::addSpace() {
  if (!builder_.atLineStart() && !space_) space_ = looks_;
}

void Layout::addVisible(std::wstring_view text) {
  if (space_) builder_.append(L" ", *space_);
  space_.reset();
  skipLineEnd_ = afterReturn_ = false;
  builder_.append(text, looks_);
}

void Layout::breakLine() {
  space_.reset();
  builder_.append(L"\n", {});
}

void Layout::startLine() {
  if (!builder_.atLineStart()) breakLine();
}

void Layout::addRule(Color color) {
  startLine();
  TextLooks looks;
  looks.color = color;
  builder_.append(std::wstring(kRuleLength, kRuleCharacter), looks);
  breakLine();
}

void Layout::applyTag(const Tag& tag) {
  skipLineEnd_ = afterReturn_ = false;
  const bool opening = !tag.closing;
  if (opening && equalsIgnoreCase(tag.name, "br")) return breakLine();
  if (opening && equalsIgnoreCase(tag.name, "hr")) return addRule(kRuleColor);
  for (const auto& [name, element] : kElements) {
    if (!equalsIgnoreCase(tag.name, name)) continue;
    if (opening)
      open(element, tag);
    else
      close(element);
  }
}

Looks Layout::looksOf(const Tag& tag) const {
  if (tag.style) return readDeclarations(*tag.style);
  if (!tag.className) return {};
  const auto rule = sheet_.find(lowerCase(Trim(*tag.className)));
  return rule == sheet_.end() ? Looks{} : rule->second;
}

void Layout::open(Element element, const Tag& tag) {
  const Looks own = looksOf(tag);
  stack_.push_back({element, looks_, preserved_, {inline_[0], inline_[1]}, {}});
  if (isBlock(element)) {
    startLine();
    inline_[0] = inline_[1] = 0;
    ++blocks_[element == Element::Pre];
    preserved_ = preserved_ || element == Element::Pre;
    skipLineEnd_ = element == Element::Pre;
    if (element == Element::Div && own.border) addRule(*(stack_.back().border = own.border));
  } else {
    ++inline_[element == Element::A];
    if (tag.anchor) builder_.addAnchor(attributeText(*tag.anchor));
  }
  if (element == Element::A && tag.target) {
    looks_.link = builder_.addTarget(*tag.target);
    looks_.underlined = true;
    looks_.color = kLinkColor;
  }
  if (own.color) looks_.color = own.color;
  if (own.background) looks_.background = own.background;
  looks_.bold = looks_.bold || own.bold;
  looks_.italic = looks_.italic || own.italic;
}

// Closes the innermost element of that kind with all it holds. A block is not closed by the
// end of a span or link around it; an end without a beginning is nothing.
void Layout::close(Element element) {
  const bool block = isBlock(element);
  const std::size_t open =
      block ? blocks_[element == Element::Pre] : inline_[element == Element::A];
  if (open == 0) return;
  while (stack_.back().element != element) closeInnermost();
  closeInnermost();
}

void Layout::closeInnermost() {
  const Open closed = stack_.back();
  stack_.pop_back();
  if (isBlock(closed.element)) {
    startLine();
    if (closed.border) addRule(*closed.border);
    inline_[0] = closed.inlineBefore[0];
    inline_[1] = closed.inlineBefore[1];
    --blocks_[closed.element == Element::Pre];
  } else {
    --inline_[closed.element == Element::A];
  }
  looks_ = closed.looksBefore;
  preserved_ = closed.preservedBefore;
}

}  // namespace

std::optional<std::size_t> RenderedPage::anchorPosition(std::wstring_view name) const {
  const auto found = std::find_if(anchors.begin(), anchors.end(),
                                  [name](const Anchor& anchor) { return anchor.name == name; });
  if (found == anchors.end()) return {};
  return found->position;
}

const TextRun* RenderedPage::runAt(std::size_t position) const {
  if (position >= text.size()) return nullptr;
  const auto behind =
      std::upper_bound(runs.begin(), runs.end(), position,
                       [](std::size_t wanted, const TextRun& run) { return wanted < run.start; });
  return &*std::prev(behind);
}

RenderedPage renderPage(std::string_view html) {
  if (isExactPage(html)) return renderExactPage(html);
  const std::size_t body = findIgnoreCase(html, "<body");
  const StyleSheet sheet = body == npos ? StyleSheet{} : readStyleSheet(html.substr(0, body));
  return Layout(body == npos ? html : html.substr(body), sheet).run();
}

}  // namespace tintline
