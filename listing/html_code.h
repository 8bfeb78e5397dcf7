// Writes the lines of a module as HTML: marked tokens, ids of what is declared, links.
//
// Tested by tests/golden/exact and tests/unit/any_text_property_test.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "listing/document.h"
#include "listing/html_text.h"
#include "listing/module_targets.h"
#include "listing/options.h"
#include "listing/output.h"
#include "listing/source_lines.h"

namespace tintline::listing {

// What stands around the tokens of each kind in an HTML document.
class Markup {
 public:
  explicit Markup(const Options& options);

  // `class=k` or `style="color:#0000c8"`, with a blank in front of it; empty where the kind has
  // no look of its own.
  std::string_view look(vb::TokenKind kind) const { return looks_[static_cast<std::size_t>(kind)]; }

  // A whole tag, to be copied at once.
  struct Tag {
    std::array<char, 64> text{};
    std::uint8_t size = 0;
  };
  const Tag& open(vb::TokenKind kind) const { return tags_[static_cast<std::size_t>(kind)]; }

  const std::string& typeLook() const { return typeLook_; }           // of a link to a type
  const std::string& valueLook() const { return valueLook_; }         // of one to a variable ...
  const std::string& plainLook() const { return plainLook_; }         // of any other
  const std::string& lineNumberStyle() const { return lineNumber_; }  // Style::Inline

 private:
  static constexpr std::size_t kKinds = static_cast<std::size_t>(vb::TokenKind::End) + 1;
  std::array<std::string, kKinds> looks_;
  std::array<Tag, kKinds> tags_;
  std::string typeLook_, valueLook_, plainLook_, lineNumber_;
};

// A line's number, as its id and as a link to itself. There is one in each line, mostly the next
// one: its last digits count on.
class LineAnchor {
 public:
  void write(Output& out, std::uint32_t line) {
    if (size_ == 0 || line != line_ + 1 || text_[idEnd_ - 1] == '9') {
      make(line);
    } else {
      ++text_[idEnd_ - 1];
      ++text_[linkEnd_ - 1];
    }
    line_ = line;
    std::memcpy(out.reserve(), text_.data(), text_.size());
    out.advance(size_);
  }

 private:
  void make(std::uint32_t line);

  std::array<char, 40> text_;  // copied at once
  std::size_t size_ = 0;
  std::size_t idEnd_ = 0, linkEnd_ = 0;  // of the two numbers
  std::uint32_t line_ = 0;
};

class HtmlCode {
 public:
  // `hasTop`: the document has ids for whole modules, to which links can lead.
  HtmlCode(Output& out, const Options& options, const Markup& markup, const Targets& targets,
           const Source& source, bool hasTop);

  bool atEnd() const { return lines_.atEnd(); }
  std::uint32_t line() const { return lines_.line(); }
  std::uint32_t token() const { return lines_.token(); }

  // The next line without its end; returns whether it has one. Names of declarations get their
  // ids, but for that whose id stands elsewhere.
  bool writeLine(std::uint32_t idElsewhere = vb::kNone);
  void skipLine() { lines_.skipLine(); }

  // For SourceLines::visitLine.
  bool isWanted(std::uint32_t token) {
    if (token < nextMark_) return false;
    if (token > nextMark_) findMark(token);
    return token == nextMark_;
  }
  void plain(std::u8string_view text) { writeHtml(out_, text, end_); }
  void marked(std::uint32_t token, std::u8string_view text);

 private:
  void writeLineNumber();
  void writeInlineNumber(std::uint32_t line);
  void findMark(std::uint32_t token);
  bool hasId(std::uint32_t declaration) const;
  bool isLinked(const vb::Reference& reference) const;
  void markedAny(std::uint32_t token, std::u8string_view text);
  void writeMark(std::uint32_t token, std::u8string_view text);
  void writeDeclared(std::uint32_t declaration, std::u8string_view text);
  void writeLinked(const vb::Reference& reference, std::u8string_view text);
  std::string_view linkLook(const vb::Reference& reference) const;

  Output& out_;
  const Options& options_;
  const Markup& markup_;
  const Targets& targets_;
  const Source& source_;
  const ModuleTargets& own_;
  const vb::Token* const tokens_;
  const bool hasTop_;
  const bool isNumbered_;
  const bool hasPlainAnchors_;  // an anchor without a prefix shows the number
  const char8_t* const end_;
  SourceLines lines_;
  LineAnchor anchor_;
  std::uint32_t declaration_ = 0;  // the next that may have an id
  std::size_t reference_ = 0;      // the next that may be a link
  std::uint32_t nextMark_ = 0;     // the next token that is one of both
  std::uint32_t idElsewhere_ = vb::kNone;
};

}  // namespace tintline::listing
