// See wrapping.h.
// Tested by tests/unit/reformat/wrapping_test.cpp and wrapping_property_test.cpp.
#include "reformat/wrapping.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>

#include "base/typed_number.h"
#include "reformat/statement_reader.h"
#include "vb/scan.h"

namespace tintline {
namespace {

constexpr int kUsualUnit = 4;
constexpr std::string_view kContinuation = " _";
constexpr std::size_t kRoom = 10;  // for words in each further line, whatever it begins with

bool isLonger(std::string_view line, std::size_t width, LineText kind) {
  return line.size() > width && widthOf(contentOf(line, kind), kind) > width;
}

// The apostrophes or the "Rem" that a comment begins with; empty when the text begins with none.
std::string_view commentOpener(std::string_view text) {
  if (!text.starts_with('\'')) return text.substr(0, 3);
  return text.substr(0, std::min(text.find_first_not_of('\''), text.size()));
}

class Wrapper {
 public:
  Wrapper(const LineList& List1, int width, int unit, LineText kind)
      : List1_(List1),
        kind_(kind),
        width_(static_cast<std::size_t>(width)),
        unit_(static_cast<std::size_t>(unit == 0 ? kUsualUnit : unit)),
        reader_(List1, kind) {
    if (kind == LineText::Ansi || List1.empty()) return;
    usualLineEnd_ = lineEndOf(List1[0]);
    if (usualLineEnd_.empty()) usualLineEnd_ = "\n";
  }

  std::optional<LineList> wrap() {
    result_.reserveBytes(List1_.bytes() + List1_.bytes() / 8);
    while (reader_.next()) wrapStatement(reader_.statement());
    if (isFull()) return std::nullopt;
    return std::move(result_);
  }

 private:
  void wrapStatement(const Statement& statement) {
    bool fits = true;
    for (std::size_t i = statement.begin; i < statement.end; ++i)
      fits = fits && !isLonger(List1_[i], width_, kind_);
    if (fits || statement.kind == Statement::Kind::Fixed)
      return copy(statement.begin, statement.end);
    if (statement.kind == Statement::Kind::Comment)
      wrapComment(statement);
    else
      wrapCode(statement);
  }

  void wrapCode(const Statement& statement) {
    std::size_t codeEnd = statement.begin;  // the first line that is only comment
    do reader_.read(codeEnd, code_);
    while (++codeEnd < statement.end && code_.comment == kNoPlace);
    const std::size_t last = statement.end - 1;
    const bool moves = code_.moves && isLonger(List1_[last], width_, kind_);
    setIndentation(List1_[statement.begin]);
    if (moves) moveComment(List1_[last]);
    continuations_ =
        kMaxContinuations - std::min<std::size_t>(last - statement.begin, kMaxContinuations);
    for (std::size_t i = statement.begin; i < codeEnd; ++i) {
      reader_.read(i, code_);
      breakCode(List1_[i], moves && i == last);
    }
    copy(codeEnd, statement.end);
  }

  // Takes over the indentation of the statement; that of its further lines leaves room for words.
  void setIndentation(std::string_view line) {
    indentation_ = line.substr(0, skipBlanks(line, 0, kind_));
    deeper_.assign(indentation_).append(unit_, ' ');
    if (widthOf(deeper_, kind_) > width_ - kRoom) deeper_.assign(width_ - kRoom, ' ');
    deeperWidth_ = widthOf(deeper_, kind_);
  }

  // The comment behind the code that was read last becomes a line of its own.
  void moveComment(std::string_view line) {
    const std::string_view comment = contentOf(line.substr(code_.comment), kind_);
    moved_.assign(indentation_).append(comment).append(innerTail(line));
    const std::size_t words = indentation_.size() + commentOpener(comment).size();
    breakComment(moved_, words, commentPrefix(indentation_, comment));
  }

  // The width of a stretch of the line that is broken.
  std::size_t width(std::size_t begin, std::size_t end) const {
    return widthOf(broken_.substr(begin, end - begin), kind_);
  }

