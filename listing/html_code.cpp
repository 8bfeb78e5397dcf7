// See html_code.h. Tested by tests/golden/exact.
#include "listing/html_code.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "listing/html_text.h"
#include "listing/line_choice.h"
#include "listing/links.h"
#include "listing/token_names.h"
#include "vb/own_names.h"

namespace tintline::listing {
namespace {

using vb::DeclarationKind;
using vb::TokenKind;

// The colours of inline styles; what has no class has none.
std::string inlineLook(TokenKind kind, const Palette& palette) {
  const auto tint = tintOf(kind);
  if (!tint) return {};
  std::string look = " style=\"color:" + colorText(palette, *tint);
  if (kind == TokenKind::Comment) look += ";font-style:italic";
  if (kind == TokenKind::ProcedureName) look += ";font-weight:bold";
  return look + '"';
}

bool isType(DeclarationKind kind) {
  return kind == DeclarationKind::Type || kind == DeclarationKind::Enum;
}

// Tags are short, so that a fixed number of bytes is copied faster than theirs.
void writeTag(Output& out, const Markup::Tag& tag) {
  static_assert(sizeof tag.text <= Output::kRoom);
  std::memcpy(out.reserve(), tag.text.data(), sizeof tag.text);
  out.advance(tag.size);
}

// Appends a literal to what is written at `p`.
template <std::size_t Size>
char* put(char* p, const char (&text)[Size]) {
  std::memcpy(p, text, Size - 1);
  return p + (Size - 1);
}

// A marked piece of text of up to a block, at once.
bool writeShort(Output& out, const Markup::Tag& tag, std::u8string_view text, const char8_t* end) {
  Block block;
  char* const begin = out.room();
  if (begin == nullptr || text.size() > sizeof block ||
      end - text.data() < static_cast<std::ptrdiff_t>(sizeof block))
    return false;
  std::memcpy(&block, text.data(), sizeof block);
  if (detail::firstUnusual(block) < text.size()) return false;
  std::memcpy(begin, tag.text.data(), sizeof block);
  if (tag.size > sizeof block) std::memcpy(begin, tag.text.data(), sizeof tag.text);
  std::memcpy(begin + tag.size, &block, sizeof block);
  char* const p = put(begin + tag.size + text.size(), "</span>");
  out.advance(static_cast<std::size_t>(p - begin));
  return true;
}

}  // namespace

Markup::Markup(const Options& options) {
  const bool classes = options.style == Style::Class;
  const Palette palette = lightPalette(options.colors);
  for (std::size_t i = 0; i < kKinds; ++i) {
    const auto kind = static_cast<TokenKind>(i);
    if (!isMarked(kind)) continue;
    looks_[i] = classes ? " class=" + std::string(classOf(kind)) : inlineLook(kind, palette);
    const std::string tag = "<span" + looks_[i] + '>';
    std::ranges::copy(tag, tags_[i].text.begin());
    tags_[i].size = static_cast<std::uint8_t>(tag.size());
  }
  plainLook_ = classes ? "" : " style=color:inherit";
  valueLook_ = classes ? " class=v" : plainLook_;
  typeLook_ = classes ? " class=nc" : looks_[static_cast<std::size_t>(TokenKind::TypeName)];
  lineNumber_ = "color:" + colorText(palette, Tint::LineNumber);
}

void LineAnchor::make(std::uint32_t line) {
  char* const begin = text_.data();
  const auto number = [line](char* p) { return std::to_chars(p, p + 10, line).ptr; };
  char* const idEnd = number(put(begin, "<a id="));
  char* const linkEnd = number(put(idEnd, " href=#"));
  idEnd_ = static_cast<std::size_t>(idEnd - begin);
  linkEnd_ = static_cast<std::size_t>(linkEnd - begin);
  size_ = static_cast<std::size_t>(put(linkEnd, "></a>") - begin);
}

HtmlCode::HtmlCode(Output& out, const Options& options, const Markup& markup,
                   const Targets& targets, const Source& source, bool hasTop)
    : out_(out),
      options_(options),
      markup_(markup),
      targets_(targets),
      source_(source),
      own_(targets[source.index]),
      tokens_(source.module.tokens.data()),
      hasTop_(hasTop),
      isNumbered_(options.lineNumbers || options.lineAnchors),
      hasPlainAnchors_(isNumbered_ && options.style == Style::Class && own_.prefix().empty()),
      end_(source.module.text.data() + source.module.text.size()),
      lines_(source.module) {
  findMark(0);
}

bool HtmlCode::writeLine(std::uint32_t idElsewhere) {
  idElsewhere_ = idElsewhere;
  if (hasPlainAnchors_)
    anchor_.write(out_, lines_.line());
  else if (isNumbered_)
    writeLineNumber();
  return lines_.visitLine(*this);
}

void HtmlCode::writeLineNumber() {
  const std::uint32_t line = lines_.line();
  if (options_.style == Style::Inline) return writeInlineNumber(line);
  out_ << "<a id=\"" << own_.prefix() << line << "\" href=\"#" << own_.prefix() << line
       << "\" data-n=" << line << "></a>";
}

void HtmlCode::writeInlineNumber(std::uint32_t line) {
  if (options_.lineAnchors)
    out_ << "<a id=\"" << own_.prefix() << line << "\" href=\"#" << own_.prefix() << line
         << "\" style=\"text-decoration:none\">";
  if (options_.lineNumbers)
    out_ << "<span style=\"" << markup_.lineNumberStyle() << "\">"
         << lineNumber(source_.module, line) << "</span>";
  if (options_.lineAnchors) out_ << "</a>";
}

// The first token from `token` on that has an id or a link.
void HtmlCode::findMark(std::uint32_t token) {
  const auto& declarations = source_.module.declarations;
  while (declaration_ < declarations.size() &&
         (declarations[declaration_].name < token || !hasId(declaration_)))
    ++declaration_;
  while (reference_ < source_.references.size() && (source_.references[reference_].token < token ||
                                                    !isLinked(source_.references[reference_])))
    ++reference_;
  nextMark_ = declaration_ < declarations.size() ? declarations[declaration_].name : vb::kNone;
  if (reference_ < source_.references.size())
    nextMark_ = std::min(nextMark_, source_.references[reference_].token);
}

bool HtmlCode::hasId(std::uint32_t declaration) const {
  if (options_.style == Style::Inline && options_.links == Links::None) return false;
  return own_.isShown(declaration) && !own_.id(declaration).empty();
}

// A link needs something in a document to lead to, too.
bool HtmlCode::isLinked(const vb::Reference& reference) const {
  if (!isLink(reference, source_.index, options_, targets_)) return false;
  if (reference.module != source_.index && targets_.place() == Place::OwnPages)
    return !targets_[reference.module].page().empty();
  return reference.declaration != vb::kNone || hasTop_;
}

void HtmlCode::marked(std::uint32_t token, std::u8string_view text) {
  const Markup::Tag& tag = markup_.open(tokens_[token].kind);
  if (token >= nextMark_ || !writeShort(out_, tag, text, end_)) markedAny(token, text);
}

// Also one that has an id or a link, or is long.
void HtmlCode::markedAny(std::uint32_t token, std::u8string_view text) {
  if (isWanted(token)) return writeMark(token, text);
  writeTag(out_, markup_.open(tokens_[token].kind));
  writeHtml(out_, text, end_);
  out_ << "</span>";
}

// The name of a declaration, or a link.
void HtmlCode::writeMark(std::uint32_t token, std::u8string_view text) {
  const auto& declarations = source_.module.declarations;
  if (declaration_ < declarations.size() && declarations[declaration_].name == token)
    writeDeclared(declaration_, text);
  else
    writeLinked(source_.references[reference_], text);
  findMark(token + 1);
}

void HtmlCode::writeDeclared(std::uint32_t declaration, std::u8string_view text) {
  const TokenKind kind = tokens_[source_.module.declarations[declaration].name].kind;
  const std::string_view look = markup_.look(kind);
  const bool withId = declaration != idElsewhere_;
  if (!withId && look.empty()) return writeHtml(out_, text, end_);
  out_ << "<span";
  if (withId) out_ << " id=\"" << own_.htmlId(declaration) << "\"";
  out_ << look << ">";
  writeHtml(out_, text, end_);
  out_ << "</span>";
}

void HtmlCode::writeLinked(const vb::Reference& reference, std::u8string_view text) {
  const ModuleTargets& target = targets_[reference.module];
  const bool own = reference.module == source_.index;
  out_ << "<a" << linkLook(reference) << " href=\"";
  if (!own && targets_.place() == Place::OwnPages) out_ << own_.toRoot() << target.page();
  if (reference.declaration != vb::kNone)
    out_ << target.link(reference.declaration);
  else if (targets_.place() == Place::OnePage)
    out_ << "#" << target.topId() << "\"";
  else
    out_ << (own ? "#0\"" : "\"");
  out_ << ">";
  writeHtml(out_, text, end_);
  out_ << "</a>";
}

std::string_view HtmlCode::linkLook(const vb::Reference& reference) const {
  const TokenKind kindOfToken = vb::kindOfName(tokens_[reference.token]);
  if (const auto look = markup_.look(kindOfToken); !look.empty()) return look;
  if (reference.declaration == vb::kNone)
    return targets_[reference.module].isClass() ? markup_.typeLook() : markup_.plainLook();
  const DeclarationKind kind = targets_[reference.module].kind(reference.declaration);
  if (isCallable(kind) || kind == DeclarationKind::Label) return markup_.plainLook();
  return isType(kind) ? markup_.typeLook() : markup_.valueLook();
}

}  // namespace tintline::listing
