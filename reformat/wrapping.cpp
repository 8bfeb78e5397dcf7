// See wrapping.h.
// Tested by tests/unit/reformat/wrapping_test.cpp and wrapping_property_test.cpp.
#include "reformat/wrapping.h"

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>

#include "base/text.h"
#include "reformat/code_line.h"
#include "reformat/file_header.h"

namespace tintline {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr int kUsualUnit = 4;
constexpr std::string_view kContinuation = " _";

bool isLonger(std::string_view line, std::size_t width) {
  return line.size() > width && RTrim(line).size() > width;
}

// What every line that is made of this one ends with.
std::string_view tailOf(std::string_view line) { return line.ends_with(' ') ? " " : ""; }

std::string_view leadingSeparators(std::string_view text) {
  return text.substr(0, skipSeparators(text, 0));
}

// The apostrophes or the "Rem" that a comment begins with; empty when the text begins
// with none.
std::string_view commentOpener(std::string_view text) {
  if (text.starts_with('\''))
    return text.substr(0, std::min(text.find_first_not_of('\''), text.size()));
  return equalsIgnoreCase(firstWord(text), "Rem") ? text.substr(0, 3) : std::string_view();
}

// Whether the statement that begins with this line is left alone: it is none of the
// language, or nothing stands in front of its continuation mark.
bool staysAsItIs(std::string_view line) {
  const std::string_view text = line.substr(skipSeparators(line, 0));
  return text.starts_with('#') || isAttribute(text) || continuationMark(text) == 0;
}

// The first gap behind the word at `from` that has a word behind it in front of `end`;
// it begins at kNone when there is none.
Gap nextGap(std::string_view text, std::size_t from, std::size_t end) {
  for (std::size_t at = from; at < end; ++at) {
    if (!separates(text[at])) continue;
    const Gap gap{at, skipSeparators(text, at)};
    if (gap.end >= end) break;
    if (text.substr(gap.begin, gap.end - gap.begin).find(' ') != kNone) return gap;
    at = gap.end;
  }
  return {kNone, kNone};
}

class Wrapper {
 public:
  Wrapper(const LineList& List1, int width, int unit)
      : List1_(List1),
        width_(static_cast<std::size_t>(width)),
        unit_(static_cast<std::size_t>(unit == 0 ? kUsualUnit : unit)) {}

  std::optional<LineList> wrap() {
    result_.reserveBytes(List1_.bytes() + List1_.bytes() / 8);
    FileHeader header;
    for (std::size_t begin = 0, end = 0; begin < List1_.size(); begin = end) {
      end = begin + 1;
      if (header.holds(List1_[begin])) {
        copy(begin, end);
        continue;
      }
      while (end < List1_.size() && continuationMark(List1_[end - 1]) != kNone) ++end;
      wrapStatement(begin, end);
    }
    if (result_.size() > kMaxLines) return std::nullopt;
    return std::move(result_);
  }

 private:
  // The statement in the lines from `begin` to in front of `end`.
  void wrapStatement(std::size_t begin, std::size_t end) {
    bool fits = true;
    for (std::size_t i = begin; i < end; ++i) fits = fits && !isLonger(List1_[i], width_);
    const std::string_view first = List1_[begin];
    if (fits || staysAsItIs(first)) return copy(begin, end);
    if (commentOpener(first.substr(leadingSeparators(first).size())).empty())
      wrapCode(begin, end);
    else
      wrapComment(begin, end);
  }

  void wrapCode(std::size_t begin, std::size_t end) {
    std::size_t codeEnd = begin;  // the first line that is only comment
    do readCodeLine(List1_[codeEnd], codeEnd == begin, code_);
    while (++codeEnd < end && code_.comment == kNone);
    const bool moves = code_.moves && codeEnd == end && isLonger(List1_[end - 1], width_);
    indentation_ = leadingSeparators(List1_[begin]);
    if (moves) moveComment(List1_[end - 1]);
    deeper_.assign(indentation_).append(unit_, ' ');
    const auto used = end - begin - (continuationMark(List1_[end - 1]) == kNone ? 1 : 0);
    continuations_ = kMaxContinuations - std::min<std::size_t>(used, kMaxContinuations);
    for (std::size_t i = begin; i < codeEnd; ++i) {
      readCodeLine(List1_[i], i == begin, code_);
      breakCode(List1_[i], moves && i == end - 1);
    }
    copy(codeEnd, end);
  }

  // The comment behind the code that was read last becomes a line of its own.
  void moveComment(std::string_view line) {
    const std::string_view comment = line.substr(code_.comment);
    const std::string_view opener = commentOpener(comment);
    moved_.assign(indentation_).append(RTrim(comment)).append(tailOf(line));
    const std::string prefix = commentPrefix(indentation_, comment);
    breakComment(moved_, indentation_.size() + opener.size(), prefix);
  }