  // Breaks the line that was read last, without its comment or with it. A comment that stays
  // counts only where the line ends up short enough with it.
  void breakCode(std::string_view line, bool withoutComment) {
    broken_ = line;
    const std::size_t all = withoutComment ? code_.end : contentOf(line, kind_).size();
    const bool counts = code_.comment == kNoPlace || code_.gaps.empty() ||
                        fits(deeperWidth_, code_.gaps.back().end, all);
    const std::size_t end = counts ? all : code_.end;
    std::string_view prefix;
    std::size_t start = 0;
    for (GapPlace gap = code_.gaps.begin(); continuations_ > 0; --continuations_) {
      const GapPlace chosen = chooseGap(start == 0 ? 0 : deeperWidth_, start, end, gap);
      if (chosen == code_.gaps.end()) break;
      put({prefix, line.substr(start, chosen->begin - start), kContinuation, innerTail(line)});
      start = chosen->end;
      gap = chosen + 1;
      prefix = deeper_;
    }
    if (!withoutComment) return put({prefix, line.substr(start)});
    put({prefix, line.substr(start, code_.end - start), lastTail(line)});
  }

  using GapPlace = std::vector<Gap>::const_iterator;

  // Where to break the line that goes on at `start`, behind a prefix of that width, and would end
  // at `end`: at the last gap, from `gap` on, that leaves a line short enough, or at the first one
  // when none does. Nowhere, when the line is short enough or would not become narrower.
  GapPlace chooseGap(std::size_t prefix, std::size_t start, std::size_t end, GapPlace gap) const {
    const GapPlace none = code_.gaps.end();
    if (fits(prefix, start, end)) return none;
    GapPlace chosen = none;
    for (std::size_t reached = prefix, from = start; gap != none; from = gap++->begin) {
      reached += width(from, gap->begin);
      if (reached + kContinuation.size() > width_) break;
      chosen = gap;
    }
    const bool found =
        chosen != none && helps(chosen, prefix + width(start, chosen->end), gap, end);
    return found ? chosen : gap;
  }

  // Whether the word behind a gap, which now stands at that column, gets narrower or short enough
  // on a line of its own. It reaches to the next gap, or to the end.
  bool helps(GapPlace gap, std::size_t column, GapPlace next, std::size_t end) const {
    if (deeperWidth_ < column) return true;
    const bool last = next == code_.gaps.end();
    return fits(deeperWidth_ + (last ? 0 : kContinuation.size()), gap->end,
                last ? end : next->begin);
  }

  // Whether a stretch of the line is short enough behind something of that width.
  bool fits(std::size_t front, std::size_t begin, std::size_t end) const {
    constexpr std::size_t kLongestCharacter = 4;  // so that most need not be counted
    return end - begin <= kLongestCharacter * width_ && front + width(begin, end) <= width_;
  }

  void wrapComment(const Statement& statement) {
    const std::string_view first = List1_[statement.begin];
    const std::size_t at = skipBlanks(first, 0, kind_);
    const std::string_view comment = first.substr(at);
    const std::string prefix = commentPrefix(first.substr(0, at), comment);
    breakComment(first, at + commentOpener(comment).size(), prefix);
    for (std::size_t i = statement.begin + 1; i < statement.end; ++i)
      breakComment(List1_[i], 0, prefix);
  }

  // What the further lines of a comment begin with: its indentation, its opener, and the blanks
  // behind that while they leave half of the width to the words.
  std::string commentPrefix(std::string_view indentation, std::string_view comment) const {
    std::string_view opener = commentOpener(comment);
    std::string_view blanks =
        comment.substr(opener.size(), skipBlanks(comment, opener.size(), kind_) - opener.size());
    std::string prefix(indentation);
    if (widthOf(indentation, kind_) + opener.size() > width_ - kRoom) {
      if (opener.starts_with('\'')) opener = opener.substr(0, 1);
      prefix.assign(std::min(widthOf(indentation, kind_), width_ - kRoom - opener.size()), ' ');
    }
    prefix.append(opener);
    const bool tooWide = widthOf(prefix, kind_) + widthOf(blanks, kind_) > width_ / 2;
    if (!blanks.empty() && tooWide) blanks = " ";
    if (blanks.empty() && !opener.starts_with('\'')) blanks = " ";  // else no "Rem" any more
    return prefix.append(blanks);
  }

  // Breaks a line of a comment, whose words begin behind `from`. A part that ended in "_" would
  // continue itself, so none does; nor does an apostrophe of the words come to stand directly
  // behind the opener.
  void breakComment(std::string_view line, std::size_t from, std::string_view prefix) {
    broken_ = line;
    const std::size_t end = contentOf(line, kind_).size();
    std::size_t start = 0;
    from = skipBlanks(line, from, kind_);
    for (std::string_view lead; !fits(widthOf(lead, kind_), start, end); lead = prefix) {
      const Gap chosen = chooseCommentGap(lead, start, from, prefix.ends_with('\''));
      if (chosen.begin == kNoPlace) break;
      put({lead, line.substr(start, chosen.begin - start), innerTail(line)});
      start = from = chosen.end;
    }
    put({start == 0 ? std::string_view() : prefix, line.substr(start)});
  }

