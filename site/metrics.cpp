// See metrics.h. Tested by tests/unit/site/site_test.cpp.
#include "site/metrics.h"

#include <algorithm>

#include "vb/token_cursor.h"

namespace tintline::site {
namespace {

using vb::TokenKind;
using vb::Word;

// Counts lines, once for the module and once for the procedure that holds them.
class LineCounter {
 public:
  LineCounter(const vb::Module& module, const std::vector<std::uint32_t>& procedures,
              ModuleMetrics& metrics)
      : module_(module), procedures_(procedures), metrics_(metrics) {}

  void run() {
    for (std::uint32_t i = 0; module_.tokens[i].kind != TokenKind::End; ++i) {
      switch (module_.tokens[i].kind) {
        case TokenKind::Blank:
          break;
        case TokenKind::LineEnd:
          endLine();
          break;
        case TokenKind::Continuation:
          code_ = true;
          endLine();
          break;
        case TokenKind::Comment:
          comment(module_.textOf(i));
          break;
        default:
          code_ = true;
      }
    }
    if (line_ <= module_.lines) endLine();
  }

 private:
  void comment(std::u8string_view text) {
    for (std::uint32_t ends = vb::lineEndsIn(text); ends > 0; --ends) {
      comment_ = true;
      endLine();
    }
    comment_ = true;
  }

  void endLine() {
    while (procedure_ < procedures_.size() && line_ > procedure().endLine) ++procedure_;
    count(metrics_.counts);
    if (procedure_ < procedures_.size() && line_ >= procedure().line)
      count(metrics_.procedures[procedure_].counts);
    ++line_;
    code_ = comment_ = false;
  }

  void count(LineCounts& counts) const {
    ++counts.lines;
    counts.commented += comment_;
    counts.empty += !comment_ && !code_;
  }

  const vb::Declaration& procedure() const { return module_.declarations[procedures_[procedure_]]; }

  const vb::Module& module_;
  const std::vector<std::uint32_t>& procedures_;
  ModuleMetrics& metrics_;
  std::size_t procedure_ = 0;  // that the line lies in, or the next one
  std::uint32_t line_ = 1;
  bool code_ = false, comment_ = false;  // in this line
};

// Follows the blocks of a body, statement by statement.
class BlockReader {
 public:
  BlockReader(const vb::Module& module, vb::TokenRange body, Metrics& metrics)
      : module_(module), at_(body.begin), end_(body.end), metrics_(metrics) {}

  void run() {
    for (; at_ < end_; ++at_) {
      switch (kind()) {
        case TokenKind::Blank:
        case TokenKind::Continuation:
        case TokenKind::Label:
          break;
        case TokenKind::LineEnd:
        case TokenKind::Comment:
          starts_ = true;
          break;
        case TokenKind::Directive:
          directive();
          break;
        case TokenKind::Punctuation:
          starts_ = module_.text[module_.tokens[at_].begin] == u8':';
          break;
        default:
          if (starts_)
            statement();
          else
            starts_ = word() == Word::Then || word() == Word::Else;
      }
    }
  }

 private:
  TokenKind kind() const { return module_.tokens[at_].kind; }
  Word word() const { return module_.tokens[at_].word; }

  std::uint32_t next(std::uint32_t token) const {
    do ++token;
    while (vb::isGap(module_.tokens[token].kind));
    return token;
  }

  void statement() {
    starts_ = word() == Word::Else;
    switch (word()) {
      case Word::If:
        ++metrics_.branches;
        if (isBlock()) open();
        break;
      case Word::ElseIf:
        ++metrics_.branches;
        break;
      case Word::Case:
        if (module_.tokens[next(at_)].word != Word::Else) ++metrics_.branches;
        break;
      case Word::For:
      case Word::Do:
      case Word::While:
        ++metrics_.branches;
        open();
        break;
      case Word::Select:
        open();
        break;
      case Word::Next:
        closeLoops();
        break;
      case Word::Loop:
      case Word::Wend:
      case Word::EndIf:
        close();
        break;
      case Word::End:
        if (const Word what = module_.tokens[next(at_)].word;
            what == Word::If || what == Word::Select)
          close();
        break;
      default:
        break;
    }
  }

  // An If with nothing but a comment behind its Then.
  bool isBlock() const {
    for (std::uint32_t i = at_; i < end_; ++i) {
      const TokenKind each = module_.tokens[i].kind;
      if (each == TokenKind::LineEnd || each == TokenKind::Comment) return false;
      if (module_.tokens[i].word != Word::Then) continue;
      const TokenKind behind = module_.tokens[next(i)].kind;
      return behind == TokenKind::LineEnd || behind == TokenKind::Comment ||
             behind == TokenKind::End;
    }
    return false;
  }

  // "Next j, i" closes two.
  void closeLoops() {
    close();
    for (std::uint32_t i = at_; i < end_; ++i) {
      const vb::Token& token = module_.tokens[i];
      if (token.kind == TokenKind::LineEnd || token.kind == TokenKind::Comment) return;
      if (token.kind != TokenKind::Punctuation) continue;
      if (module_.text[token.begin] == u8':') return;
      if (module_.text[token.begin] == u8',') close();
    }
  }

  void open() { metrics_.nesting = std::max(metrics_.nesting, ++depth_); }
  void close() { depth_ -= depth_ > 0; }

  // Each branch of "#If" begins as deep as the first.
  void directive() {
    switch (module_.tokens[next(at_)].word) {
      case Word::If:
        depths_.push_back(depth_);
        break;
      case Word::ElseIf:
      case Word::Else:
        if (!depths_.empty()) depth_ = depths_.back();
        break;
      case Word::End:
      case Word::EndIf:
        if (!depths_.empty()) depths_.pop_back();
        break;
      default:
        break;
    }
    while (at_ + 1 < end_ && module_.tokens[at_ + 1].kind != TokenKind::LineEnd) ++at_;
  }

  const vb::Module& module_;
  std::uint32_t at_;
  const std::uint32_t end_;
  Metrics& metrics_;
  bool starts_ = true;  // a statement
  std::uint32_t depth_ = 0;
  std::vector<std::uint32_t> depths_;  // at each open "#If"
};

}  // namespace

std::uint32_t commentShare(const LineCounts& counts) {
  const std::uint64_t written = counts.lines - counts.empty;
  return written == 0 ? 0
                      : static_cast<std::uint32_t>(
                            (std::uint64_t{counts.commented} * 100 + written / 2) / written);
}

ModuleMetrics measure(const vb::Module& module, const std::vector<std::uint32_t>& procedures) {
  ModuleMetrics metrics{.counts = {}, .procedures = std::vector<Metrics>(procedures.size())};
  LineCounter(module, procedures, metrics).run();
  std::size_t next = 0;  // the first procedure behind each parameter's
  for (const vb::Declaration& declaration : module.declarations) {
    if (declaration.kind != vb::DeclarationKind::Parameter) continue;
    while (next < procedures.size() && procedures[next] < declaration.scope) ++next;
    if (next < procedures.size() && procedures[next] == declaration.scope)
      ++metrics.procedures[next].parameters;
  }
  for (std::size_t i = 0; i < procedures.size(); ++i)
    BlockReader(module, module.declarations[procedures[i]].body, metrics.procedures[i]).run();
  return metrics;
}

}  // namespace tintline::site
