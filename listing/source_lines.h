// Goes through a module line by line, and through a line piece by piece.
//
// Tested by tests/unit/any_text_property_test.cpp.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "vb/module.h"

namespace tintline::listing {

// Whether tokens of that kind look different from other text.
constexpr bool isMarked(vb::TokenKind kind) {
  switch (kind) {
    case vb::TokenKind::Blank:
    case vb::TokenKind::LineEnd:
    case vb::TokenKind::Continuation:
    case vb::TokenKind::Name:
    case vb::TokenKind::HeaderWord:
    case vb::TokenKind::Operator:
    case vb::TokenKind::Punctuation:
    case vb::TokenKind::End:
      return false;
    default:
      return true;
  }
}

class SourceLines {
 public:
  explicit SourceLines(const vb::Module& module) : module_(module), line_(module.firstLine) {}

  bool atEnd() const { return at_ == module_.text.size(); }
  std::uint32_t line() const { return line_; }    // the number of the next line
  std::uint32_t token() const { return token_; }  // the first token that has text in it

  // Gives the next line without its end to the visitor: `plain(text)` for what looks like other
  // text, `marked(token, text)` for each other token, or the part of it in this line, and for
  // the tokens that the visitor's `isWanted(token)` asks for. Those come in ascending order.
  // Returns whether the line has an end; only the last can be without.
  template <class Visitor>
  bool visitLine(Visitor& visitor) {
    const vb::Tokens& tokens = module_.tokens;
    std::size_t run = at_;  // where the plain text begins that was not given yet
    ++line_;
    const auto text = [&](std::size_t begin, std::size_t end) {
      return std::u8string_view(module_.text.data() + begin, end - begin);
    };
    for (std::uint32_t i = token_;; ++i) {
      const vb::Token& token = tokens[i];
      const Look look = kLooks[static_cast<std::size_t>(token.kind)];
      if (look == Look::Plain && !visitor.isWanted(i)) continue;
      const std::size_t begin = std::max<std::size_t>(token.begin, at_);
      if (begin > run) visitor.plain(text(run, begin));
      if (look == Look::LineEnd) {
        const bool hasEnd = token.kind == vb::TokenKind::LineEnd;
        at_ = hasEnd ? endOf(tokens, i) : module_.text.size();
        token_ = hasEnd ? i + 1 : i;
        return hasEnd;
      }
      const std::size_t end = endOf(tokens, i);
      const std::size_t lineEnd = look == Look::Continuation || token.word == vb::Word::Continued
                                      ? findLineEnd(begin, end)
                                      : end;
      if (look == Look::Continuation)
        visitor.plain(text(begin, lineEnd));
      else if (lineEnd > begin)
        visitor.marked(i, text(begin, lineEnd));
      run = end;
      if (lineEnd == end) continue;
      at_ = behindLineEnd(lineEnd);
      token_ = at_ == end ? i + 1 : i;
      return true;
    }
  }

  void skipLine() {
    struct {
      bool isWanted(std::uint32_t) const { return false; }
      void plain(std::u8string_view) const {}
      void marked(std::uint32_t, std::u8string_view) const {}
    } nothing;
    visitLine(nothing);
  }

 private:
  enum class Look : std::uint8_t { Plain, Marked, Continuation, LineEnd };
  static constexpr auto kLooks = [] {
    std::array<Look, static_cast<std::size_t>(vb::TokenKind::End) + 1> looks{};
    for (std::size_t i = 0; i < looks.size(); ++i)
      looks[i] = isMarked(static_cast<vb::TokenKind>(i)) ? Look::Marked : Look::Plain;
    looks[static_cast<std::size_t>(vb::TokenKind::Continuation)] = Look::Continuation;
    looks[static_cast<std::size_t>(vb::TokenKind::LineEnd)] = Look::LineEnd;
    looks[static_cast<std::size_t>(vb::TokenKind::End)] = Look::LineEnd;
    return looks;
  }();

  // The first line end between the two places, else `end`.
  std::size_t findLineEnd(std::size_t begin, std::size_t end) const {
    const char8_t* const text = module_.text.data();
    const auto find = [&](char c, std::size_t to) {
      const void* const found = std::memchr(text + begin, c, to - begin);
      return found == nullptr ? to
                              : static_cast<std::size_t>(static_cast<const char8_t*>(found) - text);
    };
    return find('\r', find('\n', end));
  }

  std::size_t behindLineEnd(std::size_t at) const {
    const auto rest = std::u8string_view(module_.text).substr(at);
    return at + (rest.starts_with(u8"\r\n") ? 2 : 1);
  }

  const vb::Module& module_;
  std::size_t at_ = 0;
  std::uint32_t token_ = 0;
  std::uint32_t line_;
};

}  // namespace tintline::listing