  // The last gap behind `from` in front of which the line that goes on at `start` is short enough,
  // or the first one; it begins at kNoPlace when there is none.
  Gap chooseCommentGap(std::string_view lead, std::size_t start, std::size_t from,
                       bool behindApostrophe) const {
    const std::size_t end = lengthWithoutMark(broken_);
    Gap chosen{kNoPlace, kNoPlace};
    std::size_t reached = widthOf(lead, kind_), measured = start;
    for (Gap gap = nextGap(from, end); gap.begin != kNoPlace; gap = nextGap(gap.end, end)) {
      reached += width(measured, gap.begin);
      measured = gap.begin;
      if (reached > width_ && chosen.begin != kNoPlace) break;
      if (broken_[gap.begin - 1] == '_' || (behindApostrophe && broken_[gap.end] == '\'')) continue;
      chosen = gap;
      if (reached > width_) break;  // the first, where none leaves room
    }
    return chosen;
  }

  // The first gap behind the word at `from` that has a word behind it in front of `end`.
  Gap nextGap(std::size_t from, std::size_t end) const {
    for (std::size_t at = from; at < end; ++at) {
      const std::size_t behind = skipBlanks(broken_, at, kind_);
      if (behind >= end) break;
      if (behind > at) return {at, behind};
    }
    return {kNoPlace, kNoPlace};
  }

  // The length of the line without its end and the mark that continues it.
  std::size_t lengthWithoutMark(std::string_view line) const {
    const std::string_view content = contentOf(line, kind_);
    const auto* const begin = reinterpret_cast<const char8_t*>(content.data());
    const char8_t* const mark = vb::continuationStart(begin, begin + content.size());
    return mark == nullptr ? content.size() : static_cast<std::size_t>(mark - begin);
  }

  // What a line of decoded text ends with; empty for 8-bit text.
  std::string_view lineEndOf(std::string_view line) const {
    if (kind_ == LineText::Ansi) return {};
    return line.substr(std::min(line.find_last_not_of("\r\n") + 1, line.size()));
  }

  // What the last of the lines that are made of this one ends with, and what the others do.
  std::string_view lastTail(std::string_view line) const {
    return kind_ == LineText::Utf8 ? lineEndOf(line) : line.ends_with(' ') ? " " : "";
  }
  std::string_view innerTail(std::string_view line) const {
    const std::string_view tail = lastTail(line);
    return tail.empty() ? usualLineEnd_ : tail;
  }

  void copy(std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) put({List1_[i]});
  }

  bool isFull() const { return kind_ == LineText::Ansi && result_.size() > kMaxLines; }

  // Adds a line made of these parts. Behind one line too many the rest need not be kept.
  void put(std::initializer_list<std::string_view> parts) {
    if (isFull()) return;
    if (parts.size() == 1) return result_.append(*parts.begin());
    line_.clear();
    for (const std::string_view part : parts) line_.append(part);
    result_.append(line_);
  }

  const LineList& List1_;
  LineText kind_;
  std::size_t width_;
  std::size_t unit_;
  StatementReader reader_;
  std::string_view usualLineEnd_;  // of decoded text
  LineList result_;
  CodeLine code_;                 // the line that was read last
  std::string_view broken_;       // the line that is broken
  std::string_view indentation_;  // of the statement's first line
  std::string deeper_;            // what its further lines begin with
  std::size_t deeperWidth_ = 0;
  std::size_t continuations_ = 0;  // that the statement may still get
  std::string moved_;
  std::string line_;
};

}  // namespace

std::optional<int> parseLineWidth(std::wstring_view text) {
  const auto width = parseNumber(text, kMaxLineWidth);
  if (!width || (*width != 0 && *width < kMinLineWidth)) return std::nullopt;
  return static_cast<int>(*width);
}

bool hasLongerLine(const LineList& List1, int width, LineText kind) {
  if (width == 0) return false;
  for (std::size_t i = 0; i < List1.size(); ++i)
    if (isLonger(List1[i], static_cast<std::size_t>(width), kind)) return true;
  return false;
}

std::optional<LineList> wrapLines(const LineList& List1, int width, int unit, LineText kind) {
  if (kind == LineText::Ansi && List1.size() > kMaxLines) return std::nullopt;
  if (!hasLongerLine(List1, width, kind)) return List1;
  return Wrapper(List1, width, unit, kind).wrap();
}

}  // namespace tintline