  // Breaks the line that was read last, without its comment or with it.
  void breakCode(std::string_view line, bool withoutComment) {
    const std::size_t end = withoutComment ? code_.end : line.size();
    const std::size_t length = RTrim(line.substr(0, end)).size();
    std::string_view prefix;
    std::size_t start = 0;
    for (auto gap = code_.gaps.begin();
         continuations_ > 0 && prefix.size() + length - start > width_; --continuations_) {
      const auto first = gap;
      while (gap != code_.gaps.end() &&
             prefix.size() + gap->begin - start + kContinuation.size() <= width_)
        ++gap;
      if (gap == first) break;  // none leaves room
      const Gap& last = *(gap - 1);
      put({prefix, line.substr(start, last.begin - start), kContinuation, tailOf(line)});
      start = last.end;
      prefix = deeper_;
    }
    put({prefix, line.substr(start, end - start), withoutComment ? tailOf(line) : ""});
  }

  void wrapComment(std::size_t begin, std::size_t end) {
    const std::string_view first = List1_[begin];
    const std::size_t at = leadingSeparators(first).size();
    const std::string_view opener = commentOpener(first.substr(at));
    const std::string prefix = commentPrefix(first.substr(0, at), first.substr(at));
    breakComment(first, at + opener.size(), prefix);
    for (std::size_t i = begin + 1; i < end; ++i) breakComment(List1_[i], 0, prefix);
  }

  // What the further lines of a comment begin with: its indentation, its opener, and
  // the blanks behind that while they leave half of the width to the words.
  std::string commentPrefix(std::string_view indentation, std::string_view comment) const {
    const std::string_view opener = commentOpener(comment);
    std::string_view blanks = leadingSeparators(comment.substr(opener.size()));
    if (indentation.size() + opener.size() + blanks.size() > width_ / 2)
      blanks = blanks.substr(0, 1);
    if (blanks.empty() && !opener.starts_with('\'')) blanks = " ";  // else no "Rem" any more
    return std::string(indentation).append(opener).append(blanks);
  }

  // Breaks a line of a comment, whose words begin behind `from`. A part that ended in
  // "_" would continue itself, so none does; nor does an apostrophe of the words come to
  // stand directly behind the opener.
  void breakComment(std::string_view line, std::size_t from, std::string_view prefix) {
    const std::size_t length = RTrim(line).size();
    const std::size_t end = std::min(continuationMark(line), length);
    std::string_view lead;
    std::size_t start = 0;
    from = skipSeparators(line, from);
    while (prefix.size() < width_ && lead.size() + length - start > width_) {
      Gap chosen{kNone, kNone};
      for (Gap gap = nextGap(line, from, end); gap.begin != kNone;
           gap = nextGap(line, gap.end, end)) {
        const bool fits = lead.size() + gap.begin - start <= width_;
        if (!fits && chosen.begin != kNone) break;
        const bool longerOpener = prefix.ends_with('\'') && line[gap.end] == '\'';
        if (line[gap.begin - 1] == '_' || longerOpener) continue;
        chosen = gap;
        if (!fits) break;  // the first, where none leaves room
      }
      if (chosen.begin == kNone) break;
      put({lead, line.substr(start, chosen.begin - start), tailOf(line)});
      start = from = chosen.end;
      lead = prefix;
    }
    put({lead, line.substr(start)});
  }

  void copy(std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) put({List1_[i]});
  }

  // Adds a line made of these parts. Behind one line too many the rest need not be kept.
  void put(std::initializer_list<std::string_view> parts) {
    if (result_.size() > kMaxLines) return;
    if (parts.size() == 1) return result_.append(*parts.begin());
    line_.clear();
    for (const std::string_view part : parts) line_.append(part);
    result_.append(line_);
  }

  const LineList& List1_;
  std::size_t width_;
  std::size_t unit_;
  LineList result_;
  CodeLine code_;                  // the line that was read last
  std::string_view indentation_;   // of the statement's first line
  std::string deeper_;             // what its further lines begin with
  std::size_t continuations_ = 0;  // that it may still get
  std::string moved_;
  std::string line_;
};

}  // namespace

std::optional<int> parseLineWidth(std::wstring_view text) {
  while (text.starts_with(L' ')) text.remove_prefix(1);
  while (text.ends_with(L' ')) text.remove_suffix(1);
  if (text.empty()) return std::nullopt;
  int width = 0;
  for (const wchar_t digit : text) {
    if (digit < L'0' || digit > L'9') return std::nullopt;
    width = std::min(width * 10 + (digit - L'0'), kMaxLineWidth + 1);
  }
  if (width != 0 && (width < kMinLineWidth || width > kMaxLineWidth)) return std::nullopt;
  return width;
}

bool hasLongerLine(const LineList& List1, int width) {
  if (width == 0) return false;
  for (std::size_t i = 0; i < List1.size(); ++i)
    if (isLonger(List1[i], static_cast<std::size_t>(width))) return true;
  return false;
}

std::optional<LineList> wrapLines(const LineList& List1, int width, int unit) {
  if (List1.size() > kMaxLines) return std::nullopt;
  if (!hasLongerLine(List1, width)) return List1;
  return Wrapper(List1, width, unit).wrap();
}

}  // namespace tintline
