// See sections.h. Tested by tests/golden/exact.
#include "listing/sections.h"

#include <algorithm>

#include "listing/module_targets.h"

namespace tintline::listing {
namespace {

using vb::TokenKind;

// Finds the first token of a line; asked for ascending tokens, it looks at each only once.
class LineStarts {
 public:
  explicit LineStarts(const vb::Tokens& tokens) : tokens_(tokens) {}

  std::uint32_t of(std::uint32_t token) {
    std::uint32_t start = token;
    while (start > last_ && !endsLine(tokens_[start - 1].kind)) --start;
    start_ = start > last_ || start == 0 ? start : start_;
    last_ = token;
    return start_;
  }

 private:
  static bool endsLine(TokenKind kind) {
    return kind == TokenKind::LineEnd || kind == TokenKind::Continuation;
  }

  const vb::Tokens& tokens_;
  std::uint32_t last_ = 0;   // the last that was asked for
  std::uint32_t start_ = 0;  // and what was found
};

// The first token of the lines of nothing but comments above a line; not before `floor`.
std::uint32_t commentsAbove(const vb::Tokens& tokens, std::uint32_t lineStart,
                            std::uint32_t floor) {
  std::uint32_t start = lineStart;
  while (start >= floor + 2 && tokens[start - 1].kind == TokenKind::LineEnd &&
         tokens[start - 2].kind == TokenKind::Comment &&
         (start == 2 || tokens[start - 3].kind == TokenKind::LineEnd))
    start -= 2;
  return start;
}

}  // namespace

std::vector<Section> sectionsOf(const vb::Module& module) {
  std::vector<Section> sections;
  LineStarts lineStarts(module.tokens);
  std::uint32_t floor = module.header.end;
  for (std::uint32_t i = 0; i < module.declarations.size(); ++i) {
    const vb::Declaration& declaration = module.declarations[i];
    if (!isProcedure(declaration.kind)) continue;
    const std::uint32_t headLine = lineStarts.of(declaration.head.begin);
    if (headLine < floor) continue;
    const std::uint32_t end = std::max(declaration.head.end, declaration.body.end);
    sections.push_back(
        {i, commentsAbove(module.tokens, headLine, floor), headLine, declaration.head.end, end});
    floor = end;
  }
  return sections;
}

Part Parts::partOf(std::uint32_t token) {
  const auto until = [this](std::uint32_t end, Part part) {
    end_ = end;
    return part;
  };
  section_ = nullptr;
  if (token < module_.header.end) return until(module_.header.end, Part::Header);
  while (next_ < sections_.size() && token >= sections_[next_].end) ++next_;
  if (next_ == sections_.size()) return until(vb::kNone, Part::Loose);
  const Section& next = sections_[next_];
  if (token < next.begin) return until(next.begin, Part::Loose);
  section_ = &next;
  if (token < next.headLine) return until(next.headLine, Part::Comment);
  if (token < next.headEnd) return until(next.headEnd, Part::Head);
  return until(next.end, Part::Body);
}

}  // namespace tintline::listing
